#pragma once
// Finding objects by name: a query as the user types it, and its results in tree order.
//
// A query is words separated by blanks; every word must occur in an object's name, whatever the
// case. A word "type:NAME" keeps the objects whose kind's display name begins with the words of
// NAME ("type:Sound" keeps "Sound SFX" and "Sound Voice", "type:RandomContainer" one kind);
// several such words keep the kinds of any of them.

#include "host/PMTreeNode.h"
#include "sonarium/core/find/NameIndex.h"

#include <bitset>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sn
{
struct FindQuery
{
    std::vector<std::string> words; // lower-cased UTF-8, the longest first
    std::bitset<PMTreeNode::NodeTypeCount> types;
    bool anyType = true;
    // The word the text ends in while it is typed (not followed by a blank): the one the next
    // key extends.
    std::string typing;
    std::wstring problem; // why the query finds nothing on its own (an unknown kind); empty when none

    // Nothing to look for: no word and no kind.
    bool IsEmpty() const { return words.empty() && anyType; }
    // Whether everything this query finds, wider finds too (as when a word typed grows).
    bool Narrows(const FindQuery& wider) const;
    static FindQuery Parse(std::wstring_view text);
};

class FindResults
{
public:
    FindResults() = default;
    // The objects of the index the query finds, inside the subtrees of scope (the roots a pane
    // shows; empty: the whole project). Given the results of the query typed before, taken on
    // the same index, scope and generation, a query that narrows it reads only their objects,
    // and takes their memory: previous is left empty.
    static FindResults Run(const NameIndex& index, const FindQuery& query,
                           const std::vector<const ProjectObject*>& scope = {},
                           FindResults* previous = nullptr);

    size_t Count() const { return m_matches.size(); }
    // The object at a place in tree order, null past the end. Only the first results are put in
    // order at once; reading beyond them orders the rest, so that a query finding a million
    // costs little more than one finding a few until the user scrolls. The index must not have
    // changed since the run (see Generation).
    ProjectObject* At(size_t index);
    // The index's generation the results were taken at.
    uint64_t Generation() const { return m_generation; }

private:
    // Whether the record's object is found (scope not checked); followers, when given, gets the
    // letters that come after the word being typed where it occurs.
    bool Matches(uint32_t record, uint32_t* followers) const;
    bool InScope(uint32_t record) const;
    // Puts the first `limit` matches in tree order: by walking the tree while matches are
    // dense in it, else by their labels.
    void Order(size_t limit);
    bool OrderByWalking(size_t limit);
    void OrderByLabels(size_t limit);

    const NameIndex* m_index = nullptr;
    FindQuery m_query;
    uint32_t m_letters = 0;              // of all the words
    uint32_t m_need = 0;                 // those a match is checked for
    std::vector<std::string> m_checked;  // the words the letters alone do not tell
    size_t m_typingAt = 0;               // where the word being typed is among them
    bool m_plain = true;                 // no word holds a byte that ends or fills a name's room
    std::vector<std::pair<uint64_t, uint64_t>> m_ranges; // labels of the scope's subtrees
    std::vector<const ProjectObject*> m_tops; // their tops, in tree order
    bool m_scoped = false;                    // some indexed objects are outside the scope
    std::vector<uint32_t> m_matches;          // records, in arena order
    std::vector<uint32_t> m_followers;        // by match, when m_followed: see Matches
    bool m_followed = false;
    uint32_t m_scratch = 0;
    std::vector<uint32_t> m_first;            // slots of the first of them in tree order
    uint64_t m_generation = 0;
};

// Where the words of the query occur in name, in characters: ordered ranges [first, end) that
// do not overlap, for showing what matched.
std::vector<std::pair<size_t, size_t>> MatchedParts(std::wstring_view name, const FindQuery& query);
} // namespace sn
