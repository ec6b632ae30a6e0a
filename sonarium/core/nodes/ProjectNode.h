#pragma once
// The reference host's tree node: one project object, with the name and inclusion it shows
// cached until the view asks the node to refresh them, as a real host's nodes do. The node's
// identity is its object's and its rules are the structure table's: a node copies neither.

#include "host/TreeNodeWithObject.h"
#include "sonarium/core/model/ProjectObject.h"

#include <algorithm>

namespace sn
{
class ProjectNode : public TreeNodeWithObject, public IVisualStateRefreshable
{
public:
    ProjectNode(PMTreeNode* parent, ProjectObject* object);

    bool AcceptsParentType(NodeType type) const override;
    void SetIncluded(bool include, bool reserved) override;
    void Refresh(bool force, unsigned long flags) override;
    void RefreshName() override;
    void RefreshPF(GuidSet& pending) override;
    void ExpandAndSelectNode(GUID const& id) override;

    GUID const& ID() const override { return m_model->Id(); }
    CStdStr<wchar_t> GetDisplayName() const override;
    int GetIconType() const override; // the kind's, or that of a work unit whose file failed to load
    bool IsExcludedOnCurrentPlatform() const override { return m_excluded; }
    int GetOverlayIcon() const override; // the source-control status of a work unit's file
    bool IsExcludedInCurrentLanguage() const override { return m_languageExcluded; }
    // Read from the objects each time: a colour change only repaints the tree.
    uint32_t GetColor() const override;
    bool HasChildren() const override;
    uint32_t ShownChangeStamp() const override { return std::max(m_model->ChangeStamp(), m_shownStamp); }

    void RefreshVisualState() override;

    ProjectObject* Object() const { return static_cast<ProjectObject*>(AsProjectObject(GetObject())); }
    // Whether an object of the project gets a node of its own.
    static bool HasNode(const ProjectObject* object);
    // The colour shown for a colour index (an object's own or inherited).
    static uint32_t PaletteColor(int index);

protected:
    void ReadChildren(std::vector<PMTreeNode*>& children) override;
    bool DoCreateChild(NodeType type, CStdStr<wchar_t> const& name, GUID* outGuid) override;
    bool MarkShownChange() override;

private:
    void ReadVisuals();
    void ReadInclusion();
    // Visuals and inclusion of every node read below, this one included.
    void ReadSubtreeState();
    // Refresh below the first node: every node of one refresh shares its reading of the clock.
    void RefreshSubtree(bool force, unsigned long flags, uint32_t reading);
    // Brings the read children in line with the project, keeping the nodes that remain.
    void SyncChildren(bool force, unsigned long flags, uint32_t reading);
    // Whether the project changed below this node since the node last read its subtree.
    bool IsOutOfDate() const { return m_model->ChangeStamp() >= m_readAt; }
    ProjectObject* m_model; // kept alive by the base's reference
    // The project's change clock when the subtree was last read whole: names and children.
    uint32_t m_readAt;
    // When what the tree shows of the subtree last changed in the nodes (the project's own
    // changes are stamped on the objects).
    uint32_t m_shownStamp;

    std::string m_displayName; // UTF-8
    bool m_excluded = false;
    bool m_unreadable = false; // a work unit whose file failed to load
    bool m_languageExcluded = false;
    uint32_t m_shownAt = 0; // the ShownStateGeneration the name and inclusion were read at
};
} // namespace sn
