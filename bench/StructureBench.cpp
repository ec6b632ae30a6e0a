// The structure commands on a project of a million objects: deleting and including a thousand
// selected objects, and expanding the descendants of a subtree of a hundred thousand. Each should
// cost what it touches plus the rows shown, not the size of the project.

#include "BenchHost.h"

#include "host/GlobalProp.h"
#include "host/HostMessages.h"
#include "platform/WindowSystem.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/ui/dialogs/ScriptedDialogService.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace
{
constexpr size_t kProjectSize = 1'000'000;
constexpr size_t kSelected = 1'000;

// A thousand objects without children, whole families of them, revealed in the tree.
std::vector<GUID> RevealLeaves(BenchHost& host)
{
    std::vector<GUID> leaves;
    std::function<void(PMTreeNode*)> visit = [&](PMTreeNode* node)
    {
        if (leaves.size() >= kSelected)
            return;
        const std::vector<PMTreeNode*>& children = node->Children();
        const bool family = !children.empty() && std::none_of(children.begin(), children.end(),
                                                               [](PMTreeNode* c) { return c->HasChildren(); });
        if (family)
        {
            for (PMTreeNode* up = node; up; up = up->Parent())
                up->IsExpanded(true);
            for (PMTreeNode* child : children)
                if (leaves.size() < kSelected)
                    leaves.push_back(child->ID());
            return;
        }
        for (PMTreeNode* child : children)
            visit(child);
    };
    for (PMTreeNode* root : host.View().RootTreeNodes())
        visit(root);
    host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    return leaves;
}

void Select(BenchHost& host, const std::vector<GUID>& ids)
{
    PETreeCtrl& tree = host.Tree();
    tree.SelectAll(false);
    for (GUID const& id : ids)
        if (HTREEITEM item = tree.GetItemWithGUID(id, TVI_ROOT))
            tree.SelectItem(item);
    WindowSystem::Get().RunUntilIdle();
}


void BM_DeleteSelected(benchmark::State& state)
{
    BenchHost host(kProjectSize);
    const std::vector<GUID> leaves = RevealLeaves(host);
    // Some of the objects are targets of event actions: the user says yes each time.
    sn::ScriptedDialogService dialogs;
    sn::ScopedDialogService installed(&dialogs);
    const size_t objects = host.HostRef().GetProject()->ObjectCount();
    size_t deleted = 0;
    for (auto _ : state)
    {
        state.PauseTiming();
        Select(host, leaves);
        dialogs.AnswerMessageBox(IDYES);
        state.ResumeTiming();
        host.View().SendMessage(HostMessages::DeleteObject, 0, 0);
        state.PauseTiming();
        deleted = objects - host.HostRef().GetProject()->ObjectCount();
        dialogs.Clear();
        {
            // Undone in one go, as the host's Undo does, so the next iteration deletes the same.
            ScopedGlobalPropRaise lock(sn::propLockUIUpdate);
            host.HostRef().Undo().Undo();
        }
        WindowSystem::Get().RunUntilIdle();
        state.ResumeTiming();
    }
    state.counters["selected"] = static_cast<double>(leaves.size());
    state.counters["deleted"] = static_cast<double>(deleted);
    state.counters["rows"] = static_cast<double>(host.Tree().GetCount());
}
BENCHMARK(BM_DeleteSelected)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_IncludeSelected(benchmark::State& state)
{
    BenchHost host(kProjectSize);
    Select(host, RevealLeaves(host));
    bool include = false;
    for (auto _ : state)
    {
        host.View().CheckSelectedNode(include);
        include = !include;
    }
    state.counters["selected"] = static_cast<double>(host.Tree().GetSelectedCount());
    state.counters["rows"] = static_cast<double>(host.Tree().GetCount());
}
BENCHMARK(BM_IncludeSelected)->Unit(benchmark::kMillisecond)->Iterations(20);

// Rows whose subtrees hold about a hundred thousand objects together: the smallest node holding
// that many, or as many of its children, in order, as it takes.
std::vector<PMTreeNode*> SubtreesOfAbout(BenchHost& host, size_t wanted, size_t& size)
{
    std::unordered_map<PMTreeNode*, size_t> sizes;
    std::function<size_t(PMTreeNode*)> count = [&](PMTreeNode* node)
    {
        size_t total = 1;
        for (PMTreeNode* child : node->Children())
            total += count(child);
        return sizes[node] = total;
    };
    PMTreeNode* holder = nullptr;
    for (PMTreeNode* root : host.View().RootTreeNodes())
        count(root);
    for (const auto& [node, total] : sizes)
        if (total >= wanted && (!holder || total < sizes[holder]))
            holder = node;
    std::vector<PMTreeNode*> nodes;
    size = 0;
    if (!holder || sizes[holder] < wanted + wanted / 5)
        return size = holder ? sizes[holder] : 0, std::vector<PMTreeNode*>{holder};
    for (PMTreeNode* child : holder->Children())
        if (size < wanted)
            nodes.push_back(child), size += sizes[child];
    return nodes;
}

void ExpandDescendants(benchmark::State& state, bool again)
{
    BenchHost host(kProjectSize);
    size_t size = 0;
    const std::vector<PMTreeNode*> nodes = SubtreesOfAbout(host, 100'000, size);
    // Only the path down to them is open, and they are the rows selected.
    for (PMTreeNode* up = nodes.front()->Parent(); up; up = up->Parent())
        up->IsExpanded(true);
    for (PMTreeNode* node : nodes)
        node->IsSelected(true);
    host.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    if (again)
    {
        host.View().Expand(true, true);
        host.View().Expand(false, true);
    }
    size_t rows = 0;
    for (auto _ : state)
    {
        host.View().Expand(true, true);
        state.PauseTiming();
        rows = host.Tree().GetCount();
        host.View().Expand(false, true);
        state.ResumeTiming();
    }
    state.counters["subtree"] = static_cast<double>(size);
    state.counters["rows"] = static_cast<double>(rows);
}

// The first time reads the nodes of the whole subtree; later times find them read.
void BM_ExpandDescendantsFirstTime(benchmark::State& state)
{
    ExpandDescendants(state, false);
}
BENCHMARK(BM_ExpandDescendantsFirstTime)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_ExpandDescendantsAgain(benchmark::State& state)
{
    ExpandDescendants(state, true);
}
BENCHMARK(BM_ExpandDescendantsAgain)->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace
