// Per-user memory of which nodes were expanded under each root and which row was at the
// top of the view, kept in the host's preferences store under the explorer's settings path.

#include "explorer/DlgProjectExplorer.h"

#include "host/ProjectManager.h"
#include "host/StringHelp.h"
#include "host/UserPreferences.h"
#include "module/ExplorerNames.h"

#include <cstring>
#include <memory>

using namespace PENames;

namespace
{
constexpr size_t kGuidSize = sizeof(GUID);
} // namespace

CStdStr<wchar_t> DlgProjectExplorer::GetExpandedSettingName(GUID const& rootId) const
{
    OrbObjectCategories::Category category = OrbObjectCategories::None;
    if (IOrbObject* object = priv::LookupOrbObject(rootId))
    {
        category = OrbObjectCategories::GetOrbObjectCategory(object);
        priv::ReleaseObject(object);
    }
    return CStdStr<wchar_t>(L"Expanded_") + StringHelp::IntToString(category) + L"_" +
           StringHelp::UIntToString(static_cast<unsigned int>(m_syncGroup));
}

CStdStr<wchar_t> DlgProjectExplorer::GetScrollSettingName(OrbObjectCategories::Category category) const
{
    return CStdStr<wchar_t>(L"FirstVisible_") + StringHelp::IntToString(category) + L"_" +
           StringHelp::UIntToString(static_cast<unsigned int>(m_syncGroup));
}

void DlgProjectExplorer::LoadExpandStates()
{
    if (m_categories.empty())
        return;
    IUserPreferences* preferences = IUserPreferences::Get();
    const std::set<GUID, GUIDLess> noSelection;
    for (PMTreeNode* root : m_rootNodes)
    {
        std::set<GUID, GUIDLess> expanded;
        unsigned char* data = nullptr;
        size_t size = 0;
        if (preferences &&
            preferences->GetBinaryValue(szSettingsPath, GetExpandedSettingName(root->ID()), &data, &size))
        {
            std::unique_ptr<unsigned char[]> buffer(data);
            if (size % kGuidSize == 0)
            {
                for (size_t offset = 0; offset < size; offset += kGuidSize)
                {
                    GUID id;
                    std::memcpy(&id, buffer.get() + offset, kGuidSize);
                    expanded.insert(id);
                }
            }
        }
        root->ExpandAndSelectChildrenNode(expanded, noSelection);
    }
    m_expandStatesLoaded = true;
}

void DlgProjectExplorer::SaveExpandStates()
{
    if (!m_expandStatesLoaded || m_categories.empty())
        return;
    IUserPreferences* preferences = IUserPreferences::Get();
    if (!preferences)
        return;
    for (PMTreeNode* root : m_rootNodes)
    {
        std::set<GUID, GUIDLess> expanded, selected;
        root->GetExpandedAndSelectedChildren(expanded, selected);
        std::vector<unsigned char> bytes(expanded.size() * kGuidSize);
        size_t offset = 0;
        for (GUID const& id : expanded)
        {
            std::memcpy(bytes.data() + offset, &id, kGuidSize);
            offset += kGuidSize;
        }
        preferences->SetBinaryValue(szSettingsPath, GetExpandedSettingName(root->ID()), bytes.data(),
                                    bytes.size());
    }
}

void DlgProjectExplorer::SaveScrollState()
{
    if (!m_expandStatesLoaded || m_categories.empty())
        return;
    IUserPreferences* preferences = IUserPreferences::Get();
    if (!preferences)
        return;
    auto firstVisible =
        reinterpret_cast<HTREEITEM>(m_tree.SendMessage(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
    preferences->SetGUIDValue(szSettingsPath, GetScrollSettingName(*m_categories.begin()),
                              GetGUIDOfItem(firstVisible));
}

LRESULT DlgProjectExplorer::LoadScrollState()
{
    IUserPreferences* preferences = IUserPreferences::Get();
    if (!preferences || m_categories.empty())
        return 0;
    GUID id = GUID_NULL;
    preferences->GetGUIDValue(id, szSettingsPath, GetScrollSettingName(*m_categories.begin()), GUID_NULL);
    if (id == GUID_NULL)
        return 0;
    if (HTREEITEM item = m_tree.GetItemWithGUID(id, TVI_ROOT))
        m_tree.SendMessage(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(item));
    return 0;
}
