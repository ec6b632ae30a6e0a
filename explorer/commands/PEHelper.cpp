#include "explorer/commands/PEHelper.h"

#include "host/OrbObjectCategories.h"
#include "host/OrbObjectHelpers.h"
#include "host/ServiceProvider.h"
#include "host/TreeNodeWithObject.h"
#include "host/Utf8.h"

#include <array>

namespace
{
// Prefixes built once, on first use.
const CStdStr<wchar_t>& CreateParentPrefix()
{
    static const CStdStr<wchar_t> text(L"Create Parent ");
    return text;
}

const CStdStr<wchar_t>& CreateChildPrefix()
{
    static const CStdStr<wchar_t> text(L"Create Child ");
    return text;
}

const CStdStr<wchar_t>& CommandIdHead()
{
    static const CStdStr<wchar_t> text(L"View");
    return text;
}

const CStdStr<wchar_t>& ExplorerScope()
{
    static const CStdStr<wchar_t> text(L"Project Explorer");
    return text;
}

const CStdStr<wchar_t>& CreateCommandIdHead()
{
    static const CStdStr<wchar_t> text(CommandIdHead() + ExplorerScope() + L"Create");
    return text;
}

const CStdStr<wchar_t>& ParentWord()
{
    static const CStdStr<wchar_t> text(L"Parent");
    return text;
}

const CStdStr<wchar_t>& ChildWord()
{
    static const CStdStr<wchar_t> text(L"Child");
    return text;
}

const CStdStr<wchar_t>& LabelSeparator()
{
    static const CStdStr<wchar_t> text(L"\t");
    return text;
}

sn::CommandService* Commands()
{
    return sn::g_serviceProviderInstance
               ? sn::g_serviceProviderInstance->Get<sn::CommandService>(sn::ServiceId_Commands)
               : nullptr;
}
} // namespace

namespace PEHelper
{
CStdStr<wchar_t> ConvertNodeTypeToStringId(PMTreeNode::NodeType type)
{
    switch (type)
    {
    case 2:
        return L"Physical Folder";
    case 3:
        return L"Work Unit";
    case 4:
        return L"Folder";
    case 5:
        return L"Actor-Mixer";
    case 6:
        return L"Switch Container";
    case 7:
        return L"Random Container";
    case 8:
        return L"Sequence Container";
    case 9:
        return L"Blend Container";
    case 10:
        return L"Sound SFX";
    case 11:
        return L"Sound Voice";
    case 12:
        return L"Bus";
    case 13:
        return L"Auxiliary Bus";
    case 16:
        return L"Event";
    case 27:
        return L"Music Switch Container";
    case 28:
        return L"Music Playlist Container";
    case 29:
        return L"Music Segment";
    case 30:
        return L"Music Track";
    default:
        return L"";
    }
}

CStdStr<wchar_t> GenerateCommandNameFromNodeType(PMTreeNode::NodeType type, bool parent)
{
    return (parent ? CreateParentPrefix() : CreateChildPrefix()) + ConvertNodeTypeToStringId(type);
}

CStdStr<wchar_t> GenerateCommandIdFromName(CStdStr<wchar_t> name, const wchar_t* scope)
{
    RemoveSpaces(name);
    CStdStr<wchar_t> id = CommandIdHead() + (scope ? scope : L"") + name;
    name.clear();
    return id;
}

bool DoAllNodesHaveCapability(const std::vector<PMTreeNode*>& nodes, PMTreeNode::CapabilityTypes capability)
{
    for (PMTreeNode* node : nodes)
        if (!node->Capabilities().test(static_cast<size_t>(capability)))
            return false;
    return true;
}

bool CanAllNodesHaveParent(const std::vector<PMTreeNode*>& nodes, PMTreeNode::NodeType parentType)
{
    for (PMTreeNode* node : nodes)
        if (!node->PossibleParentType().count(parentType))
            return false;
    return true;
}
} // namespace PEHelper

int RemoveSpaces(CStdStr<wchar_t>& s)
{
    int erased = 0;
    for (size_t pos = s.find(L' '); pos != CStdStr<wchar_t>::npos; pos = s.find(L' '))
    {
        s.erase(pos, 1);
        ++erased;
    }
    return erased;
}

void AppendCreateCommandShortcut(PMTreeNode::NodeType type, CStdStr<wchar_t>& label, bool parent)
{
    CStdStr<wchar_t> name = PEHelper::ConvertNodeTypeToStringId(type);
    if (name.IsEmpty())
        return;
    RemoveSpaces(name);
    const CStdStr<wchar_t> id = CreateCommandIdHead() + (parent ? ParentWord() : ChildWord()) + name;
    sn::CommandService* commands = Commands();
    if (commands && commands->HasCommand(ROString(Utf8::FromWide(id))))
        label += LabelSeparator() + id;
}

IOrbObject* NodeObject(PMTreeNode* node)
{
    auto* withObject = dynamic_cast<TreeNodeWithObject*>(node);
    return withObject ? withObject->GetObject() : nullptr;
}

bool CanDeleteNode(PMTreeNode* node)
{
    return node && node->Capabilities().test(PMTreeNode::CanDelete) && OrbObjectHelpers::CanDelete(NodeObject(node));
}

bool CanRenameNode(PMTreeNode* node)
{
    return node && node->Capabilities().test(PMTreeNode::CanRename) && OrbObjectHelpers::CanRename(NodeObject(node));
}

bool CanEditDuringPlayback(PMTreeNode* node)
{
    IOrbObject* object = NodeObject(node);
    if (!object)
        return false;
    static constexpr std::array<OrbObjectCategories::Category, 5> kEditable = {
        OrbObjectCategories::AuditionSessions, OrbObjectCategories::Queries, OrbObjectCategories::MixingSessions,
        OrbObjectCategories::Events, OrbObjectCategories::ControlSurfaces};
    const OrbObjectCategories::Category category = OrbObjectCategories::GetOrbObjectCategory(object);
    for (OrbObjectCategories::Category editable : kEditable)
        if (category == editable)
            return true;
    return false;
}
