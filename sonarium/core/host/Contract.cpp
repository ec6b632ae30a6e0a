// The free functions of the host contract, answered by the running host.

#include "host/EditingManager.h"
#include "host/HostWindows.h"
#include "host/OrbObjNotify.h"
#include "host/OrbObjectCategories.h"
#include "host/StringHelp.h"
#include "sonarium/core/host/Host.h"
#include "sonarium/core/model/ModelNotify.h"
#include "sonarium/core/model/NodeRules.h"

#include <algorithm>

namespace priv
{
IOrbObject* LookupOrbObject(GUID const& id)
{
    sn::Host* host = sn::Host::Get();
    sn::Project* project = host ? host->GetProject() : nullptr;
    IOrbObject* object = project ? project->Find(id) : nullptr;
    if (object)
        object->AddRef();
    return object;
}

void ReleaseObject(IOrbObject* object)
{
    if (object)
        object->Release();
}
} // namespace priv

namespace
{
class DataManager : public IDataManager
{
public:
    IOrbObject* GetObjectByGUID(GUID const& id) const override { return priv::LookupOrbObject(id); }
};
} // namespace

IDataManager* IDataManager::Get()
{
    static DataManager manager;
    return sn::Host::Get() ? &manager : nullptr;
}

namespace OrbObjectCategories
{
std::vector<Category> GetActiveCategories()
{
    return sn::rules::AllCategories();
}

Category GetOrbObjectCategory(IOrbObject const* object)
{
    const sn::ProjectObject* model = sn::AsProjectObject(object);
    return model ? model->GetCategory() : None;
}

void GetSupportedObjectTypes(Category category, std::set<OrbObjectType>& types)
{
    // Every kind that a work unit or folder of the category, or anything below them, may hold.
    std::set<PMTreeNode::NodeType> seen;
    std::vector<PMTreeNode::NodeType> pending{PMTreeNode::WorkUnit};
    while (!pending.empty())
    {
        const PMTreeNode::NodeType type = pending.back();
        pending.pop_back();
        if (!seen.insert(type).second)
            continue;
        types.insert(sn::rules::ObjectTypeOf(type));
        for (PMTreeNode::NodeType child : sn::rules::RuleFor(type, category, false).children)
            pending.push_back(child);
    }
}
} // namespace OrbObjectCategories

namespace OrbObjNotify
{
void FireInspectNotification(IOrbObject* object, int first, int second, bool force, NotifyHelper::InspectTab tab,
                             bool pin, bool fromDoubleClick, bool bringToFront, HWND source)
{
    std::vector<IOrbObject*> objects;
    if (object)
        objects.push_back(object);
    FireInspectNotification(objects, first, second, force, tab, pin, fromDoubleClick, bringToFront, source);
}

void FireInspectNotification(std::vector<IOrbObject*> const& objects, int, int, bool, NotifyHelper::InspectTab,
                             bool, bool fromDoubleClick, bool, HWND)
{
    if (!INotifyMgr::m_pInstance)
        return;
    sn::notify::InspectParam param(objects, fromDoubleClick);
    INotifyMgr::m_pInstance->Notify(sn::notify::chInspector, param);
}
} // namespace OrbObjNotify

namespace StringHelp
{
CStdStr<wchar_t> Localize(wchar_t const* text)
{
    // The reference host ships in English only.
    return text ? CStdStr<wchar_t>(text) : CStdStr<wchar_t>();
}

CStdStr<wchar_t> IntToString(int value)
{
    return CStdStr<wchar_t>(std::to_wstring(value));
}

CStdStr<wchar_t> UIntToString(unsigned int value)
{
    return CStdStr<wchar_t>(std::to_wstring(value));
}
} // namespace StringHelp

bool EditingManager::IsInPlayback()
{
    sn::Host* host = sn::Host::Get();
    return host && host->IsInPlayback();
}

CWnd* SonariumGetMainWnd()
{
    sn::Host* host = sn::Host::Get();
    return host ? host->GetMainWnd() : nullptr;
}

CWnd* GetTopMostWndForMsgBox()
{
    return SonariumGetMainWnd();
}

void BringApplicationToTop()
{
    // The application window is raised by the desktop layer; headless there is nothing to do.
}
