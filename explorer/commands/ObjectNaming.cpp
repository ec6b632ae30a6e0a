#include "explorer/commands/ObjectNaming.h"

#include "host/AudioSourcesHelpers.h"
#include "host/DlgNewWorkUnit.h"
#include "host/MessageBox.h"
#include "host/ObjectName.h"
#include "host/OrbObjectHelpers.h"
#include "host/PluginInfo.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"
#include "host/UserPreferences.h"
#include "host/WorkUnitHelpers.h"

#include <fmt/xchar.h>

namespace
{
constexpr unsigned long kNoLanguage = AudioSourcesHelpers::LanguageIndependent;

CStdStr<wchar_t> FormatPlaceholder(const wchar_t* localizedTemplate, const std::wstring& value)
{
    const CStdStr<wchar_t> text = StringHelp::Localize(localizedTemplate);
    return fmt::format(fmt::runtime(std::wstring_view(text)), value);
}

void CutToLimit(CStdStr<wchar_t>& name)
{
    if (name.size() > kMaxGeneratedNameLength)
        name.resize(kMaxGeneratedNameLength);
}

// The new-work-unit dialog until the user enters a name the host accepts or gives up.
bool AskWorkUnitName(PMTreeNode::NodeType type, IOrbObject* parentObject, const CStdStr<wchar_t>& base,
                     CStdStr<wchar_t>& name)
{
    CSmartPtr<IOrbWorkUnit> topUnit = WorkUnitHelpers::GetParentTopWorkUnit(parentObject);
    if (!topUnit || !topUnit->IsReadyForNewWorkUnits())
        return false;
    CStdStr<wchar_t> entered = name;
    name.clear();
    const CStdStr<wchar_t> caption = FormatPlaceholder(L"New {0}", base);
    CStdStr<wchar_t> folderPath;
    WorkUnitHelpers::GetWorkUnitFilePath(topUnit, folderPath, false);
    if (CDlgNewWorkUnit::Show(type, folderPath, entered) != 1)
        return false;
    for (;;)
    {
        entered.Trim();
        ObjectName::AutoFixNameCharacters(OrbObjectType_WorkUnit, entered);
        if (type == PMTreeNode::WorkUnit && entered.CompareNoCase(WorkUnitHelpers::GetDefaultWorkUnitName()) == 0)
        {
            const CStdStr<wchar_t> text = FormatPlaceholder(
                L"This name is reserved and cannot be used to create a new Work Unit:\r\n\r\n        {0}", entered);
            if (CXMessageBoxEx(nullptr, text, caption, 17, nullptr) != IDOK)
                return false;
        }
        else
        {
            const ObjectName::NameValidationResult result =
                ObjectName::ValidateObjectName(OrbObjectType_WorkUnit, entered, parentObject, nullptr, true);
            if (result == ObjectName::NameValid)
            {
                name = entered;
                return true;
            }
            if (!ObjectName::DisplayInvalidNameErrorMessage(result, OrbObjectType_WorkUnit, entered, true))
                return false;
        }
        if (CDlgNewWorkUnit::Show(type, folderPath, entered) != 1)
            return false;
    }
}
} // namespace

bool MakeNewObjectName(PMTreeNode::NodeType type, PMTreeNode* parent, CStdStr<wchar_t>& name)
{
    const OrbObjectType objectType = TreeNodeWithObject::ConvertObjectType(type);
    CSmartPtr<IOrbObject> parentObject;
    if (parent && IDataManager::Get())
        parentObject.Attach(IDataManager::Get()->GetObjectByGUID(parent->ID()));

    // The first bus of a tree without busses is the master bus.
    const bool masterBus =
        type == PMTreeNode::Bus &&
        !OrbObjectHelpers::AnyAncestor(
            parentObject, [](const IOrbObject* object) { return object->GetObjectType() == OrbObjectType_Bus; }, true);
    const CStdStr<wchar_t> base =
        masterBus ? StringHelp::Localize(L"Master Bus") : PMTreeNode::GetNodeTypeName(type);
    name.Format(L"New %s", base.c_str());
    ObjectName::MakeObjectNameValid(objectType, name, parentObject, nullptr, kNoLanguage);

    if (objectType != OrbObjectType_WorkUnit)
    {
        if (type == PMTreeNode::Event)
            ApplyEventNameCase(name);
        return true;
    }
    return AskWorkUnitName(type, parentObject, base, name);
}

bool MakePluginChildName(uint32_t pluginId, CStdStr<wchar_t>& name, OrbObjectType objectType)
{
    const PluginInfo* plugin = PluginMgr::GetPluginInfo(pluginId);
    if (!plugin)
        return false;
    if (objectType == OrbObjectType_AudioDevice)
        name = plugin->Name();
    else
        name.Format(L"New %s", plugin->Name().c_str());
    CutToLimit(name);
    ObjectName::MakeObjectNameValid(objectType, name, nullptr, nullptr, kNoLanguage);
    return true;
}

CStdStr<wchar_t> MakeEventChildName(OrbEventActionEnum::OrbEventActionType action,
                                    OrbEventActionEnum::OrbEventActionScope scope)
{
    CStdStr<wchar_t> name;
    if (action == OrbEventActionEnum::ActionType_None)
    {
        MakeNewObjectName(PMTreeNode::Event, nullptr, name);
        return name;
    }
    name = OrbObjectHelpers::ConvertActionTypeToString(action, scope);
    CutToLimit(name);
    ObjectName::MakeObjectNameValid(OrbObjectType_Event, name, nullptr, nullptr, kNoLanguage);
    ApplyEventNameCase(name);
    return name;
}

CStdStr<wchar_t> MakeEventName(bool defaultName, IOrbEventAction* action, const CStdStr<wchar_t>& objectName)
{
    CStdStr<wchar_t> name;
    if (defaultName)
    {
        MakeNewObjectName(PMTreeNode::Event, nullptr, name);
        return name;
    }
    const CStdStr<wchar_t> actionName = OrbObjectHelpers::ConvertActionTypeToString(action);
    if (objectName.empty())
        name = actionName;
    else if (!EditorPreferences::IsUseActionNameForEvent())
        name = objectName;
    else if (EditorPreferences::IsEventActionNamePrefix())
        name.Format(L"%s_%s", actionName.c_str(), objectName.c_str());
    else
        name.Format(L"%s_%s", objectName.c_str(), actionName.c_str());
    CutToLimit(name);
    ObjectName::MakeObjectNameValid(OrbObjectType_Event, name, nullptr, nullptr, kNoLanguage);
    ApplyEventNameCase(name);
    return name;
}

void ApplyEventNameCase(CStdStr<wchar_t>& name)
{
    if (!EditorPreferences::IsModifyEventNameCase())
        return;
    if (EditorPreferences::IsEventNameCaseAllLower())
        name.MakeLower();
    else
        name.MakeUpper();
}
