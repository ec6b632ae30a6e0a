#include "explorer/toolbar/ObjectToolbar.h"

#include "explorer/commands/PEHelper.h"
#include "host/ButtonWithTooltip.h"
#include "host/EditingManager.h"
#include "host/ObjectIcons.h"
#include "host/StringHelp.h"
#include "host/TreeNodeWithObject.h"
#include "host/UISubClassingMgr.h"
#include "platform/Canvas.h"
#include "platform/TreeViewTypes.h"
#include "platform/WindowSystem.h"

#include <fmt/xchar.h>

namespace
{
// Node types created as plug-ins from the context menu, never from a button.
bool IsPluginNodeType(PMTreeNode::NodeType type)
{
    return type == PMTreeNode::EffectPlugin || type == PMTreeNode::MixerPlugin || type == PMTreeNode::AudioDevice;
}

// The second node type of an object type that stands for two.
PMTreeNode::NodeType SiblingNodeType(OrbObjectType type)
{
    switch (type)
    {
    case OrbObjectType_WorkUnit:
        return PMTreeNode::PhysicalFolder;
    case OrbObjectType_Container:
        return PMTreeNode::SequenceContainer;
    case OrbObjectType_Sound:
        return PMTreeNode::SoundVoice;
    default:
        return PMTreeNode::None;
    }
}

// Types that share an object type with another button draw an icon of their own.
const sn::theme::Bitmap* ButtonIcon(PMTreeNode::NodeType type, bool disabled)
{
    switch (type)
    {
    case PMTreeNode::PhysicalFolder:
        return ObjectIcons::GetObjectIcon(ObjectIcons::IconType(51), disabled);
    case PMTreeNode::SequenceContainer:
        return ObjectIcons::GetObjectIcon(ObjectIcons::IconType(3), disabled);
    case PMTreeNode::SoundVoice:
        return ObjectIcons::GetObjectIcon(ObjectIcons::IconType(9), disabled);
    default:
        return ObjectIcons::GetObjectIcon(TreeNodeWithObject::ConvertObjectType(type), disabled);
    }
}

bool HasCapability(const PMTreeNode* node, PMTreeNode::CapabilityTypes bit)
{
    return node->Capabilities().test(static_cast<size_t>(bit));
}
} // namespace

// clang-format off
BEGIN_MESSAGE_MAP(ObjectToolbar, CWnd)
    ON_WM_DESTROY()
    ON_CONTROL_RANGE(BN_CLICKED, FIRST_BUTTON_ID, LAST_BUTTON_ID, &ObjectToolbar::OnButtonClicked)
END_MESSAGE_MAP()
// clang-format on

ObjectToolbar::ObjectToolbar(std::set<OrbObjectCategories::Category> const& categories) : m_categories(categories)
{
}

ObjectToolbar::~ObjectToolbar()
{
    SetCurrentObject(nullptr);
    for (CButtonWithTooltip* button : m_buttons)
        delete button;
    m_buttons.clear();
}

BOOL ObjectToolbar::Create(CWnd* parent, IObjectToolbarOwner* owner)
{
    m_pOwner = owner;

    std::set<OrbObjectType> objectTypes;
    for (OrbObjectCategories::Category category : m_categories)
    {
        std::set<OrbObjectType> supported;
        OrbObjectCategories::GetSupportedObjectTypes(category, supported);
        objectTypes.insert(supported.begin(), supported.end());
    }

    std::vector<PMTreeNode::NodeType> types;
    for (OrbObjectType objectType : objectTypes)
    {
        const PMTreeNode::NodeType type = TreeNodeWithObject::ConvertObjectType(objectType);
        if (IsPluginNodeType(type))
            continue;
        types.push_back(type);
        if (PMTreeNode::NodeType sibling = SiblingNodeType(objectType); sibling != PMTreeNode::None)
            types.push_back(sibling);
    }

    const int size = UISubClassingMgr::ScaleToDpi(BUTTON_SIZE);
    const BOOL created = CreateEx(0, nullptr, L"ObjectToolbar", WS_CHILD | WS_VISIBLE,
                                  CRect(0, 0, static_cast<int>(types.size()) * size, size), parent, IDC_TOOLBAR);

    for (size_t i = 0; i < types.size(); ++i)
    {
        auto* button = new CButtonWithTooltip;
        const int left = static_cast<int>(i) * size;
        button->Create(L"", WS_CHILD | WS_VISIBLE, CRect(left, 0, left + size, size), this,
                       static_cast<UINT>(types[i]));
        button->ShowWindow(SW_SHOW);
        button->CreateToolTip();
        UISubClassingMgr::SubClassControl(button->GetSafeHwnd());
        m_buttons.push_back(button);
    }

    UpdateButtons(nullptr);
    return created;
}

void ObjectToolbar::UpdateButtons(const std::vector<PMTreeNode*>* nodes)
{
    const bool shift = GetKeyState(VK_SHIFT) < 0;
    const bool playback = EditingManager::IsInPlayback();
    PMTreeNode* first = nodes && !nodes->empty() ? nodes->front() : nullptr;
    IOrbObject* object = first ? static_cast<TreeNodeWithObject*>(first)->GetObject() : nullptr;

    bool disabled = false;
    if (!object)
    {
        disabled = true;
    }
    else if (playback && !CanEditDuringPlayback(first))
    {
        disabled = true;
    }
    else if (shift)
    {
        CSmartPtr<IOrbObject> parent;
        parent.Attach(object->GetParentObject());
        disabled = !(parent && HasCapability(first, PMTreeNode::CanInsertParent));
    }

    for (CButtonWithTooltip* button : m_buttons)
    {
        if (disabled)
        {
            button->EnableWindow(FALSE);
            continue;
        }
        const auto type = static_cast<PMTreeNode::NodeType>(button->GetDlgCtrlID());
        const bool enabled = shift ? IsParentButtonEnabled(type, *nodes, playback) : IsChildButtonEnabled(type, *nodes);
        button->EnableWindow(enabled ? TRUE : FALSE);

        const CStdStr<wchar_t> templateText =
            StringHelp::Localize(shift ? L"Create new parent '{0}'" : L"Create new '{0}'");
        CStdStr<wchar_t> tooltip =
            fmt::format(fmt::runtime(std::wstring_view(templateText)), std::wstring(PMTreeNode::GetNodeTypeName(type)));
        AppendCreateCommandShortcut(type, tooltip, false);
        button->SetToolTipText(tooltip);
    }

    SetCurrentObject(object);
}

bool ObjectToolbar::IsChildButtonEnabled(PMTreeNode::NodeType type, std::vector<PMTreeNode*> const& nodes) const
{
    if (nodes.size() != 1)
        return false;
    const PMTreeNode* node = nodes.front();
    return node->PossibleChildType().count(type) && HasCapability(node, PMTreeNode::CanCreateChild);
}

bool ObjectToolbar::IsParentButtonEnabled(PMTreeNode::NodeType type, std::vector<PMTreeNode*> const& nodes,
                                          bool playback) const
{
    for (PMTreeNode* node : nodes)
    {
        PMTreeNode* parent = node ? node->Parent() : nullptr;
        if (!parent || !node->AcceptsParentType(type) || !parent->PossibleChildType().count(type) ||
            !node->PossibleParentType().count(type))
            return false;
    }
    PMTreeNode* firstParent = nodes.front()->Parent();
    if (!firstParent || !firstParent->IsAllChildren(nodes))
        return false;
    for (PMTreeNode* node : nodes)
    {
        if (!node || (playback && !CanEditDuringPlayback(node)))
            return false;
        if (!HasCapability(node, PMTreeNode::CanInsertParent))
            return false;
    }
    return true;
}

void ObjectToolbar::SetCurrentObject(IOrbObject* object)
{
    if (object)
        object->AddRef();
    if (m_pCurrentObject)
        m_pCurrentObject->Release();
    m_pCurrentObject = object;
}

void ObjectToolbar::OnDestroy()
{
    for (CButtonWithTooltip* button : m_buttons)
    {
        button->DestroyWindow();
        delete button;
    }
    m_buttons.clear();
    CWnd::OnDestroy();
}

void ObjectToolbar::OnButtonClicked(UINT id)
{
    if (!m_pCurrentObject || !m_pOwner)
        return;
    m_pOwner->OnButtonClicked(static_cast<PMTreeNode::NodeType>(id));
}

BOOL ObjectToolbar::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    auto* hdr = reinterpret_cast<NMHDR*>(lParam);
    if (!UISubClassingMgr::OnNotify(wParam, hdr, result))
        return CWnd::OnNotify(wParam, lParam, result);

    CWnd* button = CWnd::FromHandle(hdr->hwndFrom);
    if (hdr->code == NM_CUSTOMDRAW && button && (button->GetStyle() & 0xF) <= BS_DEFPUSHBUTTON)
    {
        const auto type = static_cast<PMTreeNode::NodeType>(button->GetDlgCtrlID());
        const bool disabled = !button->IsWindowEnabled();
        if (const sn::theme::Bitmap* icon = ButtonIcon(type, disabled))
        {
            const auto* draw = reinterpret_cast<NMCUSTOMDRAW*>(hdr);
            GpGraphics* graphics = nullptr;
            GdipCreateFromHDC(draw->hdc, &graphics);
            const int iconSize = UISubClassingMgr::ScaleToDpi(ICON_SIZE);
            const CRect rect(draw->rc);
            GdipTranslateWorldTransform(graphics, (rect.Width() - iconSize) * 0.5f, (rect.Height() - iconSize) * 0.5f,
                                        MatrixOrderPrepend);
            const float scale = UISubClassingMgr::GetDpiScale();
            GdipScaleWorldTransform(graphics, scale, scale, MatrixOrderPrepend);
            GdipDrawImageRectRectI(graphics, reinterpret_cast<GpImage*>(const_cast<sn::theme::Bitmap*>(icon)), 0, 0,
                                   ICON_SIZE, ICON_SIZE, 0, 0, ICON_SIZE, ICON_SIZE, UnitPixel, nullptr, nullptr,
                                   nullptr);
            GdipDeleteGraphics(graphics);
        }
    }
    return TRUE;
}
