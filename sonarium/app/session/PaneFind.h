#pragma once
// The search field of one explorer pane, without its toolkit: the query typed, its results
// among the pane's categories in tree order (brought up to date when the project changed), the
// rows the results list shows, and revealing results in the pane's tree.

#include "explorer/DlgProjectExplorer.h"
#include "sonarium/core/find/FindQuery.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace sn
{
class AppSession;
class Project;

class PaneFind
{
public:
    PaneFind(AppSession& session, DlgProjectExplorer* view, std::set<OrbObjectCategories::Category> categories);

    DlgProjectExplorer* View() const { return m_view; }
    // Types the query: the results follow at once.
    void SetText(std::wstring const& text);
    std::wstring const& Text() const { return m_text; }
    FindQuery const& Query() const { return m_query; }
    // Runs the query again when the project changed since the results were taken (or another
    // project is open); true when it did.
    bool Update();

    size_t Count();
    // A result, in tree order; null past the end.
    ProjectObject* ObjectAt(size_t index);

    struct Row
    {
        ProjectObject* object = nullptr;
        std::wstring name;
        std::wstring parents;                        // the names above it, from its category's root
        std::vector<std::pair<size_t, size_t>> marks; // the parts of the name the query matched
    };
    Row RowAt(size_t index);

    // Reveals the results at these places in the pane's tree (one: that object, several: all
    // of them, the last one scrolled into view) and gives the tree the focus. False when none
    // of the places holds a result.
    bool Reveal(std::vector<size_t> const& indexes);

private:
    void Run();

    AppSession& m_session;
    DlgProjectExplorer* m_view;
    std::set<OrbObjectCategories::Category> m_categories;
    std::wstring m_text;
    FindQuery m_query;
    FindResults m_results;
    Project const* m_project = nullptr;
};
} // namespace sn
