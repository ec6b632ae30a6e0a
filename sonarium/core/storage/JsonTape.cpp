#include "sonarium/core/storage/JsonTape.h"

#include "host/Guid.h"
#include "host/Utf8.h"

#include <limits>
#include <optional>
#include <unordered_set>

namespace sn::storage
{
namespace
{
bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

void AppendUtf8(std::string& out, uint32_t c)
{
    const auto wide = static_cast<wchar_t>(c);
    out += Utf8::FromWide(std::wstring_view(&wide, 1));
}

// Digits known to fit (the reader checked): no overflow handling here.
uint64_t DigitsValue(std::string_view digits)
{
    uint64_t value = 0;
    for (char c : digits)
        value = value * 10 + static_cast<uint64_t>(c - '0');
    return value;
}
} // namespace

// A recursive descent over the bytes; recursion is bounded by the depth limit.
class JsonTape::Reader
{
    // Keys as nodes of the tape: their text is read where it lies, the pool may still grow.
    struct KeyHash
    {
        const JsonTape* tape;
        size_t operator()(uint32_t key) const { return std::hash<std::string_view>{}(Value(tape, key).Text()); }
    };
    struct KeyEqual
    {
        const JsonTape* tape;
        bool operator()(uint32_t a, uint32_t b) const { return Value(tape, a).Text() == Value(tape, b).Text(); }
    };
    using KeySet = std::unordered_set<uint32_t, KeyHash, KeyEqual>;
    static constexpr uint32_t kFewMembers = 32;

public:
    Reader(JsonTape& tape, size_t maxDepth) : m_tape(tape), m_bytes(tape.m_bytes), m_maxDepth(maxDepth) {}

    bool Document()
    {
        SkipBlanks();
        if (m_pos >= m_bytes.size() || (m_bytes[m_pos] != '{' && m_bytes[m_pos] != '['))
            return false;
        if (!ReadValue(0))
            return false;
        SkipBlanks();
        return m_pos == m_bytes.size();
    }

private:
    void SkipBlanks()
    {
        while (m_pos < m_bytes.size() && IsBlank(m_bytes[m_pos]))
            ++m_pos;
    }

    bool At(char c) const { return m_pos < m_bytes.size() && m_bytes[m_pos] == c; }

    uint32_t Push(Kind kind, size_t begin, size_t length, bool pooled = false)
    {
        Node node;
        node.kind = kind;
        node.begin = static_cast<uint32_t>(begin);
        node.length = static_cast<uint32_t>(length);
        node.pooled = pooled;
        m_tape.m_nodes.push_back(node);
        const auto index = static_cast<uint32_t>(m_tape.m_nodes.size() - 1);
        m_tape.m_nodes.back().next = index + 1;
        return index;
    }

    void Close(uint32_t index, uint32_t count)
    {
        m_tape.m_nodes[index].count = count;
        m_tape.m_nodes[index].next = static_cast<uint32_t>(m_tape.m_nodes.size());
    }

    bool ReadValue(size_t depth)
    {
        if (m_pos >= m_bytes.size())
            return false;
        switch (m_bytes[m_pos])
        {
        case '{':
            return ReadContainer(Object, depth + 1);
        case '[':
            return ReadContainer(Array, depth + 1);
        case '"':
            return ReadString();
        case 't':
            return ReadLiteral("true", True);
        case 'f':
            return ReadLiteral("false", False);
        case 'n':
            return ReadLiteral("null", Null);
        default:
            return ReadNumber();
        }
    }

    bool ReadLiteral(std::string_view word, Kind kind)
    {
        if (m_bytes.substr(m_pos, word.size()) != word)
            return false;
        Push(kind, m_pos, word.size());
        m_pos += word.size();
        return true;
    }

    // An array's elements, or an object's members, each a key, a colon and a value.
    bool ReadContainer(Kind kind, size_t depth)
    {
        if (depth > m_maxDepth)
            return false;
        const char close = kind == Object ? '}' : ']';
        const uint32_t self = Push(kind, m_pos, 0);
        ++m_pos;
        SkipBlanks();
        uint32_t count = 0;
        std::optional<KeySet> keys; // of a large object
        if (At(close))
            ++m_pos;
        else
            for (;;)
            {
                if ((kind == Object && !ReadKey(self, count, keys)) || !ReadValue(depth))
                    return false;
                ++count;
                SkipBlanks();
                if (At(close))
                {
                    ++m_pos;
                    break;
                }
                if (!At(','))
                    return false;
                ++m_pos;
                SkipBlanks();
            }
        Close(self, count);
        return true;
    }

    // count is the object's members before this one.
    bool ReadKey(uint32_t object, uint32_t count, std::optional<KeySet>& keys)
    {
        if (!At('"') || !ReadString() || IsRepeatedKey(object, count, keys))
            return false;
        SkipBlanks();
        if (!At(':'))
            return false;
        ++m_pos;
        SkipBlanks();
        return true;
    }

    // The general parser keeps a repeated key's last value at its first place: left to it.
    // Objects with a few members compare the new key with each earlier one; larger ones keep a
    // hashed set of their keys, so that no file makes reading quadratic.
    bool IsRepeatedKey(uint32_t object, uint32_t count, std::optional<KeySet>& keys) const
    {
        const auto last = static_cast<uint32_t>(m_tape.m_nodes.size() - 1);
        if (count > kFewMembers)
            return !keys->insert(last).second;
        if (count == kFewMembers)
            keys.emplace(2 * kFewMembers, KeyHash{&m_tape}, KeyEqual{&m_tape});
        const Value key(&m_tape, last);
        for (uint32_t index = object + 1; index < last;)
        {
            if (Value(&m_tape, index).Text() == key.Text())
                return true;
            if (keys)
                keys->insert(index);
            index = m_tape.m_nodes[m_tape.m_nodes[index].next].next; // past the key, then its value
        }
        if (keys)
            keys->insert(last);
        return false;
    }

    bool ReadString()
    {
        const size_t begin = ++m_pos;
        while (m_pos < m_bytes.size())
        {
            const char c = m_bytes[m_pos];
            if (c == '"')
            {
                Push(String, begin, m_pos - begin);
                ++m_pos;
                return true;
            }
            if (c == '\\')
                return ReadEscapedString(begin);
            if (static_cast<unsigned char>(c) < 0x20)
                return false;
            ++m_pos;
        }
        return false;
    }

    // The rest of a string from its first escape, decoded into the pool.
    bool ReadEscapedString(size_t begin)
    {
        std::string& pool = m_tape.m_pool;
        const size_t start = pool.size();
        pool.append(m_bytes.substr(begin, m_pos - begin));
        while (m_pos < m_bytes.size())
        {
            const char c = m_bytes[m_pos++];
            if (c == '"')
            {
                if (pool.size() > std::numeric_limits<uint32_t>::max())
                    return false;
                Push(String, start, pool.size() - start, true);
                return true;
            }
            if (static_cast<unsigned char>(c) < 0x20)
                return false;
            if (c != '\\')
            {
                pool += c;
                continue;
            }
            if (m_pos >= m_bytes.size())
                return false;
            switch (m_bytes[m_pos++])
            {
            case '"': pool += '"'; break;
            case '\\': pool += '\\'; break;
            case '/': pool += '/'; break;
            case 'b': pool += '\b'; break;
            case 'f': pool += '\f'; break;
            case 'n': pool += '\n'; break;
            case 'r': pool += '\r'; break;
            case 't': pool += '\t'; break;
            case 'u':
                if (!ReadCodePoint(pool))
                    return false;
                break;
            default:
                return false;
            }
        }
        return false;
    }

    int ReadHex4()
    {
        if (m_pos + 4 > m_bytes.size())
            return -1;
        int value = 0;
        for (int i = 0; i < 4; ++i)
        {
            const int digit = GuidText::HexDigitValue(m_bytes[m_pos++]);
            if (digit < 0)
                return -1;
            value = value * 16 + digit;
        }
        return value;
    }

    // After "\u": one character, or a surrogate pair written as two escapes.
    bool ReadCodePoint(std::string& out)
    {
        const int unit = ReadHex4();
        if (unit < 0 || (unit >= 0xDC00 && unit <= 0xDFFF))
            return false;
        if (unit < 0xD800 || unit > 0xDBFF)
        {
            AppendUtf8(out, static_cast<uint32_t>(unit));
            return true;
        }
        if (m_bytes.substr(m_pos, 2) != "\\u")
            return false;
        m_pos += 2;
        const int low = ReadHex4();
        if (low < 0xDC00 || low > 0xDFFF)
            return false;
        AppendUtf8(out, 0x10000 + ((static_cast<uint32_t>(unit) - 0xD800) << 10) + (static_cast<uint32_t>(low) - 0xDC00));
        return true;
    }

    size_t SkipDigits()
    {
        const size_t begin = m_pos;
        while (m_pos < m_bytes.size() && IsDigit(m_bytes[m_pos]))
            ++m_pos;
        return m_pos - begin;
    }

    bool ReadNumber()
    {
        const size_t begin = m_pos;
        const bool negative = At('-');
        if (negative)
            ++m_pos;
        const size_t integerBegin = m_pos;
        if (At('0'))
            ++m_pos;
        else if (SkipDigits() == 0)
            return false;
        const std::string_view integer = m_bytes.substr(integerBegin, m_pos - integerBegin);
        bool fraction = false;
        if (At('.'))
        {
            ++m_pos;
            if (SkipDigits() == 0)
                return false;
            fraction = true;
        }
        if (At('e') || At('E'))
        {
            ++m_pos;
            if (At('+') || At('-'))
                ++m_pos;
            if (SkipDigits() == 0)
                return false;
            fraction = true;
        }
        Push(fraction ? Float : IntegerKind(integer, negative), begin, m_pos - begin);
        return true;
    }

    // An integer the 64-bit types cannot hold is read as a floating-point number, as the general
    // parser does.
    static Kind IntegerKind(std::string_view digits, bool negative)
    {
        constexpr std::string_view kMaxUnsigned = "18446744073709551615";
        constexpr std::string_view kMaxNegative = "9223372036854775808";
        const std::string_view limit = negative ? kMaxNegative : kMaxUnsigned;
        const bool fits = digits.size() < limit.size() || (digits.size() == limit.size() && digits <= limit);
        if (!fits)
            return Float;
        return negative ? Integer : Unsigned;
    }

    JsonTape& m_tape;
    std::string_view m_bytes;
    size_t m_maxDepth;
    size_t m_pos = 0;
};

bool JsonTape::Parse(std::string_view bytes, size_t maxDepth)
{
    m_bytes = bytes;
    m_pool.clear();
    m_nodes.clear();
    if (bytes.size() >= std::numeric_limits<uint32_t>::max())
        return false;
    // Pretty-printed files hold about one value per 16 bytes.
    m_nodes.reserve(bytes.size() / 16 + 1);
    return Reader(*this, maxDepth).Document();
}

JsonTape::Value JsonTape::Root() const
{
    return Value(this, 0);
}

std::string_view JsonTape::Value::Text() const
{
    const Node& node = NodeAt();
    const std::string_view text = node.pooled ? std::string_view(m_tape->m_pool) : m_tape->m_bytes;
    return text.substr(node.begin, node.length);
}

uint64_t JsonTape::Value::UnsignedValue() const
{
    return DigitsValue(m_tape->m_bytes.substr(NodeAt().begin, NodeAt().length));
}

int64_t JsonTape::Value::IntegerValue() const
{
    if (kind() == Unsigned)
        return static_cast<int64_t>(UnsignedValue());
    // Negative: the magnitude is at most 2^63, whose negation is still an int64_t.
    const uint64_t magnitude = DigitsValue(m_tape->m_bytes.substr(NodeAt().begin + 1, NodeAt().length - 1));
    return static_cast<int64_t>(0 - magnitude);
}

std::string JsonTape::Value::dump() const
{
    if (kind() == Unsigned)
        return std::to_string(UnsignedValue());
    if (kind() == Integer)
        return std::to_string(IntegerValue());
    return std::string(m_tape->m_bytes.substr(NodeAt().begin, NodeAt().length));
}

std::optional<JsonTape::Value> JsonTape::Value::Find(std::string_view key) const
{
    if (!is_object())
        return std::nullopt;
    for (Iterator it = begin(); it != end(); ++it)
    {
        const Value name = *it;
        ++it;
        if (name.Text() == key)
            return *it;
    }
    return std::nullopt;
}
} // namespace sn::storage
