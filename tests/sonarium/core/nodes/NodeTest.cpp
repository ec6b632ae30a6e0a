#include "HostFixture.h"

#include "host/ProjectManager.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"

#include <memory>

using namespace sn;
using N = PMTreeNode;

namespace
{
const wchar_t* kProject = LR"(
platform Linux
AudioObjects
  Default Work Unit : WorkUnit
    Ambience : ActorMixer
      Rain : SoundSFX
      Wind : RandomContainer
        Gust : SoundSFX
    Music Stingers : ActorMixer
Events
  Default Work Unit : WorkUnit
    Play_Rain : Event
)";

std::unique_ptr<PMTreeNode> RootNode(OrbObjectCategories::Category category)
{
    CSmartPtr<IOrbWorkUnit> unit;
    EXPECT_TRUE(ProjectManager::m_pInstance->GetTopWorkUnit(category, unit));
    return std::unique_ptr<PMTreeNode>(NodeFactory::CreateNode(nullptr, unit.Get()));
}

PMTreeNode* Child(PMTreeNode* node, const wchar_t* name)
{
    for (PMTreeNode* child : node->Children())
        if (static_cast<TreeNodeWithObject*>(child)->GetObject()->GetName() == name)
            return child;
    return nullptr;
}
} // namespace

TEST_F(HostTest, NodesReadLazilyAndRefreshKeepsTheirMarks)
{
    Open(kProject);
    auto root = RootNode(OrbObjectCategories::AudioObjects);
    EXPECT_TRUE(root->IsExpanded()) << "roots start open";
    PMTreeNode* unit = Child(root.get(), L"Default Work Unit");
    ASSERT_TRUE(unit);
    EXPECT_TRUE(unit->HasChildren());
    PMTreeNode* ambience = Child(unit, L"Ambience");
    ambience->IsExpanded(true);
    Child(ambience, L"Rain")->IsSelected(true);

    ProjectObject* model = At(L"AudioObjects/Default Work Unit/Ambience");
    ProjectEdit::Create(model, N::SoundSFX, L"Thunder", 0);
    ProjectEdit::Delete(At(L"AudioObjects/Default Work Unit/Ambience/Wind"));
    EXPECT_EQ(2u, ambience->Children().size()) << "nodes follow the project only when refreshed";
    root->Refresh(true, 3);
    ASSERT_EQ(2u, ambience->Children().size());
    EXPECT_EQ(L"Thunder", static_cast<TreeNodeWithObject*>(ambience->Children()[0])->GetObject()->GetName());
    EXPECT_TRUE(ambience->IsExpanded());
    EXPECT_TRUE(ambience->Children()[1]->IsSelected()) << "the surviving node keeps its mark";

    // The displayed name follows a rename and the unsaved state at the next name refresh.
    ProjectEdit::Rename(model, L"Ambient");
    EXPECT_EQ(L"Ambience", ambience->GetDisplayName());
    ambience->RefreshName();
    unit->RefreshName();
    EXPECT_EQ(L"Ambient", ambience->GetDisplayName());
    EXPECT_EQ(L"Default Work Unit*", unit->GetDisplayName());

    PMTreeNode::GuidSet expanded, selected;
    root->GetExpandedAndSelectedChildren(expanded, selected);
    EXPECT_EQ((PMTreeNode::GuidSet{ambience->ID()}), expanded);
    EXPECT_EQ(1u, selected.size());

    // A reorder keeps every node, marks and all, in the project's new order.
    PMTreeNode* thunder = ambience->Children()[0];
    PMTreeNode* rain = ambience->Children()[1];
    ASSERT_TRUE(ProjectEdit::Move(At(L"AudioObjects/Default Work Unit/Ambient/Thunder"), model));
    ProjectEdit::Create(model, N::SoundSFX, L"Hail", 1);
    root->Refresh(true, 3);
    ASSERT_EQ(3u, ambience->Children().size());
    EXPECT_EQ(rain, ambience->Children()[0]);
    EXPECT_EQ(L"Hail", ambience->Children()[1]->GetDisplayName());
    EXPECT_EQ(thunder, ambience->Children()[2]);
    EXPECT_TRUE(rain->IsSelected());
}

TEST_F(HostTest, RevealingAnObjectExpandsItsPathAndSelectsIt)
{
    Open(kProject);
    auto root = RootNode(OrbObjectCategories::AudioObjects);
    ProjectObject* gust = At(L"AudioObjects/Default Work Unit/Ambience/Wind/Gust");
    root->ExpandAndSelectNode(gust->Id());
    PMTreeNode* wind = Child(Child(Child(root.get(), L"Default Work Unit"), L"Ambience"), L"Wind");
    ASSERT_TRUE(wind);
    EXPECT_TRUE(wind->IsExpanded());
    EXPECT_TRUE(Child(wind, L"Gust")->IsSelected());
    EXPECT_FALSE(Child(Child(root.get(), L"Default Work Unit"), L"Music Stingers")->IsExpanded());

    // Restoring stored sets walks only the named paths.
    auto fresh = RootNode(OrbObjectCategories::AudioObjects);
    PMTreeNode::GuidSet expanded{At(L"AudioObjects/Default Work Unit")->Id(),
                                 At(L"AudioObjects/Default Work Unit/Ambience")->Id()};
    fresh->ExpandAndSelectChildrenNode(expanded, {});
    PMTreeNode* ambience = Child(Child(fresh.get(), L"Default Work Unit"), L"Ambience");
    EXPECT_TRUE(ambience->IsExpanded());
    EXPECT_FALSE(ambience->Children()[0]->IsSelected());

    // A node left open inside a closed one keeps its mark, and the closed one stays closed.
    auto nested = RootNode(OrbObjectCategories::AudioObjects);
    nested->ExpandAndSelectChildrenNode({At(L"AudioObjects/Default Work Unit/Ambience/Wind")->Id()}, {});
    PMTreeNode* unit = Child(nested.get(), L"Default Work Unit");
    EXPECT_FALSE(unit->IsExpanded());
    EXPECT_FALSE(Child(unit, L"Ambience")->IsExpanded());
    EXPECT_TRUE(Child(Child(unit, L"Ambience"), L"Wind")->IsExpanded());
}

TEST_F(HostTest, CapabilitiesParentsAndInclusionOfNodes)
{
    Project& project = Open(kProject);
    auto root = RootNode(OrbObjectCategories::AudioObjects);
    PMTreeNode* unit = Child(root.get(), L"Default Work Unit");
    PMTreeNode* rain = Child(Child(unit, L"Ambience"), L"Rain");
    EXPECT_TRUE(rain->Capabilities()[N::CanInsertParent]);
    EXPECT_TRUE(rain->AcceptsParentType(N::RandomContainer));
    EXPECT_FALSE(rain->AcceptsParentType(N::Event));
    EXPECT_TRUE(unit->PossibleChildType().count(N::ActorMixer));
    EXPECT_TRUE(root->IsAllChildren({unit}));
    EXPECT_FALSE(root->IsAllChildren({unit, rain}));

    GUID created;
    EXPECT_TRUE(unit->CreateChild(N::BlendContainer, L"Layers", &created));
    EXPECT_TRUE(project.Find(created));

    rain->SetIncluded(false, false);
    EXPECT_FALSE(rain->IsExcludedOnCurrentPlatform());
    PMTreeNode::GuidSet pending{rain->ID(), unit->ID()};
    root->RefreshPF(pending);
    EXPECT_TRUE(pending.empty()) << "the refresh removes what it handled";
    EXPECT_TRUE(rain->IsExcludedOnCurrentPlatform());

    CSmartPtr<IOrbWorkUnit> top;
    EXPECT_TRUE(ProjectManager::m_pInstance->GetTopWorkUnit(At(L"Events/Default Work Unit/Play_Rain"), top));
    EXPECT_EQ(OrbObjectCategories::Events, top->GetWorkUnitCategory());
}

TEST_F(HostTest, NodesTakeIdentityFromTheirObjectAndRulesFromTheSharedTable)
{
    Open(kProject);
    auto root = RootNode(OrbObjectCategories::AudioObjects);
    PMTreeNode* unit = Child(root.get(), L"Default Work Unit");
    PMTreeNode* ambience = Child(unit, L"Ambience");
    PMTreeNode* stingers = Child(unit, L"Music Stingers");
    ProjectObject* model = At(L"AudioObjects/Default Work Unit/Ambience");
    EXPECT_EQ(model->Id(), ambience->ID());

    // Two nodes of a kind read the same table entry; other kinds and roots have their own.
    EXPECT_EQ(&ambience->Capabilities(), &stingers->Capabilities());
    EXPECT_EQ(&ambience->PossibleChildType(), &stingers->PossibleChildType());
    EXPECT_NE(&unit->Capabilities(), &root->Capabilities());
    EXPECT_TRUE(ambience->PossibleChildType().count(N::SoundSFX));
    EXPECT_TRUE(root->PossibleChildType().count(N::PhysicalFolder));
    EXPECT_FALSE(root->Capabilities()[N::CanRename]);
    EXPECT_TRUE(ambience->Capabilities()[N::CanRename]);

    // A name outside ASCII shows as written, decorations after it; the icon follows the kind.
    ProjectEdit::Rename(model, L"Ambiance été \U0001F327");
    ambience->RefreshName();
    unit->RefreshName();
    EXPECT_EQ(L"Ambiance été \U0001F327", ambience->GetDisplayName());
    EXPECT_EQ(L"Default Work Unit*", unit->GetDisplayName());
    EXPECT_NE(ambience->GetIconType(), unit->GetIconType());
    EXPECT_EQ(ambience->GetIconType(), stingers->GetIconType());
}
