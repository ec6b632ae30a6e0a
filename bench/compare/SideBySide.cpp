#include "bench/compare/SideBySide.h"

#include "platform/WindowSystem.h"
#include "sonarium/core/model/Project.h"
#include "sonarium/core/model/ProjectEdit.h"
#include "sonarium/core/nodes/ProjectNode.h"
#include "sonarium/qt/TreeRowPainter.h"

#include <QApplication>
#include <QPainter>

#include <functional>
#include <stdexcept>
#include <unordered_map>

namespace
{
// The objects with a row of their own, in the order the rows come, roots first.
std::vector<sn::ProjectObject*> RowObjects(BenchHost& host)
{
    std::vector<sn::ProjectObject*> objects;
    std::vector<sn::ProjectObject*> pending;
    const std::vector<PMTreeNode*>& roots = host.View().RootTreeNodes();
    for (auto it = roots.rbegin(); it != roots.rend(); ++it)
        pending.push_back(static_cast<sn::ProjectNode*>(*it)->Object());
    while (!pending.empty())
    {
        sn::ProjectObject* object = pending.back();
        pending.pop_back();
        objects.push_back(object);
        const auto& children = object->Children();
        for (auto it = children.rbegin(); it != children.rend(); ++it)
            if (sn::ProjectNode::HasNode(it->Get()))
                pending.push_back(it->Get());
    }
    return objects;
}

QString Text(const sn::ProjectObject* object)
{
    return QString::fromStdString(object->NameUtf8());
}
} // namespace

SideBySide::SideBySide(size_t objectCount) : m_explorer(objectCount), m_canvas(ViewWidth, ViewHeight, QImage::Format_ARGB32_Premultiplied)
{
    // The explorer's tree gets the same 800 pixels as Qt's, below its toolbar.
    CRect view;
    CRect tree;
    m_explorer.View().GetClientRect(&view);
    m_explorer.Tree().GetClientRect(&tree);
    m_explorer.View().MoveWindow(0, 0, ViewWidth, ViewHeight + view.Height() - tree.Height());
    ChooseTargets();
    BuildQtModel();
}

SideBySide::~SideBySide() = default;

void SideBySide::ChooseTargets()
{
    const std::vector<sn::ProjectObject*> rows = RowObjects(m_explorer);
    const sn::Project& project = *m_explorer.Host().GetProject();
    // From the middle on, then from the top: some categories hold no sounds at all.
    auto from = [&](size_t step) { return rows[(rows.size() / 2 + step) % rows.size()]; };
    for (size_t step = 0; step < rows.size() && !m_container; ++step)
        if (from(step)->HasMemberChildren() && sn::ProjectEdit::CanHold(from(step), PMTreeNode::SoundSFX))
            m_container = from(step);
    for (size_t step = 0; m_container && step < rows.size() && !m_leaf; ++step)
    {
        sn::ProjectObject* candidate = from(step);
        if (candidate->GetNodeType() != PMTreeNode::SoundSFX || !candidate->Children().empty() ||
            candidate->Parent() == m_container || project.References().ReferrersOf(candidate->Id()))
            continue;
        // It must be able to move into the container, and back.
        if (!sn::ProjectEdit::Move(candidate, m_container))
            continue;
        UndoExplorer();
        m_leaf = candidate;
    }
    if (!m_container || !m_leaf)
        throw std::runtime_error("the generated project has no objects to edit");
}

void SideBySide::BuildQtModel()
{
    m_qtModel = std::make_unique<QStandardItemModel>();
    std::unordered_map<const sn::ProjectObject*, QStandardItem*> wanted{
        {m_container, nullptr}, {m_leaf->Parent(), nullptr}};
    // Children are added a parent's worth at a time, as a loader would.
    std::function<void(QStandardItem*, const sn::ProjectObject*)> fill = [&](QStandardItem* item,
                                                                              const sn::ProjectObject* object)
    {
        if (auto it = wanted.find(object); it != wanted.end())
            it->second = item;
        QList<QStandardItem*> children;
        std::vector<const sn::ProjectObject*> objects;
        for (const CSmartPtr<sn::ProjectObject>& child : object->Children())
            if (sn::ProjectNode::HasNode(child.Get()))
            {
                children.append(new QStandardItem(Text(child.Get())));
                objects.push_back(child.Get());
                if (child.Get() == m_leaf)
                    m_qtLeafRow = static_cast<int>(objects.size()) - 1;
            }
        if (!children.isEmpty())
            item->appendRows(children);
        for (size_t i = 0; i < objects.size(); ++i)
            fill(children[static_cast<qsizetype>(i)], objects[i]);
    };
    for (PMTreeNode* root : m_explorer.View().RootTreeNodes())
    {
        const sn::ProjectObject* object = static_cast<sn::ProjectNode*>(root)->Object();
        auto* item = new QStandardItem(Text(object));
        m_qtModel->appendRow(item);
        fill(item, object);
    }
    m_qtContainer = wanted[m_container];
    m_qtLeafParent = wanted[m_leaf->Parent()];

    m_qtView = std::make_unique<QTreeView>();
    m_qtView->setHeaderHidden(true);
    // What anyone showing a large tree sets: every row is as high as the first.
    m_qtView->setUniformRowHeights(true);
    m_qtView->setModel(m_qtModel.get());
    m_qtView->resize(ViewWidth, ViewHeight);
    m_qtView->show();
    ShowAll(false);
}

void SideBySide::ShowAll(bool all)
{
    m_all = all;
    // The explorer: the marks in the nodes, then one refresh.
    MarkAll(all);
    m_explorer.View().NotifyRefreshTree(DlgProjectExplorer::RefreshAll);
    if (all)
        m_qtView->expandAll();
    else
    {
        m_qtView->collapseAll();
        for (int row = 0; row < m_qtModel->rowCount(); ++row)
            m_qtView->expand(m_qtModel->index(row, 0));
    }
    // Both show the container at the top, where the edits happen.
    if (all)
    {
        PETreeCtrl& tree = m_explorer.Tree();
        tree.SelectSetFirstVisible(tree.GetItemWithGUID(m_container->Id(), TVI_ROOT));
        m_qtView->scrollTo(m_qtContainer->index(), QAbstractItemView::PositionAtTop);
    }
    else
    {
        m_explorer.Tree().ScrollToRow(0);
        m_qtView->scrollToTop();
    }
    WindowSystem::Get().RunUntilIdle();
    // The first rebuild after expanding or collapsing everything builds every item again; the
    // edits measure the rebuilds that follow, which keep what did not change.
    m_explorer.View().NotifyRefreshTree(DlgProjectExplorer::RefreshChildrenAdded |
                                        DlgProjectExplorer::RefreshChildrenRemoved);
    WindowSystem::Get().RunUntilIdle();
    QCoreApplication::processEvents();
    PaintExplorer();
    PaintQt();
}

void SideBySide::MarkAll(bool all)
{
    for (PMTreeNode* root : m_explorer.View().RootTreeNodes())
    {
        root->SetExpandedForAllChildren(all);
        root->IsExpanded(true);
    }
}

void SideBySide::PaintExplorer()
{
    WindowSystem::Get().RunUntilIdle();
    PETreeCtrl& tree = m_explorer.Tree();
    QPainter painter(&m_canvas);
    const sn::qt::TreePalette palette = sn::qt::TreePalette::FromTheme(tree);
    painter.fillRect(m_canvas.rect(), palette.background);
    std::vector<PETreeRow> rows;
    tree.GetVisibleRows(rows);
    sn::qt::PaintRows(painter, rows, palette, true);
}

void SideBySide::PaintQt()
{
    m_qtView->viewport()->render(&m_canvas);
}

void SideBySide::UndoExplorer()
{
    m_explorer.Host().Undo().Undo();
    WindowSystem::Get().RunUntilIdle();
}
