// Finding objects by name as the user types, both ways in one run, over the same generated
// hierarchy (10 roots, fan-out 10, names of two words and a number):
//
// - the anchor: a stock QSortFilterProxyModel with recursive filtering over a
//   QStandardItemModel, shown in a 400x800 QTreeView painted after each key (matches collapsed);
// - our find: the project's name index queried for the pane's roots, the results list filled
//   and painted after each key, in a list view of the same size.
//
// Each iteration types the nine characters of "p_snow_42" one at a time, the same query on both
// sides; per_key is the processor time of an iteration over nine (query, list filled, view
// painted), slowest_key_ms that of the costliest key on average (ours: the first, which reads the
// whole index; the keys after it narrow what it found). Also: what the index holds per object,
// and what keeping it current adds to a change of the model (a rename, an object moved to a
// random place in the middle). Run under QT_QPA_PLATFORM=offscreen; set
// FIND_BENCH_SKIP_MILLION_ANCHOR=1 to leave out the anchor's slow million.

#include "sonarium/app/session/AppSession.h"
#include "sonarium/core/model/NodeRules.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/qt/FindResultsModel.h"

#include <QApplication>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <filesystem>
#include <memory>
#include <random>

namespace
{
using namespace sn;
constexpr const char* kQuery = "p_snow_42"; // a few dozen in a million, as when looking for one object
constexpr int kKeys = 9;

const char* const kFirst[] = {"Footstep", "Impact", "Ambience", "Door", "Engine", "Voice", "Weapon", "Wind",
                              "Water", "Crowd", "Glass", "Metal", "Music", "Ui", "Creature", "Vehicle"};
const char* const kSecond[] = {"Snow", "Gravel", "Wood", "Stone", "Grass", "Mud", "Sand", "Tile",
                               "Heavy", "Light", "Far", "Near", "Loop", "Start", "Stop", "Hit"};

// The names in breadth-first order, and for each its parent's place (-1 for a root).
struct Hierarchy
{
    std::vector<std::string> names;
    std::vector<int> parents;
};

const Hierarchy& Generated(size_t count)
{
    static std::map<size_t, Hierarchy> made;
    Hierarchy& h = made[count];
    if (!h.names.empty())
        return h;
    std::mt19937 random(11);
    for (size_t i = 0; i < count; ++i)
    {
        h.names.push_back(std::string(kFirst[random() % 16]) + "_" + kSecond[random() % 16] + "_" +
                          std::to_string(random() % 1000));
        // 10 roots, then each object holds the next 10.
        h.parents.push_back(i < 10 ? -1 : static_cast<int>((i - 10) / 10));
    }
    return h;
}

QApplication& App()
{
    static int argc = 1;
    static char name[] = "find_bench";
    static char* argv[] = {name, nullptr};
    static QApplication app(argc, argv);
    return app;
}

double ProcessorSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void Type(benchmark::State& state, const std::function<void(const QString&)>& key)
{
    std::array<double, kKeys> spent{};
    for (auto _ : state)
        for (int typed = 1; typed <= kKeys; ++typed)
        {
            const double start = ProcessorSeconds();
            key(QString::fromLatin1(kQuery, typed));
            spent[typed - 1] += ProcessorSeconds() - start;
        }
    state.counters["per_key"] = benchmark::Counter(kKeys, benchmark::Counter::kIsIterationInvariantRate |
                                                              benchmark::Counter::kInvert);
    const double slowest = *std::max_element(spent.begin(), spent.end());
    state.counters["slowest_key_ms"] = benchmark::Counter(slowest * 1e3 / static_cast<double>(state.iterations()));
}

void BM_AnchorFilterProxy(benchmark::State& state)
{
    App();
    const Hierarchy& h = Generated(static_cast<size_t>(state.range(0)));
    QStandardItemModel model;
    std::vector<QStandardItem*> items;
    items.reserve(h.names.size());
    for (size_t i = 0; i < h.names.size(); ++i)
    {
        items.push_back(new QStandardItem(QString::fromStdString(h.names[i])));
        if (h.parents[i] < 0)
            model.appendRow(items.back());
        else
            items[static_cast<size_t>(h.parents[i])]->appendRow(items.back());
    }
    QSortFilterProxyModel proxy;
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setSourceModel(&model);
    QTreeView view;
    view.setModel(&proxy);
    view.resize(400, 800);
    view.show();
    Type(state,
         [&](const QString& text)
         {
             proxy.setFilterFixedString(text);
             view.repaint();
         });
}

// A host session holding the generated hierarchy as a project: 10 categories' roots, the
// others below them.
struct FindSession
{
    explicit FindSession(size_t count)
    {
        std::filesystem::create_directories(dir);
        HostOptions options;
        options.preferencesFile = dir / "preferences.json";
        session = std::make_unique<AppSession>(options);
        auto project = std::make_unique<Project>(L"Find");
        const Hierarchy& h = Generated(count);
        std::vector<ProjectObject*> objects;
        objects.reserve(count);
        std::mt19937_64 ids(3);
        const auto& categories = rules::AllCategories();
        for (size_t i = 0; i < count; ++i)
        {
            const CStdStr<wchar_t> name(std::wstring(h.names[i].begin(), h.names[i].end()).c_str());
            if (h.parents[i] < 0)
            {
                objects.push_back(project->AddRoot(categories[i], NewGuid(ids), name));
                continue;
            }
            ProjectObject* parent = objects[static_cast<size_t>(h.parents[i])];
            ProjectObject* object = NewProjectObject(project.get(), PMTreeNode::ActorMixer, name, NewGuid(ids));
            parent->RawInsertChild(parent->Children().size(), object);
            project->Index(object);
            objects.push_back(object);
        }
        for (size_t i = 0; i < 10; ++i)
            paneCategories.insert(categories[i]);
        session->GetHost().SetProject(std::move(project));
    }
    ~FindSession()
    {
        session.reset();
        std::filesystem::remove_all(dir);
    }
    Project& Proj() { return *session->GetProject(); }

    std::filesystem::path dir = std::filesystem::temp_directory_path() / "sonarium-find-bench";
    std::unique_ptr<AppSession> session;
    std::set<OrbObjectCategories::Category> paneCategories;
};

void BM_FindList(benchmark::State& state)
{
    App();
    FindSession host(static_cast<size_t>(state.range(0)));
    PaneFind find(*host.session, nullptr, host.paneCategories);
    qt::FindResultsModel model(find);
    QListView view;
    view.setModel(&model);
    view.setItemDelegate(new qt::FindResultDelegate(&view));
    view.setUniformItemSizes(true);
    view.resize(400, 800);
    view.show();
    size_t found = 0;
    Type(state,
         [&](const QString& text)
         {
             find.SetText(text.toStdWString());
             model.Reset();
             view.repaint();
             found = find.Count();
         });
    const NameIndex& names = host.Proj().Names();
    state.counters["found_last_key"] = static_cast<double>(found);
    state.counters["index_bytes_per_object"] = static_cast<double>(names.MemoryBytes()) / names.Size();
}

// The query alone, key by key, without the list: what the index answers in.
void BM_FindQueryOnly(benchmark::State& state)
{
    FindSession host(static_cast<size_t>(state.range(0)));
    std::vector<const ProjectObject*> scope(host.Proj().RootList().begin(), host.Proj().RootList().end());
    const std::string query(kQuery);
    for (auto _ : state)
        for (int typed = 1; typed <= kKeys; ++typed)
        {
            FindResults results = FindResults::Run(host.Proj().Names(),
                                                   FindQuery::Parse(std::wstring(query.begin(), query.begin() + typed)), scope);
            benchmark::DoNotOptimize(results.At(0));
        }
    state.counters["per_key"] = benchmark::Counter(kKeys, benchmark::Counter::kIsIterationInvariantRate |
                                                              benchmark::Counter::kInvert);
}

// What the index adds to changes of the model, measured on the index alone: renaming a random
// object, and an object leaving and entering again at a random place in the middle of the tree.
void BM_IndexPerChange(benchmark::State& state)
{
    FindSession host(static_cast<size_t>(state.range(0)));
    Project& project = host.Proj();
    NameIndex& names = project.Names();
    std::vector<ProjectObject*> leaves;
    std::deque<ProjectObject*> stack;
    for (const auto& root : project.RootList())
        stack.push_back(root.Get());
    while (!stack.empty())
    {
        ProjectObject* at = stack.front();
        stack.pop_front();
        if (at->Children().empty())
            leaves.push_back(at);
        for (const auto& child : at->Children())
            stack.push_back(child.Get());
    }
    // The model has the object it changes at hand: it is brought into the cache a few changes
    // ahead, so that what is measured is the index's own work.
    std::mt19937 random(5);
    constexpr size_t kAhead = 8;
    std::vector<ProjectObject*> order(1 << 20);
    for (ProjectObject*& object : order)
        object = leaves[random() % leaves.size()];
    size_t next = 0;
    for (auto _ : state)
    {
        const size_t mask = order.size() - 1;
        __builtin_prefetch(order[(next + 2 * kAhead) & mask]);
        __builtin_prefetch(order[(next + kAhead) & mask]->NameUtf8().data());
        ProjectObject* object = order[next++ & mask];
        if (state.range(1) == 0)
            names.Renamed(object); // what a rename adds
        else
        {
            names.Leave(object);
            names.Enter(object);
        }
    }
    state.counters["changes"] = benchmark::Counter(state.range(1) == 0 ? 1 : 2,
                                                   benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

void Sizes(benchmark::internal::Benchmark* bench, bool anchor)
{
    bench->Arg(10'000)->Arg(100'000);
    if (!anchor || !std::getenv("FIND_BENCH_SKIP_MILLION_ANCHOR"))
        bench->Arg(1'000'000);
    bench->Unit(benchmark::kMillisecond);
}
} // namespace

BENCHMARK(BM_AnchorFilterProxy)->Apply([](auto* b) { Sizes(b, true); })->Iterations(3);
BENCHMARK(BM_FindList)->Apply([](auto* b) { Sizes(b, false); });
BENCHMARK(BM_FindQueryOnly)->Apply([](auto* b) { Sizes(b, false); });
BENCHMARK(BM_IndexPerChange)
    ->ArgsProduct({{1'000'000}, {0, 1}})
    ->ArgNames({"objects", "move"})
    ->Unit(benchmark::kMicrosecond);
