#pragma once
// The host's undo system: every change of the project is one undoable step, grouped.

#include "host/StdStr.h"

class IComplexUndoEvent
{
public:
    virtual ~IComplexUndoEvent() = default;
    virtual CStdStr<wchar_t> GetName() const = 0;
};

// A compound step named after its first sub-event: the undo system fills the name when the
// step closes.
class ComplexUndoWithFirstEventName : public IComplexUndoEvent
{
public:
    CStdStr<wchar_t> GetName() const override;
    CStdStr<wchar_t> m_firstEventName;
};

class IUndoMgr
{
public:
    static IUndoMgr* m_instance; // null outside a running host

    // Opens a group; groups nest, and only the outermost becomes one undo step.
    virtual void BeginGroup(bool reserved) = 0;
    // Closes the innermost group; an empty group leaves no step.
    virtual void EndGroup(const wchar_t* name, bool reserved) = 0;
    virtual bool CanUndo() const = 0;
    virtual bool CanRedo() const = 0;
    virtual bool Undo() = 0;
    virtual bool Redo() = 0;
    virtual CStdStr<wchar_t> GetUndoName() const = 0;
    virtual CStdStr<wchar_t> GetRedoName() const = 0;

protected:
    virtual ~IUndoMgr() = default;
};

// Scoped compound undo step: opened by the constructor (or Open), closed by the destructor.
class AutoComplexUndo
{
public:
    AutoComplexUndo() = default;
    AutoComplexUndo(wchar_t const* name, bool reserved);
    ~AutoComplexUndo();
    AutoComplexUndo(const AutoComplexUndo&) = delete;
    AutoComplexUndo& operator=(const AutoComplexUndo&) = delete;

    // Opens the step on a compound event made with new, which names it when it closes; the undo
    // system owns the event from then on.
    void Open(IComplexUndoEvent* event);

private:
    bool m_open = false;
    CStdStr<wchar_t> m_name;
    IComplexUndoEvent* m_event = nullptr;
};
