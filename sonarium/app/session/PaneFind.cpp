#include "sonarium/app/session/PaneFind.h"

#include "sonarium/app/session/AppSession.h"

namespace sn
{
PaneFind::PaneFind(AppSession& session, DlgProjectExplorer* view, std::set<OrbObjectCategories::Category> categories)
    : m_session(session), m_view(view), m_categories(std::move(categories))
{
}

void PaneFind::SetText(std::wstring const& text)
{
    m_text = text;
    m_query = FindQuery::Parse(text);
    Run();
}

void PaneFind::Run()
{
    Project const* project = m_session.GetProject();
    m_project = project;
    if (!project)
    {
        m_results = {};
        return;
    }
    std::vector<const ProjectObject*> scope;
    for (OrbObjectCategories::Category category : m_categories)
        if (const ProjectObject* root = project->GetRoot(category))
            scope.push_back(root);
    // A pane whose categories have no root in this project finds nothing, not everything.
    if (scope.empty())
    {
        m_results = {};
        return;
    }
    // Results of a query typed on are narrowed from the last ones when they are still current.
    m_results = FindResults::Run(project->Names(), m_query, scope, &m_results);
}

bool PaneFind::Update()
{
    Project const* project = m_session.GetProject();
    if (project == m_project && (!project || project->Names().Generation() == m_results.Generation()))
        return false;
    Run();
    return true;
}

size_t PaneFind::Count()
{
    Update();
    return m_results.Count();
}

ProjectObject* PaneFind::ObjectAt(size_t index)
{
    Update();
    return m_results.At(index);
}

PaneFind::Row PaneFind::RowAt(size_t index)
{
    Row row;
    row.object = ObjectAt(index);
    if (!row.object)
        return row;
    row.name = row.object->GetName().c_str();
    for (const ProjectObject* up = row.object->Parent(); up; up = up->Parent())
        row.parents = row.parents.empty() ? std::wstring(up->GetName().c_str())
                                          : std::wstring(up->GetName().c_str()) + L"/" + row.parents;
    row.marks = MatchedParts(row.name, m_query);
    return row;
}

bool PaneFind::Reveal(std::vector<size_t> const& indexes)
{
    std::vector<IOrbObject*> objects;
    for (size_t index : indexes)
        if (ProjectObject* object = ObjectAt(index))
            objects.push_back(object);
    if (objects.empty() || !m_view)
        return false;
    if (objects.size() == 1)
        m_view->FindOrbObject(objects.front());
    else
        m_view->FindOrbObject(objects);
    m_view->SetFocusOnTree();
    return true;
}
} // namespace sn
