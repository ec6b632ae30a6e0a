#pragma once
// The row of creation buttons above the tree: one square icon button per kind of object
// that the view's categories hold; a click creates a child of the selected node, or with
// Shift a new parent of the selected nodes.

#include "explorer/toolbar/ObjectToolbarOwner.h"
#include "host/OrbObjectCategories.h"
#include "host/PMTreeNode.h"
#include "platform/MessageMap.h"
#include "platform/Wnd.h"

#include <set>
#include <vector>

class CButtonWithTooltip;
class IOrbObject;

class ObjectToolbar : public CWnd
{
public:
    enum
    {
        IDC_TOOLBAR = 1,
        BUTTON_SIZE = 19,
        ICON_SIZE = 15,
        FIRST_BUTTON_ID = 1,
        LAST_BUTTON_ID = 78,
    };

    explicit ObjectToolbar(std::set<OrbObjectCategories::Category> const& categories);
    ~ObjectToolbar() override;

    BOOL Create(CWnd* parent, IObjectToolbarOwner* owner);
    // Recomputes every button's state and tooltip for a selection; null means none.
    void UpdateButtons(const std::vector<PMTreeNode*>* nodes);

    std::vector<CButtonWithTooltip*> const& Buttons() const { return m_buttons; }

protected:
    DECLARE_MESSAGE_MAP()

    void OnDestroy();
    void OnButtonClicked(UINT id);
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    bool IsChildButtonEnabled(PMTreeNode::NodeType type, std::vector<PMTreeNode*> const& nodes) const;
    bool IsParentButtonEnabled(PMTreeNode::NodeType type, std::vector<PMTreeNode*> const& nodes,
                               bool playback) const;
    void SetCurrentObject(IOrbObject* object);

    std::set<OrbObjectCategories::Category> m_categories;
    std::vector<CButtonWithTooltip*> m_buttons;
    IOrbObject* m_pCurrentObject = nullptr;
    IObjectToolbarOwner* m_pOwner = nullptr;
};
