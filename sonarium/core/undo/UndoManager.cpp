#include "sonarium/core/undo/UndoManager.h"

#include "sonarium/core/model/ViewsLock.h"

IUndoMgr* IUndoMgr::m_instance = nullptr;

namespace sn
{
namespace
{
// Restores the flag on every way out, so a failing command cannot leave recording off.
struct ReplayGuard
{
    explicit ReplayGuard(bool& flag) : m_flag(flag) { m_flag = true; }
    ~ReplayGuard() { m_flag = false; }
    bool& m_flag;
};
} // namespace

void UndoManager::Record(std::unique_ptr<IUndoCommand> command, const wchar_t* name)
{
    if (m_replaying || !command)
        return;
    m_redo.clear();
    if (!m_open.empty())
    {
        Step& group = m_open.back();
        if (group.name.empty() && name)
            group.name = name;
        group.commands.push_back(std::move(command));
        return;
    }
    Step step;
    step.name = name ? name : L"";
    step.commands.push_back(std::move(command));
    m_undo.push_back(std::move(step));
}

void UndoManager::BeginGroup(bool)
{
    if (m_open.empty())
        ++m_outerGroups;
    m_open.emplace_back();
}

void UndoManager::EndGroup(const wchar_t* name, bool)
{
    if (m_open.empty())
        return;
    Step group = std::move(m_open.back());
    m_open.pop_back();
    if (name && *name)
        group.name = name;
    if (group.commands.empty())
        return; // an empty group leaves no step
    if (!m_open.empty())
    {
        Step& outer = m_open.back();
        if (outer.name.empty())
            outer.name = group.name;
        for (auto& command : group.commands)
            outer.commands.push_back(std::move(command));
        return;
    }
    m_undo.push_back(std::move(group));
}

bool UndoManager::Undo()
{
    if (m_undo.empty() || !m_open.empty())
        return false;
    Step step = std::move(m_undo.back());
    m_undo.pop_back();
    // A step of several changes rebuilds the views once, after it is back on its stack.
    const ScopedViewsLock lock(step.commands.size() > 1);
    {
        ReplayGuard guard(m_replaying);
        for (auto it = step.commands.rbegin(); it != step.commands.rend(); ++it)
            (*it)->Undo();
    }
    m_redo.push_back(std::move(step));
    return true;
}

bool UndoManager::Redo()
{
    if (m_redo.empty() || !m_open.empty())
        return false;
    Step step = std::move(m_redo.back());
    m_redo.pop_back();
    // A step of several changes rebuilds the views once, after it is back on its stack.
    const ScopedViewsLock lock(step.commands.size() > 1);
    {
        ReplayGuard guard(m_replaying);
        for (auto& command : step.commands)
            command->Redo();
    }
    m_undo.push_back(std::move(step));
    return true;
}

CStdStr<wchar_t> UndoManager::GetUndoName() const
{
    return m_undo.empty() ? CStdStr<wchar_t>() : m_undo.back().name;
}

CStdStr<wchar_t> UndoManager::GetRedoName() const
{
    return m_redo.empty() ? CStdStr<wchar_t>() : m_redo.back().name;
}

void UndoManager::Clear()
{
    m_undo.clear();
    m_redo.clear();
    // Groups still open stay open, with nothing recorded in them.
    for (Step& group : m_open)
        group.commands.clear();
}
} // namespace sn

CStdStr<wchar_t> ComplexUndoWithFirstEventName::GetName() const
{
    return m_firstEventName;
}

AutoComplexUndo::AutoComplexUndo(wchar_t const* name, bool) : m_name(name ? name : L"")
{
    if (IUndoMgr::m_instance)
    {
        IUndoMgr::m_instance->BeginGroup(false);
        m_open = true;
    }
}

AutoComplexUndo::~AutoComplexUndo()
{
    // The event is the undo system's once opened, whatever happens to the step.
    std::unique_ptr<IComplexUndoEvent> event(m_event);
    if (!m_open || !IUndoMgr::m_instance)
        return;
    if (auto* first = dynamic_cast<ComplexUndoWithFirstEventName*>(event.get()))
        if (auto* undo = dynamic_cast<sn::UndoManager*>(IUndoMgr::m_instance))
            first->m_firstEventName = undo->OpenGroupName();
    const CStdStr<wchar_t> name = event ? event->GetName() : m_name;
    IUndoMgr::m_instance->EndGroup(name.empty() ? nullptr : name.c_str(), false);
}

void AutoComplexUndo::Open(IComplexUndoEvent* event)
{
    if (event != m_event)
        delete m_event;
    m_event = event;
    if (!m_open && IUndoMgr::m_instance)
    {
        IUndoMgr::m_instance->BeginGroup(false);
        m_open = true;
    }
}
