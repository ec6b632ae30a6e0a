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
    std::wstring problem; // why the query finds nothing on its own (an unknown kind); empty when none

    // Nothing to look for: no word and no kind.
    bool IsEmpty() const { return words.empty() && anyType; }
    static FindQuery Parse(std::wstring_view text);
};

class FindResults
{
public:
    FindResults() = default;
    // The objects of the index the query finds, inside the subtrees of scope (the roots a pane
    // shows; empty: the whole project).
    static FindResults Run(const NameIndex& index, const FindQuery& query,
                           const std::vector<const ProjectObject*>& scope = {});

    size_t Count() const { return m_count; }
    // The object at a place in tree order, null past the end. A query is counted whole, but only
    // its first results are kept in order; asking beyond them searches again for twice as many,
    // so that a query finding a million costs no more than one finding a few until the user
    // scrolls. The index must not have changed since the run (see Generation).
    ProjectObject* At(size_t index);
    // The index's generation the results were taken at.
    uint64_t Generation() const { return m_generation; }

private:
    struct Match
    {
        uint64_t label;
        ProjectObject* object;
    };

    // Counts the results and keeps the first `limit` in tree order.
    void Search(size_t limit);

    const NameIndex* m_index = nullptr;
    FindQuery m_query;
    std::vector<std::pair<uint64_t, uint64_t>> m_ranges; // labels of the scope's subtrees
    bool m_scoped = false;
    size_t m_count = 0;
    std::vector<Match> m_first;
    uint64_t m_generation = 0;
};

// Where the words of the query occur in name, in characters: ordered ranges [first, end) that
// do not overlap, for showing what matched.
std::vector<std::pair<size_t, size_t>> MatchedParts(std::wstring_view name, const FindQuery& query);
} // namespace sn
