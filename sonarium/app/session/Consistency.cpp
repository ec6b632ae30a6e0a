#include "sonarium/app/session/Consistency.h"

#include "host/ProjectManager.h"
#include "host/TreeNodeWithObject.h"
#include "platform/WindowSystem.h"
#include "sonarium/app/session/HostRecorder.h"
#include "sonarium/core/model/CurrentState.h"

#include <algorithm>
#include <memory>

namespace sn
{
namespace
{
class PaneChecker
{
public:
    PaneChecker(Pane& pane, std::vector<std::wstring>& problems)
        : m_tree(pane.view->GetTreeCtrl()), m_pane(pane.name), m_categories(pane.categories), m_problems(problems)
    {
    }

    // The pane's top rows are the top work units of its categories, in the host's order.
    void CheckRoots()
    {
        ProjectManager* projects = ProjectManager::m_pInstance;
        if (!projects)
            return;
        HTREEITEM item = m_tree.GetRootItem();
        for (OrbObjectCategories::Category category : OrbObjectCategories::GetActiveCategories())
        {
            CSmartPtr<IOrbWorkUnit> workUnit;
            if (!m_categories.count(category) || !projects->GetTopWorkUnit(category, workUnit) || !workUnit)
                continue;
            std::unique_ptr<PMTreeNode> fresh(NodeFactory::CreateNode(nullptr, workUnit));
            if (!item)
                return Report(L"has no row for " + ObjectPath(workUnit.Get()));
            CheckItem(item, fresh.get());
            item = m_tree.GetNextSiblingItem(item);
        }
        if (item)
            Report(L"has a top row \"" + m_tree.GetItemText(item) + L"\" that no category of it holds");
    }

private:
    void Report(std::wstring const& what) { m_problems.push_back(L"pane \"" + m_pane + L"\" " + what); }

    void CheckItem(HTREEITEM item, PMTreeNode* fresh)
    {
        auto* shownNode = m_tree.GetNodeFromItem(item);
        auto* object = dynamic_cast<TreeNodeWithObject*>(fresh);
        const std::wstring path = object ? ObjectPath(object->GetObject()) : L"?";
        if (!shownNode || shownNode->ID() != fresh->ID())
            return Report(L"shows \"" + m_tree.GetItemText(item) + L"\" where the project has " + path);
        // The row's node is its parent row's node's child: the tree shows the view's nodes.
        if (HTREEITEM parent = m_tree.GetParentItem(item))
        {
            PMTreeNode* parentNode = m_tree.GetNodeFromItem(parent);
            auto const& siblings = parentNode ? parentNode->Children() : std::vector<PMTreeNode*>{};
            if (std::find(siblings.begin(), siblings.end(), shownNode) == siblings.end())
                Report(L"shows " + path + L" with a node its parent row's node no longer holds");
        }
        const PETreeRow row = m_tree.GetRow(item);
        const std::wstring name = fresh->GetDisplayName().c_str();
        if (row.text != name)
            Report(L"shows " + path + L" as \"" + row.text + L"\" where the project names it \"" + name + L"\"");
        if (row.hasButton != fresh->HasChildren())
            Report(L"shows " + path + (row.hasButton ? L" with" : L" without") + L" an expand button");
        if (row.excluded != fresh->IsExcludedOnCurrentPlatform())
            Report(L"shows " + path + (row.excluded ? L" excluded" : L" included") + L" on the current platform");
        if (!(m_tree.GetItemState(item, TVIS_EXPANDED) & TVIS_EXPANDED))
            return;
        HTREEITEM child = m_tree.GetChildItem(item);
        for (PMTreeNode* freshChild : fresh->Children())
        {
            auto* childObject = dynamic_cast<TreeNodeWithObject*>(freshChild);
            if (!child)
                return Report(L"has no row for " + (childObject ? ObjectPath(childObject->GetObject()) : L"?"));
            CheckItem(child, freshChild);
            child = m_tree.GetNextSiblingItem(child);
        }
        if (child)
            Report(L"shows \"" + m_tree.GetItemText(child) + L"\" under " + path + L", which does not hold it");
    }

    PETreeCtrl& m_tree;
    std::wstring m_pane;
    std::set<OrbObjectCategories::Category> const& m_categories;
    std::vector<std::wstring>& m_problems;
};
// The project's index of objects by GUID holds exactly the objects of its hierarchy: an object
// left in it after leaving the hierarchy is found by GUID once freed.
void CheckIndex(Project const& project, std::vector<std::wstring>& problems)
{
    size_t reachable = 0;
    std::vector<ProjectObject const*> pending;
    for (WorkUnitObject* root : project.Roots())
        pending.push_back(root);
    while (!pending.empty())
    {
        ProjectObject const* object = pending.back();
        pending.pop_back();
        ++reachable;
        if (project.Find(object->Id()) != object)
            problems.push_back(L"the project's index does not find " + ObjectPath(object));
        for (auto const& child : object->Children())
            pending.push_back(child.Get());
    }
    if (reachable != project.ObjectCount())
        problems.push_back(L"the project's index holds " + std::to_wstring(project.ObjectCount()) +
                           L" objects where its hierarchy has " + std::to_wstring(reachable));
}
} // namespace

std::vector<std::wstring> ConsistencyProblems(AppSession& session, int expectedLocks)
{
    std::vector<std::wstring> problems;
    Host& host = session.GetHost();
    const int locks = host.Properties().Prop(propLockUIUpdate, 3, 1).GetInt();
    if (locks != expectedLocks)
        problems.push_back(L"\"LockUIUpdate\" is " + std::to_wstring(locks) + L" where " +
                           std::to_wstring(expectedLocks) + L" raise(s) are held");
    if (host.Undo().GroupDepth() != 0)
        problems.push_back(std::to_wstring(host.Undo().GroupDepth()) + L" undo group(s) left open");
    if (Project* project = session.GetProject())
        CheckIndex(*project, problems);
    for (Pane& pane : session.Panes())
    {
        if (!pane.view)
            continue;
        PETreeCtrl& tree = pane.view->GetTreeCtrl();
        // A name the host refused reopens the editor on a timer; the refresh the edit held back
        // waits for that edit to end.
        const bool reopening = WindowSystem::Get().HasTimer(pane.view->GetSafeHwnd(), DlgProjectExplorer::TIMER_EDIT_ITEM);
        const bool settled = locks == 0 && !tree.GetEditItem() && !reopening;
        if (settled && pane.view->HasPendingRefresh())
            problems.push_back(L"pane \"" + pane.name + L"\" still owes a refresh with nothing holding it back");
        if (!settled || !session.GetProject())
            continue;
        PaneChecker(pane, problems).CheckRoots();
    }
    return problems;
}
} // namespace sn
