#include "sonarium/ui/properties/PropertiesModel.h"

#include "host/Undo.h"
#include "sonarium/core/model/ModelNotify.h"

#include <algorithm>
#include <map>

namespace sn
{
namespace
{
const ROString k_workUnitChannel("WorkUnit");
} // namespace

std::optional<std::wstring> PropertyRow::Common() const
{
    if (values.empty() || !values.front())
        return std::nullopt;
    for (std::optional<std::wstring> const& value : values)
        if (value != values.front())
            return std::nullopt;
    return values.front();
}

PropertiesModel::PropertiesModel()
{
    if (INotifyMgr* notify = INotifyMgr::m_pInstance)
    {
        notify->Register(notify::chInspector, NotifyDelegate(this, &PropertiesModel::OnInspect));
        notify->Register(notify::chProject, NotifyDelegate(this, &PropertiesModel::OnProject));
        notify->Register(notify::chObject, NotifyDelegate(this, &PropertiesModel::OnChange));
        notify->Register(k_workUnitChannel, NotifyDelegate(this, &PropertiesModel::OnChange));
    }
}

PropertiesModel::~PropertiesModel()
{
    if (INotifyMgr* notify = INotifyMgr::m_pInstance)
    {
        notify->UnRegister(notify::chInspector, NotifyDelegate(this, &PropertiesModel::OnInspect));
        notify->UnRegister(notify::chProject, NotifyDelegate(this, &PropertiesModel::OnProject));
        notify->UnRegister(notify::chObject, NotifyDelegate(this, &PropertiesModel::OnChange));
        notify->UnRegister(k_workUnitChannel, NotifyDelegate(this, &PropertiesModel::OnChange));
    }
}

void PropertiesModel::SetListener(void (*listener)(void*), void* context)
{
    m_listener = listener;
    m_listenerContext = context;
}

void PropertiesModel::Changed()
{
    m_stale = true;
    ++m_version;
    if (m_listener)
        m_listener(m_listenerContext);
}

void PropertiesModel::Inspect(std::vector<IOrbObject*> const& objects)
{
    m_objects.clear();
    for (IOrbObject* object : objects)
        if (ProjectObject* model = AsProjectObject(object);
            model &&
            std::none_of(m_objects.begin(), m_objects.end(),
                         [model](CSmartPtr<ProjectObject> const& held) { return held.Get() == model; }))
            m_objects.emplace_back(model);
    Changed();
}

void PropertiesModel::Clear()
{
    if (m_objects.empty())
        return;
    m_objects.clear();
    Changed();
}

std::vector<ProjectObject*> PropertiesModel::Objects() const
{
    std::vector<ProjectObject*> objects;
    for (CSmartPtr<ProjectObject> const& object : m_objects)
        objects.push_back(object.Get());
    return objects;
}

bool PropertiesModel::Shows(std::vector<IOrbObject*> const& objects) const
{
    std::vector<ProjectObject const*> wanted;
    for (IOrbObject* object : objects)
        wanted.push_back(AsProjectObject(object));
    std::vector<ProjectObject const*> shown;
    for (CSmartPtr<ProjectObject> const& object : m_objects)
        shown.push_back(object.Get());
    std::sort(wanted.begin(), wanted.end());
    wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
    std::sort(shown.begin(), shown.end());
    return wanted == shown;
}

void PropertiesModel::OnInspect(CNotifyItemBase* item)
{
    if (auto* param = item ? dynamic_cast<notify::InspectParam*>(item->pData) : nullptr)
        Inspect(param->objects);
}

void PropertiesModel::OnProject(CNotifyItemBase* item)
{
    // The objects shown belong to the project going away, or to none of the one just opened.
    if (item && item->pData &&
        (item->pData->event == notify::evPreClose || item->pData->event == notify::evLoaded ||
         item->pData->event == notify::evCreated))
    {
        m_objects.clear();
        Changed();
    }
}

void PropertiesModel::OnChange(CNotifyItemBase*)
{
    if (m_objects.empty())
        return;
    // Deleted objects, and those of a work unit unloaded, are no longer there to inspect.
    std::erase_if(m_objects, [](CSmartPtr<ProjectObject> const& object) { return !object->IsInProject(); });
    Changed();
}

void PropertiesModel::Rebuild()
{
    m_rows.clear();
    m_rowSources.clear();
    m_stale = false;
    std::vector<PropertyRowSource> const& sources = PropertyRowSources();
    const size_t count = m_objects.size();
    std::map<std::string, size_t> byKey;
    for (size_t source = 0; source < sources.size(); ++source)
        for (size_t index = 0; index < count; ++index)
        {
            PropertyRowSink sink;
            sources[source].rows(*m_objects[index], sink);
            for (PropertyEntry const& entry : sink.Entries())
            {
                auto [found, added] = byKey.emplace(entry.key, m_rows.size());
                if (added)
                {
                    PropertyRow row{entry.key, entry.label, std::vector<std::optional<std::wstring>>(count),
                                     entry.edit};
                    if (!sources[source].edit || (entry.singleObjectOnly && count > 1))
                        row.edit = PropertyEdit::None;
                    m_rows.push_back(std::move(row));
                    m_rowSources.push_back(source);
                }
                PropertyRow& row = m_rows[found->second];
                row.values[index] = entry.value;
                if (entry.edit != row.edit)
                    row.edit = PropertyEdit::None; // editable only where every object agrees
            }
        }
    // An object without a row cannot take its value.
    for (PropertyRow& row : m_rows)
        if (std::any_of(row.values.begin(), row.values.end(), [](auto const& value) { return !value; }))
            row.edit = PropertyEdit::None;
}

std::vector<PropertyRow> const& PropertiesModel::Rows()
{
    if (m_stale)
        Rebuild();
    return m_rows;
}

bool PropertiesModel::Edit(std::string const& key, std::wstring const& value, std::wstring& why)
{
    Rows();
    auto row =
        std::find_if(m_rows.begin(), m_rows.end(), [&](PropertyRow const& r) { return r.key == key; });
    if (row == m_rows.end())
    {
        why = m_objects.empty() ? L"nothing is inspected" : L"the inspected objects have no such property";
        return false;
    }
    if (row->edit == PropertyEdit::None)
    {
        why = row->label + (m_objects.size() > 1 ? L" cannot be changed for several objects at once"
                                                 : L" cannot be changed here");
        return false;
    }
    const PropertyRowSource& source =
        PropertyRowSources()[m_rowSources[static_cast<size_t>(row - m_rows.begin())]];
    const std::wstring label = row->label;
    AutoComplexUndo undo(label.c_str(), false);
    return source.edit(key, Objects(), value, why);
}

namespace
{
// One printed line per row, whatever the value holds.
std::wstring OneLine(std::wstring text)
{
    for (size_t at = 0; (at = text.find(L'\n', at)) != std::wstring::npos; at += 2)
        text.replace(at, 1, L"\\n");
    return text;
}
} // namespace

std::vector<std::wstring> PropertiesModel::Lines()
{
    std::vector<std::wstring> lines;
    if (m_objects.empty())
        return {L"(nothing)"};
    for (PropertyRow const& row : Rows())
    {
        std::wstring line = row.label + L":";
        if (std::optional<std::wstring> common = row.Common())
            line += common->empty() ? L"" : L" " + OneLine(*common);
        else
        {
            line += L" (mixed)";
            for (size_t i = 0; i < row.values.size(); ++i)
                line += (i == 0 ? L" " : L" | ") + OneLine(row.values[i].value_or(L"-"));
        }
        if (row.edit != PropertyEdit::None)
            line += L"  [editable]";
        lines.push_back(std::move(line));
    }
    return lines;
}
} // namespace sn
