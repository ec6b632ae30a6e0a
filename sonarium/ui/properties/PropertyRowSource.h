#pragma once
// Where the property inspector's rows come from. A row source reads the rows one object shows
// and, for the rows it lets the user edit, applies a new value through the host's undoable
// edits. Sources register themselves at load time:
//
//     namespace
//     {
//     void Rows(sn::ProjectObject const& object, sn::PropertyRowSink& rows) { ... }
//     [[maybe_unused]] const bool registered = sn::RegisterPropertyRowSource({300, &Rows, nullptr});
//     }
//
// so that a new kind of row (plug-ins, sources, actions...) is one new file under rows/.

#include "sonarium/core/model/ProjectObject.h"

#include <functional>
#include <string>
#include <vector>

namespace sn
{
enum class PropertyEdit
{
    None,
    Text,   // one line
    Notes,  // several lines
    Colour, // "inherited" or a palette index
};

// One row as one object shows it.
struct PropertyEntry
{
    std::string key;    // stable and unique among all sources: what scripts name ("name")
    std::wstring label; // what the user reads ("Name")
    std::wstring value;
    PropertyEdit edit = PropertyEdit::None;
    // Editable only while a single object is inspected (a name belongs to one object).
    bool singleObjectOnly = false;
};

class PropertyRowSink
{
public:
    void Add(std::string key, std::wstring label, std::wstring value,
             PropertyEdit edit = PropertyEdit::None, bool singleObjectOnly = false)
    {
        m_entries.push_back({std::move(key), std::move(label), std::move(value), edit, singleObjectOnly});
    }
    std::vector<PropertyEntry> const& Entries() const { return m_entries; }

private:
    std::vector<PropertyEntry> m_entries;
};

struct PropertyRowSource
{
    // Sources show their rows in ascending order (100 identity, 200 work unit, 300 appearance,
    // 400 inclusion; leave gaps).
    int order = 0;
    std::function<void(ProjectObject const& object, PropertyRowSink& rows)> rows;
    // Sets one of the source's editable rows on every object, as one undoable change. False,
    // with the reason in `why`, when the value is refused; null for a read-only source.
    std::function<bool(std::string const& key, std::vector<ProjectObject*> const& objects,
                       std::wstring const& value, std::wstring& why)>
        edit;
};

// Always true, so that a source file can register from a static initialiser.
bool RegisterPropertyRowSource(PropertyRowSource source);
// Every source, in order.
std::vector<PropertyRowSource> const& PropertyRowSources();
} // namespace sn
