#pragma once
// The host's property inspector, without its toolkit: the objects last sent to it on the
// "Inspector" channel and their properties as rows of label and value, one value per object
// and the value they share. Rows come from the registered row sources; edits go through the
// host's undoable project edits. It follows the project: an object that leaves it drops out,
// a change shows at the next read of the rows, and opening or closing a project empties it.

#include "host/NotifyMgr.h"
#include "host/SmartPtr.h"
#include "sonarium/ui/properties/PropertyRowSource.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class IOrbObject;

namespace sn
{
struct PropertyRow
{
    std::string key;
    std::wstring label;
    // One per inspected object; empty when the object has no such row.
    std::vector<std::optional<std::wstring>> values;
    // None when the row cannot be edited for the objects inspected now.
    PropertyEdit edit = PropertyEdit::None;

    // The value every inspected object shows; nothing when they differ or one has no such row.
    std::optional<std::wstring> Common() const;
};

class PropertiesModel
{
public:
    PropertiesModel();
    ~PropertiesModel();
    PropertiesModel(PropertiesModel const&) = delete;
    PropertiesModel& operator=(PropertiesModel const&) = delete;

    // What the host's inspection notification does; objects that are not the host's are left out.
    void Inspect(std::vector<IOrbObject*> const& objects);
    void Clear();
    std::vector<ProjectObject*> Objects() const;
    // Whether exactly these objects are inspected, in any order.
    bool Shows(std::vector<IOrbObject*> const& objects) const;

    // The rows for the objects as they are now.
    std::vector<PropertyRow> const& Rows();
    // Sets a row's value on every inspected object as one undo step; false with the reason
    // when the row is unknown, read-only, or the value is refused.
    bool Edit(std::string const& key, std::wstring const& value, std::wstring& why);

    // Changes whenever the objects or their rows may have changed.
    uint64_t Version() const { return m_version; }
    // Called after each such change, for the panel that shows it.
    void SetListener(void (*listener)(void*), void* context);

    // The printout: "Label: value", or "Label: (mixed) a | b" when the objects differ.
    std::vector<std::wstring> Lines();

private:
    void OnInspect(CNotifyItemBase* item);
    void OnProject(CNotifyItemBase* item);
    void OnChange(CNotifyItemBase* item);
    void Changed();
    void Rebuild();

    std::vector<CSmartPtr<ProjectObject>> m_objects;
    std::vector<PropertyRow> m_rows;
    // Which source each row came from, by position in m_rows.
    std::vector<size_t> m_rowSources;
    bool m_stale = true;
    uint64_t m_version = 0;
    void (*m_listener)(void*) = nullptr;
    void* m_listenerContext = nullptr;
};
} // namespace sn
