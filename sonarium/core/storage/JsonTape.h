#pragma once
// A read-only JSON document for files read in bulk (a project's work units): one pass over the
// bytes writes every value into one flat array, and strings without escapes stay views into the
// bytes, so reading allocates a handful of blocks per file instead of one or more per value.
//
// It reads only what the general parser would read the same way. Anything else (a syntax error,
// nesting deeper than the limit, a key given twice in one object, a file larger than 4 GiB) makes
// Parse return false, and the caller asks the general parser, which says what is wrong.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sn::storage
{
class JsonTape
{
public:
    enum Kind : uint8_t
    {
        Null,
        False,
        True,
        Unsigned, // an integer without a sign
        Integer,  // a negative integer
        Float,    // a fraction, an exponent, or an integer too large for 64 bits
        String,
        Array,
        Object,
    };

    class Value;

    // bytes must be valid UTF-8 and outlive the tape; the root must be an object or an array.
    bool Parse(std::string_view bytes, size_t maxDepth);
    Value Root() const;

private:
    friend class Value;
    struct Node
    {
        uint32_t begin = 0;  // of the text (strings: in m_pool when pooled; numbers: as written)
        uint32_t length = 0; // of the text
        uint32_t next = 0;   // the node after this value and everything inside it
        uint32_t count = 0;  // members of an object, elements of an array
        Kind kind = Null;
        bool pooled = false; // a string with escapes, stored decoded
    };
    class Reader;

    std::string_view m_bytes;
    std::string m_pool;
    std::vector<Node> m_nodes;
};

// One value of a tape, cheap to copy. The names of the general parser's own queries are kept, so
// the code that checks members reads the same over either document.
class JsonTape::Value
{
public:
    Value(const JsonTape* tape, uint32_t index) : m_tape(tape), m_index(index) {}

    Kind kind() const { return NodeAt().kind; }
    bool is_object() const { return kind() == Object; }
    bool is_array() const { return kind() == Array; }
    bool is_string() const { return kind() == String; }
    bool is_boolean() const { return kind() == True || kind() == False; }
    bool is_number_unsigned() const { return kind() == Unsigned; }
    bool is_number_integer() const { return kind() == Unsigned || kind() == Integer; }

    std::string_view Text() const; // of a string
    bool Boolean() const { return kind() == True; }
    uint64_t UnsignedValue() const; // of an unsigned integer
    int64_t IntegerValue() const;   // of a negative or unsigned integer that fits
    // An integer as the general parser writes it out again.
    std::string dump() const;

    // The member named key of an object; none when there is no such member or this is no object.
    std::optional<Value> Find(std::string_view key) const;
    bool contains(std::string_view key) const { return Find(key).has_value(); }

    // Elements of an array, or alternately keys and values of an object.
    class Iterator
    {
    public:
        Iterator(const JsonTape* tape, uint32_t index) : m_tape(tape), m_index(index) {}
        Value operator*() const { return Value(m_tape, m_index); }
        Iterator& operator++()
        {
            m_index = m_tape->m_nodes[m_index].next;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_index != other.m_index; }

    private:
        const JsonTape* m_tape;
        uint32_t m_index;
    };
    Iterator begin() const { return Iterator(m_tape, m_index + 1); }
    Iterator end() const { return Iterator(m_tape, NodeAt().next); }
    uint32_t size() const { return NodeAt().count; }
    // Calls f(key, value) for each member of an object, in the file's order.
    template <class F>
    void ForEachMember(F&& f) const
    {
        for (Iterator it = begin(); it != end(); ++it)
        {
            const Value key = *it;
            f(key.Text(), *++it);
        }
    }

private:
    const Node& NodeAt() const { return m_tape->m_nodes[m_index]; }

    const JsonTape* m_tape;
    uint32_t m_index;
};
} // namespace sn::storage
