// Pasting and dropping objects into a large project, as the user does: a copy of 1, 100 or 1,000
// sounds, the move of a cut, and a drag that moves them, into one container of a project of a
// hundred thousand objects with ten thousand rows shown. The command, the project's change and
// the tree's refresh are timed together. The tree is rebuilt once per paste or drop, whatever the
// number of objects; a paste then refills it once more to reveal and select what it pasted.

#include "BenchHost.h"

#include "host/GlobalProp.h"
#include "host/OrbObjectDataSource.h"
#include "platform/Ole.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/Project.h"

#include <benchmark/benchmark.h>

#include <functional>

namespace
{
constexpr size_t kProjectSize = 100'000;
constexpr size_t kShownRows = 10'000;

struct PasteCase
{
    PMTreeNode* destination = nullptr;
    std::vector<IOrbObject*> sounds; // under other parents than the destination
};

// The container of the first sound met, and `count` sounds from elsewhere.
PasteCase FindCase(BenchHost& host, size_t count)
{
    PasteCase found;
    std::function<void(PMTreeNode*)> visit = [&](PMTreeNode* node)
    {
        if (found.sounds.size() >= count)
            return;
        if (node->Type() == PMTreeNode::SoundSFX)
        {
            if (!found.destination)
                found.destination = node->Parent();
            else if (node->Parent() != found.destination)
                found.sounds.push_back(host.Host().GetProject()->Find(node->ID()));
            return;
        }
        for (PMTreeNode* child : node->Children())
            visit(child);
    };
    for (PMTreeNode* root : host.View().RootTreeNodes())
        visit(root);
    return found;
}

// Drags the objects onto the row and drops them there with no key held: a move.
void DragOnto(BenchHost& host, const std::vector<IOrbObject*>& objects, HTREEITEM row)
{
    auto* source = new COrbObjectDataSource(SonariumDragSource_ProjectTree, nullptr);
    source->Init(objects);
    {
        RECT label{};
        host.Tree().GetItemRect(row, &label, TRUE);
        DragSession drag(*source, DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
        drag.MoveTo(host.Tree().GetSafeHwnd(), CPoint(label.left + 2, (label.top + label.bottom) / 2), MK_LBUTTON);
        drag.Drop();
    }
    source->InternalRelease();
}

enum class Gesture
{
    PasteCopy,
    PasteCut,
    DragMove,
};

void Paste(benchmark::State& state, Gesture gesture)
{
    BenchHost host(kProjectSize);
    host.ExpandUntilShown(kShownRows);
    const PasteCase paste = FindCase(host, static_cast<size_t>(state.range(0)));
    for (PMTreeNode* up = paste.destination; up; up = up->Parent())
        up->IsExpanded(true);
    host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    WindowSystem::Get().RunUntilIdle();
    const GUID destination = paste.destination->ID();
    PETreeCtrl& tree = host.Tree();
    const size_t before = host.Host().GetProject()->ObjectCount();
    uint64_t refreshes = 0;
    size_t pasted = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        host.Host().Clipboard().SetObjects(paste.sounds, gesture == Gesture::PasteCut ? 0x30 : 0x10);
        tree.SelectAll(false);
        HTREEITEM row = tree.GetItemWithGUID(destination, TVI_ROOT);
        tree.SelectItem(row);
        tree.EnsureVisible(row);
        WindowSystem::Get().RunUntilIdle();
        const uint64_t suspensions = tree.RedrawSuspensionCount();
        state.ResumeTiming();
        if (gesture == Gesture::DragMove)
            DragOnto(host, paste.sounds, row);
        else
            host.View().SendMessage(WM_PASTE, 0, 0);
        WindowSystem::Get().RunUntilIdle();
        state.PauseTiming();
        refreshes += tree.RedrawSuspensionCount() - suspensions;
        pasted = gesture == Gesture::PasteCopy ? host.Host().GetProject()->ObjectCount() - before
                                               : paste.sounds.size();
        {
            // Undone in one go, as the host's Undo does, so that the next iteration pastes the same.
            ScopedGlobalPropRaise lock(sn::propLockUIUpdate);
            host.Host().Undo().Undo();
        }
        WindowSystem::Get().RunUntilIdle();
        state.ResumeTiming();
    }
    state.counters["objects"] = static_cast<double>(paste.sounds.size());
    state.counters["pasted"] = static_cast<double>(pasted);
    state.counters["tree_refreshes"] =
        benchmark::Counter(static_cast<double>(refreshes), benchmark::Counter::kAvgIterations);
    state.counters["rows"] = static_cast<double>(tree.GetCount());
}

void BM_PasteCopy(benchmark::State& state)
{
    Paste(state, Gesture::PasteCopy);
}
BENCHMARK(BM_PasteCopy)->Arg(1)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_PasteCut(benchmark::State& state)
{
    Paste(state, Gesture::PasteCut);
}
BENCHMARK(BM_PasteCut)->Arg(1)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_DragMove(benchmark::State& state)
{
    Paste(state, Gesture::DragMove);
}
BENCHMARK(BM_DragMove)->Arg(1)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->Iterations(10);
} // namespace
