#pragma once
// What every creation command holds while it works: the raise of "LockUIUpdate" that keeps the
// views from rebuilding in the middle of it, and the undo manager's group around a new parent.

#include "host/PMTreeNode.h"
#include "host/StdStr.h"

// Raises "LockUIUpdate" by one; Lower() ends the raise early, the destructor ends it if still up.
class UILockRaise
{
public:
    UILockRaise();
    ~UILockRaise() { Lower(); }
    UILockRaise(const UILockRaise&) = delete;
    UILockRaise& operator=(const UILockRaise&) = delete;

    void Lower();

private:
    bool m_raised = false;
};

// Opens a group of the undo manager (when asked to) and closes it under a name.
class UndoManagerGroup
{
public:
    UndoManagerGroup(bool open, const wchar_t* name);
    ~UndoManagerGroup();
    UndoManagerGroup(const UndoManagerGroup&) = delete;
    UndoManagerGroup& operator=(const UndoManagerGroup&) = delete;

private:
    bool m_open = false;
    CStdStr<wchar_t> m_name;
};

// While the host plays back, only nodes of these types may get new children or new parents:
// work units, folders, events, audition and mixing sessions, and queries.
bool IsCreationAllowedInPlayback(PMTreeNode::NodeType type);
