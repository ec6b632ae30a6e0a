#pragma once
// Undo and redo of every change of the project. Changes are recorded as commands; groups
// nest, and the outermost group becomes one step named by its first named level.

#include "host/Undo.h"

#include <memory>
#include <vector>

namespace sn
{
class IUndoCommand
{
public:
    virtual ~IUndoCommand() = default;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
};

class UndoManager : public IUndoMgr
{
public:
    UndoManager() = default;

    // Records a change that has just been made. Outside any group it becomes a step of its own.
    void Record(std::unique_ptr<IUndoCommand> command, const wchar_t* name);
    // True while undoing or redoing: changes made then are not recorded again.
    bool IsReplaying() const { return m_replaying; }

    void BeginGroup(bool reserved) override;
    void EndGroup(const wchar_t* name, bool reserved) override;
    bool CanUndo() const override { return !m_undo.empty(); }
    bool CanRedo() const override { return !m_redo.empty(); }
    bool Undo() override;
    bool Redo() override;
    CStdStr<wchar_t> GetUndoName() const override;
    CStdStr<wchar_t> GetRedoName() const override;

    int GroupDepth() const { return static_cast<int>(m_open.size()); }
    // The name the innermost open group has so far (that of its first named change), or empty.
    CStdStr<wchar_t> OpenGroupName() const { return m_open.empty() ? CStdStr<wchar_t>() : m_open.back().name; }
    // Counts the outermost groups opened: tells one user command from the next.
    unsigned long OuterGroupCount() const { return m_outerGroups; }
    size_t UndoCount() const { return m_undo.size(); }
    void Clear();

private:
    struct Step
    {
        CStdStr<wchar_t> name;
        std::vector<std::unique_ptr<IUndoCommand>> commands;
    };

    std::vector<Step> m_open; // innermost last
    std::vector<Step> m_undo;
    std::vector<Step> m_redo;
    bool m_replaying = false;
    unsigned long m_outerGroups = 0;
};
} // namespace sn
