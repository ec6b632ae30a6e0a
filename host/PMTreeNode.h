#pragma once
// One node of the project tree: the host's description of the hierarchy that the
// explorer shows. Nodes own their children; a tree's root is owned by whoever made it.

#include "host/Guid.h"
#include "host/StdStr.h"

#include <bitset>
#include <cstdint>
#include <set>
#include <vector>

class PMTreeNode
{
public:
    enum NodeType : int32_t
    {
        None = 0,
        SourcePlugin = 1,
        PhysicalFolder = 2,
        WorkUnit = 3,
        Folder = 4,
        ActorMixer = 5,
        SwitchContainer = 6,
        RandomContainer = 7,
        SequenceContainer = 8,
        BlendContainer = 9,
        SoundSFX = 10,
        SoundVoice = 11,
        Bus = 12,
        AuxBus = 13,
        AudioSource = 14,
        EventAction = 15,
        Event = 16,
        SoundBank = 17,
        Switch = 18,
        SwitchGroup = 19,
        State = 20,
        StateGroup = 21,
        GameParameter = 22,
        EffectPlugin = 23,
        MixerPlugin = 24,
        AudioDevice = 25,
        AuditionSession = 26,
        MusicSwitchContainer = 27,
        MusicPlaylistContainer = 28,
        MusicSegment = 29,
        MusicTrack = 30,
        MusicPlaylistItem = 31,
        MixingSession = 32,
        Trigger = 33,
        ControlSurfaceSession = 34,
        MusicClip = 35,
        Query = 36,
        NodeTypeCount
    };

    // Index of a bit in Capabilities().
    enum CapabilityTypes : int
    {
        CanDelete = 0,
        CanInclude = 1,
        CanMove = 2,
        CanCreateChild = 3,
        CanInsertParent = 4,
        CanSetColor = 5,
        CanRename = 6,
        CanCreateEvent = 7,
        CanPlay = 8,
        CanClipboard = 9,
        CanConvert = 10,
        CanLocalize = 11,
        CapabilityCount = 12
    };
    using CapabilitySet = std::bitset<CapabilityCount>;
    using GuidSet = std::set<GUID, GUIDLess>;

    // What a kind of node may hold and do, from the host's structure table: shared by every
    // node of the kind, so nodes refer to it instead of keeping copies.
    struct KindRules
    {
        std::set<NodeType> children;
        std::set<NodeType> parents; // kinds that may be inserted above the node
        CapabilitySet capabilities;
    };

    PMTreeNode(const PMTreeNode&) = delete;
    PMTreeNode& operator=(const PMTreeNode&) = delete;

    virtual ~PMTreeNode();
    // May this node be given a new parent of that type?
    virtual bool AcceptsParentType(NodeType type) const;
    // Includes or excludes the node's object on the current platform.
    virtual void SetIncluded(bool include, bool reserved);
    // Re-reads the subtree from the project; flags is the explorer's refresh mask
    // (1 children added, 2 children removed, 4 visuals, 8 inclusion).
    virtual void Refresh(bool force, unsigned long flags);
    virtual void RefreshName();
    // Re-reads inclusion state of this subtree; erases from pending every GUID it handled.
    virtual void RefreshPF(GuidSet& pending);
    // Expands the path from this node down to the node of id and marks that node selected.
    virtual void ExpandAndSelectNode(GUID const& id);

    // The host's own presentation queries, used by its tree control.
    virtual CStdStr<wchar_t> GetDisplayName() const; // the text of the row, decorations included
    virtual int GetIconType() const;                 // an ObjectIcons::IconType
    virtual bool IsExcludedOnCurrentPlatform() const;
    // Excluded from the build of the current language (a voice, say).
    virtual bool IsExcludedInCurrentLanguage() const;
    // The source-control overlay drawn over the icon: an ObjectIcons::IconType, 0 for none.
    virtual int GetOverlayIcon() const;
    virtual uint32_t GetColor() const; // 0x00RRGGBB, or 0xFFFFFFFF for the default colour
    // Whether the node has children, answered without reading them when possible.
    virtual bool HasChildren() const;
    // The children, read from the project on first use.
    const std::vector<PMTreeNode*>& Children();

    // The identity of what the node stands for; it lives as long as the node.
    virtual GUID const& ID() const = 0;
    PMTreeNode* Parent() const { return m_parent; }
    NodeType Type() const { return m_type; }
    // The capabilities and sets come from the host's structure table, shared by all nodes of a
    // kind: read them only.
    CapabilitySet& Capabilities() { return const_cast<CapabilitySet&>(m_rules->capabilities); }
    const CapabilitySet& Capabilities() const { return m_rules->capabilities; }
    std::set<NodeType>& PossibleChildType() { return const_cast<std::set<NodeType>&>(m_rules->children); }
    const std::set<NodeType>& PossibleChildType() const { return m_rules->children; }
    std::set<NodeType>& PossibleParentType() { return const_cast<std::set<NodeType>&>(m_rules->parents); }

    void IsExpanded(bool expanded)
    {
        if (m_expanded != expanded)
        {
            m_expanded = expanded;
            NoteShownChange();
        }
    }
    bool IsExpanded() const { return m_expanded; }
    void IsSelected(bool selected)
    {
        if (m_selected != selected)
        {
            m_selected = selected;
            NoteShownChange();
        }
    }
    bool IsSelected() const { return m_selected; }
    void SetExpandedForAllChildren(bool expanded);
    void GetExpandedAndSelectedChildren(GuidSet& expanded, GuidSet& selected);
    void ExpandAndSelectChildrenNode(GuidSet const& expanded, GuidSet const& selected);
    // Whether every node of the list is a child of this node.
    bool IsAllChildren(std::vector<PMTreeNode*> const& nodes) const;
    // Creates a child object of that type under this node's object; its GUID goes to outGuid.
    bool CreateChild(NodeType type, CStdStr<wchar_t> const& name, GUID* outGuid);

    static CStdStr<wchar_t> GetNodeTypeName(NodeType type);

    // For the host's tree control, which keeps the items of unchanged subtrees through a
    // rebuild: when something an item of this subtree shows from its node last changed (the
    // children, an icon, whether there are children, the expanded and selected marks), on the
    // host's change clock. A node that keeps no such record answers the newest time there is.
    virtual uint32_t ShownChangeStamp() const { return UINT32_MAX; }
    // How many times any node's icon has changed: while the count stands, an item's icon read
    // from its node is still the node's.
    static uint64_t IconChanges() { return s_iconChanges; }

protected:
    // Until a derived node sets its rules, the node may hold nothing and do nothing.
    PMTreeNode(PMTreeNode* parent, NodeType type);

    // Appends new nodes for the object's children, in project order; called by Children()
    // and by refreshes. The node owns them.
    virtual void ReadChildren(std::vector<PMTreeNode*>& children) = 0;
    virtual bool DoCreateChild(NodeType type, CStdStr<wchar_t> const& name, GUID* outGuid) = 0;
    void DropChildren();
    // Records a change of what the tree shows of this node, on it and its ancestors.
    void NoteShownChange()
    {
        for (PMTreeNode* node = this; node && node->MarkShownChange(); node = node->m_parent)
        {
        }
    }
    // Marks the node changed now; false when it was already, and so were its ancestors.
    virtual bool MarkShownChange() { return false; }
    // A node whose icon can change says so when it does.
    static void NoteIconChange() { ++s_iconChanges; }
    static inline uint64_t s_iconChanges = 0;

    PMTreeNode* m_parent;
    const KindRules* m_rules;
    std::vector<PMTreeNode*> m_children; // owned
    NodeType m_type;
    bool m_expanded = false;
    bool m_selected = false;
    bool m_childrenRead = false;

public:
    // Declared last so that it shares a word with the flags above: trees have millions of nodes.
    bool m_bCutMarked = false;
};
