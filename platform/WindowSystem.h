#pragma once
// The window system: one per process, used from the UI thread only. It owns the window
// handles, the posted-message queue, window and thread timers on a clock, the keyboard and
// mouse-button state, the cursor position and the focus. Registered message numbers live
// beside it, shared by every window and every module of the process.
//
// Two drivers run it. The manual one is the window system itself: tests and headless runs
// call RunUntilIdle() and Advance(ms), so a 200 ms timer fires when the caller says 200 ms
// have passed. An interactive driver (the desktop application's event loop) implements
// IWindowSystemDriver: it supplies the clock, hears when work is queued or the earliest
// timer moves, and calls RunUntilIdle() and FireDueTimers() from its own loop.

#include "platform/WinTypes.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

class CWnd;

class IWindowSystemDriver
{
public:
    virtual ~IWindowSystemDriver() = default;
    virtual DWORD Now() const = 0;
    // A message was posted: the driver should call RunUntilIdle() soon.
    virtual void OnWorkQueued() = 0;
    // The earliest timer deadline changed (nothing when no timer is running).
    virtual void OnNextTimerChanged(std::optional<DWORD> due) = 0;
    // A window asked to be repainted.
    virtual void OnWindowInvalidated(HWND hwnd) {}
    // The wait cursor is to be shown (true) or the usual one back (false).
    virtual void OnWaitCursor(bool shown) {}
};

class WindowSystem
{
public:
    static WindowSystem& Get();

    // Handles. A handle is never reused, so a stale one is always detected.
    HWND AddWindow(CWnd* wnd);
    void RemoveWindow(HWND hwnd);
    CWnd* Lookup(HWND hwnd) const;
    size_t WindowCount() const { return m_windows.size(); }

    // Posted messages, in the order they were posted. A message whose window was destroyed
    // meanwhile is dropped.
    void Post(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
    size_t PendingMessages() const { return m_queue.size(); }
    // Dispatches posted messages until the queue is empty, then runs the idle work when no
    // message is being handled; returns how many messages were delivered.
    size_t RunUntilIdle();
    // Work for when the posted messages are all delivered and no handler is running, as a
    // framework frees its temporary objects when idle: what a handler may still hold (nodes a
    // refresh replaced) is freed here.
    void DeferUntilIdle(std::function<void()> work);
    // Counts a message being handled while it lives (sent messages and posted ones).
    class HandlerScope
    {
    public:
        HandlerScope() { ++Get().m_handlers; }
        ~HandlerScope() { --Get().m_handlers; }
        HandlerScope(HandlerScope const&) = delete;
        HandlerScope& operator=(HandlerScope const&) = delete;
    };

    // Timers. A window timer delivers WM_TIMER to its window (or calls its procedure); a
    // thread timer (no window) calls its procedure. Setting an existing timer restarts it.
    UINT_PTR SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc);
    BOOL KillTimer(HWND hwnd, UINT_PTR id);
    void KillWindowTimers(HWND hwnd);
    bool HasTimer(HWND hwnd, UINT_PTR id) const;
    std::optional<DWORD> NextTimerDue() const;
    // Fires every timer due at the current time, earliest first, running the queue after each.
    void FireDueTimers();
    // Manual driver: moves the virtual clock forward, firing the timers that fall due on the
    // way at their own times.
    void Advance(DWORD milliseconds);
    DWORD Now() const;

    // Input state, set by whoever feeds user input.
    void SetKeyDown(int vk, bool down);
    bool IsKeyDown(int vk) const;
    void SetCursorPos(POINT screen) { m_cursor = screen; }
    POINT GetCursorPos() const { return m_cursor; }
    // The longest time between the two clicks of a double click, in milliseconds.
    void SetDoubleClickTime(UINT milliseconds) { m_doubleClickTime = milliseconds; }
    UINT GetDoubleClickTime() const { return m_doubleClickTime; }

    // The wait cursor, shown from the first BeginWaitCursor until the last matching
    // EndWaitCursor: busy work nested in busy work shows it once.
    void BeginWaitCursor();
    void EndWaitCursor();
    bool IsWaitCursorShown() const { return m_waitCursors > 0; }

    HWND GetFocus() const { return m_focus; }
    // Moves the focus, sending WM_KILLFOCUS and WM_SETFOCUS; returns the previous focus.
    HWND SetFocus(HWND hwnd);
    // Forgets the focus without messages (its window is going away).
    void DropFocus(HWND hwnd);
    // Called after every move of the focus with the window that has it now (null: none), as a
    // host's frame hooks focus changes to follow its active view. One hook; null removes it.
    void SetFocusHook(std::function<void(HWND)> hook) { m_focusHook = std::move(hook); }

    void SetDriver(IWindowSystemDriver* driver);
    IWindowSystemDriver* GetDriver() const { return m_driver; }
    void NotifyInvalidated(HWND hwnd);

    // Back to a fresh state for the next test: queue, timers, keys, cursor, focus and clock.
    // Windows still alive stay registered; registered message numbers are kept.
    void Reset();

private:
    struct Timer
    {
        HWND hwnd;
        UINT_PTR id;
        UINT period;
        DWORD due;
        TIMERPROC proc;
        unsigned long long order; // ties at the same due time fire in the order they were set
    };

    WindowSystem() = default;
    Timer* FindTimer(HWND hwnd, UINT_PTR id);
    const Timer* EarliestDue(DWORD limit) const;
    void FireTimer(const Timer& timer);
    void TimersChanged();

    std::unordered_map<std::uintptr_t, CWnd*> m_windows;
    std::uintptr_t m_nextHandle = 0x10000;
    std::deque<MSG> m_queue;
    std::vector<Timer> m_timers;
    unsigned long long m_timerOrder = 0;
    UINT_PTR m_nextThreadTimer = 0x7FFF0000;
    DWORD m_clock = 0;
    bool m_keys[256] = {};
    POINT m_cursor{};
    UINT m_doubleClickTime = 500;
    int m_waitCursors = 0;
    HWND m_focus = nullptr;
    std::function<void(HWND)> m_focusHook;
    IWindowSystemDriver* m_driver = nullptr;
    std::vector<std::function<void()>> m_idleWork;
    int m_handlers = 0;
};

// One number per text, from 0xC000, shared by every window and module; thread-safe and
// usable during the static initialisation of any shared library.
UINT RegisterWindowMessage(LPCWSTR text);
UINT RegisterWindowMessage(const char* text);
// Clipboard formats share the same numbering, as in Win32.
UINT RegisterClipboardFormat(LPCWSTR name);

// Negative when the key or mouse button is down.
SHORT GetKeyState(int vk);
SHORT GetAsyncKeyState(int vk);
BOOL GetCursorPos(LPPOINT point);
DWORD GetTickCount();
UINT GetDoubleClickTime();

UINT_PTR SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc);
BOOL KillTimer(HWND hwnd, UINT_PTR id);
