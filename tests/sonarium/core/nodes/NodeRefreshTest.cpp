// A refresh that skips what did not change must leave the node tree exactly as reading it afresh
// would, marks included: random edits on a generated project, each followed by a refresh of one
// kind or another, compared with a tree read from scratch.

#include "HostFixture.h"

#include "host/GlobalProp.h"
#include "host/ProjectManager.h"
#include "sonarium/core/host/ProjectGenerator.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"

#include <map>
#include <memory>
#include <random>

using namespace sn;
using N = PMTreeNode;

namespace
{
ProjectObject* ModelOf(PMTreeNode* node)
{
    return static_cast<ProjectNode*>(node)->Object();
}

// The marks last given to a node.
struct Marks
{
    PMTreeNode* node;
    bool expanded;
    bool selected;
};

// The nodes shown: the root and the children of every expanded node shown.
void CollectRead(PMTreeNode* node, std::vector<PMTreeNode*>& out)
{
    out.push_back(node);
    if (node->IsExpanded())
        for (PMTreeNode* child : node->Children())
            CollectRead(child, out);
}

// The tree as a fresh read shows it, down through the expanded nodes of `shown`: names and order
// must match, node for node.
void ExpectSameAsFresh(PMTreeNode* shown, PMTreeNode* fresh, std::string& where)
{
    ASSERT_EQ(shown->ID(), fresh->ID()) << where;
    ASSERT_EQ(shown->GetDisplayName(), fresh->GetDisplayName()) << where;
    ASSERT_EQ(shown->HasChildren(), fresh->HasChildren()) << where << " " << ModelOf(shown)->NameUtf8();
    if (!shown->IsExpanded())
        return;
    const std::vector<PMTreeNode*>& a = shown->Children();
    const std::vector<PMTreeNode*>& b = fresh->Children();
    ASSERT_EQ(a.size(), b.size()) << where << " children of " << ModelOf(shown)->NameUtf8();
    for (size_t i = 0; i < a.size(); ++i)
    {
        where += "/" + ModelOf(a[i])->NameUtf8();
        ExpectSameAsFresh(a[i], b[i], where);
        where.resize(where.size() - ModelOf(a[i])->NameUtf8().size() - 1);
    }
}

std::unique_ptr<PMTreeNode> Root(OrbObjectCategories::Category category)
{
    CSmartPtr<IOrbWorkUnit> unit;
    EXPECT_TRUE(ProjectManager::m_pInstance->GetTopWorkUnit(category, unit));
    return std::unique_ptr<PMTreeNode>(NodeFactory::CreateNode(nullptr, unit.Get()));
}
} // namespace

TEST_F(HostTest, RefreshesThatSkipUnchangedSubtreesMatchAFreshReadAndKeepMarks)
{
    HostRef().SetProject(GenerateProject(3000, 5));
    auto root = Root(OrbObjectCategories::AudioObjects);
    root->SetExpandedForAllChildren(true);
    root->Refresh(true, 15);

    std::mt19937 random(11);
    auto pick = [&](const std::vector<PMTreeNode*>& nodes) { return nodes[random() % nodes.size()]; };
    std::map<GUID, Marks, GUIDLess> marks;
    int renamed = 0;
    for (int round = 0; round < 300; ++round)
    {
        std::vector<PMTreeNode*> read;
        CollectRead(root.get(), read);
        // Marks change on nodes that stay: collapsing a subtree keeps the marks inside it.
        PMTreeNode* marked = pick(read);
        marked->IsExpanded(random() % 3 != 0);
        marked->IsSelected(random() % 2 == 0);
        marks[marked->ID()] = {marked, marked->IsExpanded(), marked->IsSelected()};

        ProjectObject* target = ModelOf(pick(read));
        ProjectObject* other = ModelOf(pick(read));
        {
            // Some edits come in a locked batch, as the host's long operations make them.
            std::unique_ptr<ScopedGlobalPropRaise> lock;
            if (round % 4 == 0)
                lock = std::make_unique<ScopedGlobalPropRaise>(propLockUIUpdate);
            switch (random() % 4)
            {
            case 0:
                ProjectEdit::Create(target, N::SoundSFX, L"Added", 0);
                ProjectEdit::Create(target, N::Folder, L"Added Folder");
                break;
            case 1:
                if (target->Parent() && !target->IsTopWorkUnit())
                    ProjectEdit::Delete(target);
                break;
            case 2:
                ProjectEdit::Rename(target, L"Renamed_" + std::to_wstring(++renamed));
                break;
            case 3:
                ProjectEdit::Move(target, other, 0);
                break;
            }
        }
        // Structural refreshes mostly, now and then one of visuals or inclusion alone, which
        // must not make the next structural one skip what it did not read.
        const unsigned long kinds[] = {3, 1, 2, 4, 8, 15};
        root->Refresh(true, kinds[random() % 6]);
        if (round % 5 == 4)
        {
            root->Refresh(true, 3);
            auto fresh = Root(OrbObjectCategories::AudioObjects);
            std::string where;
            ExpectSameAsFresh(root.get(), fresh.get(), where);
            if (HasFatalFailure())
                FAIL() << "after round " << round;
        }
    }
    // Marks set on nodes that stayed (an object that moved has a new node) survive every refresh,
    // inside collapsed subtrees too.
    root->Refresh(true, 3);
    size_t checked = 0;
    for (const auto& [id, mark] : marks)
    {
        // Find the node of id among those read, expanding nothing.
        std::vector<PMTreeNode*> pending{root.get()};
        PMTreeNode* found = nullptr;
        while (!pending.empty() && !found)
        {
            PMTreeNode* node = pending.back();
            pending.pop_back();
            if (node->ID() == id)
                found = node;
            else if (node->HasChildren())
                for (PMTreeNode* child : node->Children())
                    pending.push_back(child);
        }
        if (found != mark.node || found == root.get())
            continue;
        ++checked;
        EXPECT_EQ(mark.selected, found->IsSelected()) << ModelOf(found)->NameUtf8();
        EXPECT_EQ(mark.expanded, found->IsExpanded()) << ModelOf(found)->NameUtf8();
    }
    EXPECT_GT(checked, 20u);
}
