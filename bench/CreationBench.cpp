// Creating a child, renaming in place and creating a parent around a hundred siblings, each in a
// project of a million objects with ten thousand items shown: the host's edit, the refresh of
// the tree and the label editor together, as the user waits for them.

#include "BenchHost.h"

#include "host/TreeNodeWithObject.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <benchmark/benchmark.h>

namespace
{
constexpr size_t kObjects = 1'000'000;
constexpr size_t kShown = 10'000;

// The shown row nearest the middle whose node passes the test.
HTREEITEM MiddleRow(PETreeCtrl& tree, const std::function<bool(PMTreeNode*)>& wanted)
{
    const int rows = tree.GetRowCount();
    for (int distance = 0; distance < rows; ++distance)
        for (int row : {rows / 2 + distance, rows / 2 - distance})
            if (row >= 0 && row < rows)
                if (PMTreeNode* node = tree.GetNodeFromItem(tree.GetRowItem(row)); node && wanted(node))
                    return tree.GetRowItem(row);
    return nullptr;
}

void Select(PETreeCtrl& tree, const std::vector<HTREEITEM>& items)
{
    tree.SelectAll(false);
    for (HTREEITEM item : items)
        tree.SelectItem(item);
}

struct Shown
{
    BenchHost host{kObjects};
    Shown()
    {
        host.ExpandUntilShown(kShown);
        host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    }
    PETreeCtrl& Tree() { return host.Tree(); }
    void Undo()
    {
        host.Host().Undo().Undo();
        WindowSystem::Get().RunUntilIdle();
    }
};

bool HoldsSounds(PMTreeNode* node)
{
    return node->Capabilities().test(PMTreeNode::CanCreateChild) &&
           node->PossibleChildType().count(PMTreeNode::SoundSFX);
}

void BM_CreateChild(benchmark::State& state)
{
    Shown shown;
    const GUID parent = shown.Tree().GetNodeFromItem(MiddleRow(shown.Tree(), HoldsSounds))->ID();
    for (auto _ : state)
    {
        state.PauseTiming();
        Select(shown.Tree(), {shown.Tree().GetItemWithGUID(parent, TVI_ROOT)});
        state.ResumeTiming();
        // The new sound, named by the host and opened for naming by the user.
        shown.host.View().AddChildToItem(PMTreeNode::SoundSFX, true, nullptr);
        shown.Tree().KeyPress(VK_ESCAPE, 0);
        state.PauseTiming();
        shown.Undo();
        state.ResumeTiming();
    }
    state.counters["items"] = static_cast<double>(shown.Tree().GetCount());
}
BENCHMARK(BM_CreateChild)->Unit(benchmark::kMillisecond);

void BM_Rename(benchmark::State& state)
{
    Shown shown;
    const GUID renamed = shown.Tree()
                             .GetNodeFromItem(MiddleRow(shown.Tree(),
                                                        [](PMTreeNode* node) {
                                                            return node->Type() != PMTreeNode::WorkUnit &&
                                                                   node->Capabilities().test(PMTreeNode::CanRename);
                                                        }))
                             ->ID();
    bool second = false;
    for (auto _ : state)
    {
        state.PauseTiming();
        HTREEITEM item = shown.Tree().GetItemWithGUID(renamed, TVI_ROOT);
        Select(shown.Tree(), {item});
        state.ResumeTiming();
        // F2, a new name typed over the selected one, Enter.
        shown.Tree().KeyPress(VK_F2, 0);
        shown.Tree().TypeText(second ? L"Renamed_Twice" : L"Renamed_Once");
        shown.Tree().KeyPress(VK_RETURN, 0);
        second = !second;
    }
    state.counters["items"] = static_cast<double>(shown.Tree().GetCount());
    // Proof that the names went through: the row shows the last one.
    const std::wstring shownName = shown.Tree().GetItemText(shown.Tree().GetItemWithGUID(renamed, TVI_ROOT));
    state.counters["renamed"] = shownName.starts_with(second ? L"Renamed_Once" : L"Renamed_Twice") ? 1 : 0;
}
BENCHMARK(BM_Rename)->Unit(benchmark::kMillisecond);

void BM_CreateParentAroundSiblings(benchmark::State& state)
{
    Shown shown;
    const auto siblings = static_cast<size_t>(state.range(0));
    // A container of the shown part given that many sounds, shown too.
    PMTreeNode* holder = shown.Tree().GetNodeFromItem(MiddleRow(shown.Tree(), HoldsSounds));
    auto* model = sn::AsProjectObject(static_cast<TreeNodeWithObject*>(holder)->GetObject());
    for (size_t i = 0; i < siblings; ++i)
        sn::ProjectEdit::Create(model, PMTreeNode::SoundSFX, L"Sibling_" + std::to_wstring(i));
    holder->IsExpanded(true);
    shown.host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    shown.host.Host().Undo().Clear();
    std::vector<GUID> ids;
    for (const CSmartPtr<sn::ProjectObject>& child : model->Children())
        if (child->GetName().starts_with(L"Sibling_"))
            ids.push_back(child->Id());
    for (auto _ : state)
    {
        state.PauseTiming();
        std::vector<HTREEITEM> items;
        for (GUID const& id : ids)
            items.push_back(shown.Tree().GetItemWithGUID(id, TVI_ROOT));
        Select(shown.Tree(), items);
        state.ResumeTiming();
        shown.host.View().AddParentToItem(PMTreeNode::SequenceContainer, nullptr);
        shown.Tree().KeyPress(VK_ESCAPE, 0);
        state.PauseTiming();
        shown.Undo();
        state.ResumeTiming();
    }
    state.counters["items"] = static_cast<double>(shown.Tree().GetCount());
}
BENCHMARK(BM_CreateParentAroundSiblings)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);
} // namespace
