// Single edits on projects of 10,000 to 1,000,000 objects, in the explorer and in a stock Qt tree
// over the same hierarchy, each ending with the tree painted; then the explorer's structural
// refresh and the opening of a project from disk. The run ends with a table of both sides.

#include "bench/compare/CompareTable.h"
#include "bench/compare/SideBySide.h"

#include "platform/WindowSystem.h"
#include "sonarium/core/model/CurrentState.h"
#include "sonarium/core/model/ProjectEdit.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{
// One project at a time is alive: a million objects on both sides is memory enough. It goes
// before the application does, which its Qt tree needs.
std::unique_ptr<SideBySide> current;

SideBySide& Project(size_t objects, bool all)
{
    if (!current || current->Explorer().ObjectCount() != objects)
    {
        current.reset();
        current = std::make_unique<SideBySide>(objects);
    }
    if (current->ShowsAll() != all)
        current->ShowAll(all);
    return *current;
}

const CStdStr<wchar_t> k_newName = L"Bench_New_Sound";
const CStdStr<wchar_t> k_renamed = L"Bench_Renamed";

void ExplorerEdit(benchmark::State& state, Edit edit, bool all)
{
    SideBySide& side = Project(static_cast<size_t>(state.range(0)), all);
    for (auto _ : state)
    {
        if (edit == Edit::Paste)
        {
            // The user copied the sound and clicked the container: not timed.
            state.PauseTiming();
            auto click = [&side](sn::ProjectObject* object)
            {
                // Revealed and selected, as a find does; with only the roots shown it opens the path.
                side.Explorer().View().FindOrbObject(object);
                WindowSystem::Get().RunUntilIdle();
            };
            click(side.Leaf());
            side.Explorer().View().SendMessage(WM_COPY, 0, 0);
            click(side.Container());
            state.ResumeTiming();
        }
        bool done = false;
        switch (edit)
        {
        case Edit::Add:
            done = sn::ProjectEdit::Create(side.Container(), PMTreeNode::SoundSFX, k_newName) != nullptr;
            break;
        case Edit::Delete:
            done = sn::ProjectEdit::Delete(side.Leaf());
            break;
        case Edit::Rename:
            done = sn::ProjectEdit::Rename(side.Leaf(), k_renamed);
            break;
        case Edit::Move:
            done = sn::ProjectEdit::Move(side.Leaf(), side.Container());
            break;
        case Edit::Paste:
        {
            const size_t before = side.Container()->Children().size();
            side.Explorer().View().SendMessage(WM_PASTE, 0, 0);
            WindowSystem::Get().RunUntilIdle();
            done = side.Container()->Children().size() == before + 1;
            break;
        }
        case Edit::Include:
            sn::ProjectEdit::SetIncluded(side.Leaf(), sn::CurrentPlatform(), false);
            done = !side.Leaf()->GetIncluded(sn::CurrentPlatform());
            break;
        }
        side.PaintExplorer();
        state.PauseTiming();
        if (!done)
        {
            state.SkipWithError("the edit was refused");
            break;
        }
        side.UndoExplorer();
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(side.Explorer().Tree().GetRowCount());
    // A paste reveals what it pasted: the roots alone again for what follows.
    if (edit == Edit::Paste && !all)
        side.ShowAll(false);
}

void QtEdit(benchmark::State& state, Edit edit, bool all)
{
    SideBySide& side = Project(static_cast<size_t>(state.range(0)), all);
    QStandardItem* container = side.QtContainer();
    QStandardItem* parent = side.QtLeafParent();
    const int row = side.QtLeafRow();
    for (auto _ : state)
    {
        QString name;
        QList<QStandardItem*> moved;
        switch (edit)
        {
        case Edit::Add:
            container->appendRow(new QStandardItem(QString::fromStdWString(k_newName)));
            break;
        case Edit::Delete:
            name = parent->child(row)->text();
            parent->removeRow(row);
            break;
        case Edit::Rename:
            name = parent->child(row)->text();
            parent->child(row)->setText(QString::fromStdWString(k_renamed));
            break;
        case Edit::Move:
            moved = parent->takeRow(row);
            container->appendRow(moved);
            break;
        case Edit::Paste:
            container->appendRow(parent->child(row)->clone());
            break;
        case Edit::Include:
            // What an excluded row shows: its text greyed.
            parent->child(row)->setForeground(QBrush(Qt::gray));
            break;
        }
        side.PaintQt();
        state.PauseTiming();
        switch (edit)
        {
        case Edit::Add:
        case Edit::Paste:
            container->removeRow(container->rowCount() - 1);
            break;
        case Edit::Include:
            parent->child(row)->setData(QVariant(), Qt::ForegroundRole);
            break;
        case Edit::Delete:
            parent->insertRow(row, new QStandardItem(name));
            break;
        case Edit::Rename:
            parent->child(row)->setText(name);
            break;
        case Edit::Move:
            parent->insertRow(row, container->takeRow(container->rowCount() - 1));
            break;
        }
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
}

void RefreshStructure(SideBySide& side)
{
    side.Explorer().View().NotifyRefreshTree(DlgProjectExplorer::RefreshChildrenAdded |
                                             DlgProjectExplorer::RefreshChildrenRemoved);
}

// The rows the explorer shows, and the time per row of one iteration.
void CountRows(benchmark::State& state, SideBySide& side)
{
    const auto rows = static_cast<double>(side.Explorer().Tree().GetCount());
    state.counters["rows"] = rows;
    state.counters["ns_per_row"] =
        benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// A structural refresh of what is shown: per shown row with everything expanded, and with only
// the roots shown after everything was expanded once.
void ExplorerRefresh(benchmark::State& state, bool all)
{
    SideBySide& side = Project(static_cast<size_t>(state.range(0)), all);
    for (auto _ : state)
    {
        RefreshStructure(side);
        side.PaintExplorer();
    }
    CountRows(state, side);
}

// The refresh that keeps nothing: expanding everything from the roots builds every row afresh.
// Only the refresh and the paint are timed; the marks are set, and reset after, untimed.
void ExplorerExpandAll(benchmark::State& state)
{
    SideBySide& side = Project(static_cast<size_t>(state.range(0)), true);
    for (auto _ : state)
    {
        state.PauseTiming();
        side.MarkAll(false);
        side.Explorer().View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
        WindowSystem::Get().RunUntilIdle();
        side.MarkAll(true);
        state.ResumeTiming();
        RefreshStructure(side);
        side.PaintExplorer();
    }
    CountRows(state, side);
    // Back to the view the other benchmarks expect.
    side.ShowAll(true);
}

// The same on the stock side: expandAll from the roots, then a paint.
void QtExpandAll(benchmark::State& state)
{
    SideBySide& side = Project(static_cast<size_t>(state.range(0)), true);
    QTreeView& view = side.QtView();
    for (auto _ : state)
    {
        state.PauseTiming();
        view.collapseAll();
        for (int row = 0; row < side.QtModel().rowCount(); ++row)
            view.expand(side.QtModel().index(row, 0));
        QCoreApplication::processEvents();
        side.PaintQt();
        state.ResumeTiming();
        view.expandAll();
        QCoreApplication::processEvents();
        side.PaintQt();
    }
    side.ShowAll(true);
}

int64_t IterationsFor(size_t objects)
{
    return objects >= 1'000'000 ? 3 : objects >= 100'000 ? 10 : 30;
}

void Register()
{
    // First, while this process is small: the child's peak memory is measured on its own, but
    // the machine's memory and caches are shared.
    RegisterOpenBenchmarks();
    for (size_t objects : k_sizes)
    {
        // Everything expanded first, then the roots only: the second mode finds every node read.
        for (bool all : {true, false})
        {
            for (Edit edit : k_edits)
                for (bool qt : {true, false})
                {
                    auto* bench = qt ? benchmark::RegisterBenchmark(EditName(Side::Qt, edit, all).c_str(), QtEdit, edit, all)
                                     : benchmark::RegisterBenchmark(EditName(Side::Explorer, edit, all).c_str(),
                                                                    ExplorerEdit, edit, all);
                    bench->Arg(static_cast<int64_t>(objects))
                        ->Unit(benchmark::kMillisecond)
                        ->Iterations(IterationsFor(objects));
                }
            benchmark::RegisterBenchmark(RefreshName(all).c_str(), ExplorerRefresh, all)
                ->Arg(static_cast<int64_t>(objects))
                ->Unit(benchmark::kMillisecond)
                ->Iterations(IterationsFor(objects));
            if (all)
                for (bool qt : {true, false})
                    benchmark::RegisterBenchmark(ExpandAllName(qt ? Side::Qt : Side::Explorer).c_str(),
                                                 qt ? QtExpandAll : ExplorerExpandAll)
                        ->Arg(static_cast<int64_t>(objects))
                        ->Unit(benchmark::kMillisecond)
                        ->Iterations(IterationsFor(objects));
        }
    }
}
} // namespace

int main(int argc, char** argv)
{
    // A stock Qt tree needs an application; no screen is needed to paint into an image.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    Register();
    CollectingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    current.reset();
    reporter.PrintTable();
    std::fflush(stdout);
    benchmark::Shutdown();
    return 0;
}
