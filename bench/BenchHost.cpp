#include "BenchHost.h"

#include "platform/WindowSystem.h"
#include "sonarium/core/host/ProjectGenerator.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <deque>

BenchHost::BenchHost(size_t objectCount) : m_objectCount(objectCount)
{
    m_dir = std::filesystem::temp_directory_path() / ("sonarium-bench-" + std::to_string(objectCount));
    std::filesystem::create_directories(m_dir);
    sn::HostOptions options;
    options.preferencesFile = m_dir / "preferences.json";
    m_host = std::make_unique<sn::Host>(options);
    m_host->SetProject(sn::GenerateProject(objectCount, 7));
    m_main.Create(L"Main", L"Sonarium", WS_VISIBLE, CRect(0, 0, 800, 800), nullptr, 0);
    m_host->SetMainWnd(&m_main);

    std::set<OrbObjectCategories::Category> categories;
    for (OrbObjectCategories::Category category : OrbObjectCategories::GetActiveCategories())
        categories.insert(category);
    m_view = new DlgProjectExplorer(categories, &m_main);
    m_view->Create(DlgProjectExplorer::IDD, &m_main);
    m_view->MoveWindow(0, 0, 400, 780);
    m_view->OnLoadView();
    WindowSystem::Get().RunUntilIdle();
}

BenchHost::~BenchHost()
{
    m_view->DestroyWindow();
    m_main.DestroyWindow();
    m_host.reset();
    std::filesystem::remove_all(m_dir);
}

namespace
{
// Marks nodes with children expanded, breadth first from the roots, while `more(marked, shown)`
// holds, `shown` counting the nodes the marks make visible; returns the number marked.
template <class More> size_t ExpandBreadthFirst(std::vector<PMTreeNode*> const& roots, More more)
{
    std::deque<PMTreeNode*> pending(roots.begin(), roots.end());
    size_t shown = pending.size();
    size_t marked = 0;
    while (!pending.empty() && more(marked, shown))
    {
        PMTreeNode* node = pending.front();
        pending.pop_front();
        if (!node->HasChildren())
            continue;
        node->IsExpanded(true);
        ++marked;
        for (PMTreeNode* child : node->Children())
            pending.push_back(child);
        shown += node->Children().size();
    }
    return marked;
}
} // namespace

size_t BenchHost::ExpandUntilShown(size_t shown)
{
    return ExpandBreadthFirst(m_view->RootTreeNodes(),
                              [shown](size_t, size_t visible) { return visible < shown; });
}

size_t BenchHost::ExpandNodes(size_t count)
{
    return ExpandBreadthFirst(m_view->RootTreeNodes(),
                              [count](size_t marked, size_t) { return marked < count; });
}

std::vector<GUID> BenchHost::ShownGuids()
{
    std::vector<GUID> ids;
    PETreeCtrl& tree = Tree();
    for (int row = 0; row < tree.GetRowCount(); ++row)
        if (PMTreeNode* node = tree.GetNodeFromItem(tree.GetRowItem(row)))
            ids.push_back(node->ID());
    return ids;
}

size_t BenchHost::HeapInUse()
{
    struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void BenchHost::EvictCaches()
{
    constexpr size_t k_bytes = size_t(64) << 20;
    static std::vector<unsigned char> buffer(k_bytes, 1);
    unsigned sum = 0;
    for (size_t i = 0; i < buffer.size(); i += 64)
        sum += buffer[i]++;
    benchmark::DoNotOptimize(sum);
}
