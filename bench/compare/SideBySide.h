#pragma once
// The same generated project shown twice: in the explorer over the reference host, and in a stock
// Qt tree (QStandardItemModel and QTreeView) holding one item per row the explorer would show.
// Both views are 800 pixels high and are painted into an image at the end of every edit, so the
// two sides pay for the same result: the change made, and the tree on screen showing it.

#include "bench/BenchHost.h"

#include <QImage>
#include <QStandardItemModel>
#include <QTreeView>

#include <memory>

namespace sn
{
class ProjectObject;
}

class SideBySide
{
public:
    static constexpr int ViewWidth = 400;
    static constexpr int ViewHeight = 800;

    explicit SideBySide(size_t objectCount);
    ~SideBySide();

    // Everything expanded, or only the category roots (after everything was expanded once).
    void ShowAll(bool all);
    // Only the explorer's expanded marks, every node's below the roots, with no refresh.
    void MarkAll(bool all);
    bool ShowsAll() const { return m_all; }

    BenchHost& Explorer() { return m_explorer; }
    QTreeView& QtView() { return *m_qtView; }
    QStandardItemModel& QtModel() { return *m_qtModel; }

    // What the edits work on, chosen once about the middle of the project: a container that can
    // take a sound, and a sound without children nobody refers to, under another parent.
    sn::ProjectObject* Container() const { return m_container; }
    sn::ProjectObject* Leaf() const { return m_leaf; }
    QStandardItem* QtContainer() const { return m_qtContainer; }
    QStandardItem* QtLeafParent() const { return m_qtLeafParent; }
    int QtLeafRow() const { return m_qtLeafRow; }

    void PaintExplorer();
    void PaintQt();
    // Undoes the explorer's last edit and lets the posted work run, untimed.
    void UndoExplorer();

private:
    void ChooseTargets();
    void BuildQtModel();

    BenchHost m_explorer;
    std::unique_ptr<QStandardItemModel> m_qtModel;
    std::unique_ptr<QTreeView> m_qtView;
    QImage m_canvas;
    bool m_all = false;
    sn::ProjectObject* m_container = nullptr;
    sn::ProjectObject* m_leaf = nullptr;
    QStandardItem* m_qtContainer = nullptr;
    QStandardItem* m_qtLeafParent = nullptr;
    int m_qtLeafRow = 0;
};
