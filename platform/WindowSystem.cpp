#include "platform/WindowSystem.h"

#include "platform/WinConstants.h"
#include "platform/Wnd.h"

#include <algorithm>
#include <map>
#include <mutex>

WindowSystem& WindowSystem::Get()
{
    static WindowSystem instance;
    return instance;
}

HWND WindowSystem::AddWindow(CWnd* wnd)
{
    m_nextHandle += 4;
    m_windows.emplace(m_nextHandle, wnd);
    return reinterpret_cast<HWND>(m_nextHandle);
}

void WindowSystem::RemoveWindow(HWND hwnd)
{
    m_windows.erase(reinterpret_cast<std::uintptr_t>(hwnd));
    KillWindowTimers(hwnd);
    DropFocus(hwnd);
}

CWnd* WindowSystem::Lookup(HWND hwnd) const
{
    auto it = m_windows.find(reinterpret_cast<std::uintptr_t>(hwnd));
    return it == m_windows.end() ? nullptr : it->second;
}

void WindowSystem::Post(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG msg;
    msg.hwnd = hwnd;
    msg.message = message;
    msg.wParam = wParam;
    msg.lParam = lParam;
    msg.time = Now();
    msg.pt = m_cursor;
    m_queue.push_back(msg);
    if (m_driver)
        m_driver->OnWorkQueued();
}

size_t WindowSystem::RunUntilIdle()
{
    size_t delivered = 0;
    do
    {
        while (!m_queue.empty())
        {
            const MSG msg = m_queue.front();
            m_queue.pop_front();
            if (CWnd* wnd = Lookup(msg.hwnd))
            {
                HandlerScope handling;
                wnd->WindowProc(msg.message, msg.wParam, msg.lParam);
                ++delivered;
            }
        }
        // Inside a handler (a modal loop, say) whoever runs it may still hold what the work frees.
        if (m_handlers > 0)
            break;
        std::vector<std::function<void()>> work;
        work.swap(m_idleWork);
        for (auto& step : work)
            step();
    } while (!m_queue.empty() || !m_idleWork.empty());
    return delivered;
}

void WindowSystem::DeferUntilIdle(std::function<void()> work)
{
    m_idleWork.push_back(std::move(work));
    if (m_driver)
        m_driver->OnWorkQueued();
}

WindowSystem::Timer* WindowSystem::FindTimer(HWND hwnd, UINT_PTR id)
{
    auto it = std::find_if(m_timers.begin(), m_timers.end(),
                           [&](const Timer& t) { return t.hwnd == hwnd && t.id == id; });
    return it == m_timers.end() ? nullptr : &*it;
}

UINT_PTR WindowSystem::SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc)
{
    if (hwnd && !Lookup(hwnd))
        return 0;
    if (!hwnd && (id == 0 || !FindTimer(nullptr, id)))
        id = ++m_nextThreadTimer;
    // A zero period would fire forever without the clock moving.
    const UINT period = std::max<UINT>(elapse, 1);
    if (Timer* existing = FindTimer(hwnd, id))
    {
        existing->period = period;
        existing->due = Now() + period;
        existing->proc = proc;
        existing->order = ++m_timerOrder;
    }
    else
    {
        m_timers.push_back(Timer{hwnd, id, period, Now() + period, proc, ++m_timerOrder});
    }
    TimersChanged();
    return id ? id : 1;
}

BOOL WindowSystem::KillTimer(HWND hwnd, UINT_PTR id)
{
    auto it = std::find_if(m_timers.begin(), m_timers.end(),
                           [&](const Timer& t) { return t.hwnd == hwnd && t.id == id; });
    if (it == m_timers.end())
        return FALSE;
    m_timers.erase(it);
    TimersChanged();
    return TRUE;
}

void WindowSystem::KillWindowTimers(HWND hwnd)
{
    const auto before = m_timers.size();
    std::erase_if(m_timers, [&](const Timer& t) { return t.hwnd == hwnd; });
    if (m_timers.size() != before)
        TimersChanged();
}

bool WindowSystem::HasTimer(HWND hwnd, UINT_PTR id) const
{
    return std::any_of(m_timers.begin(), m_timers.end(),
                       [&](const Timer& t) { return t.hwnd == hwnd && t.id == id; });
}

const WindowSystem::Timer* WindowSystem::EarliestDue(DWORD limit) const
{
    const Timer* best = nullptr;
    for (const Timer& t : m_timers)
    {
        if (t.due > limit)
            continue;
        if (!best || t.due < best->due || (t.due == best->due && t.order < best->order))
            best = &t;
    }
    return best;
}

std::optional<DWORD> WindowSystem::NextTimerDue() const
{
    const Timer* next = EarliestDue(~DWORD{0});
    return next ? std::optional<DWORD>(next->due) : std::nullopt;
}

void WindowSystem::FireTimer(const Timer& fired)
{
    // Reschedule before delivery, so that the handler may kill or re-arm its own timer.
    const Timer timer = fired;
    if (Timer* live = FindTimer(timer.hwnd, timer.id))
    {
        live->due = timer.due + timer.period;
        live->order = ++m_timerOrder;
    }
    TimersChanged();
    if (timer.proc)
        timer.proc(timer.hwnd, WM_TIMER, timer.id, timer.due);
    else if (CWnd* wnd = Lookup(timer.hwnd))
        wnd->WindowProc(WM_TIMER, timer.id, 0);
    RunUntilIdle();
}

void WindowSystem::FireDueTimers()
{
    RunUntilIdle();
    const DWORD now = Now();
    // A timer is due at most once per call even if its period is shorter than the delay.
    std::vector<std::pair<HWND, UINT_PTR>> fired;
    while (const Timer* timer = EarliestDue(now))
    {
        const auto key = std::make_pair(timer->hwnd, timer->id);
        if (std::find(fired.begin(), fired.end(), key) != fired.end())
            break;
        fired.push_back(key);
        FireTimer(*timer);
    }
}

void WindowSystem::Advance(DWORD milliseconds)
{
    RunUntilIdle();
    const DWORD target = m_clock + milliseconds;
    while (const Timer* timer = EarliestDue(target))
    {
        m_clock = std::max(m_clock, timer->due);
        FireTimer(*timer);
    }
    m_clock = target;
}

DWORD WindowSystem::Now() const
{
    return m_driver ? m_driver->Now() : m_clock;
}

void WindowSystem::TimersChanged()
{
    if (m_driver)
        m_driver->OnNextTimerChanged(NextTimerDue());
}

void WindowSystem::SetKeyDown(int vk, bool down)
{
    if (vk >= 0 && vk < 256)
        m_keys[vk] = down;
}

bool WindowSystem::IsKeyDown(int vk) const
{
    return vk >= 0 && vk < 256 && m_keys[vk];
}

HWND WindowSystem::SetFocus(HWND hwnd)
{
    if (hwnd && !Lookup(hwnd))
        return nullptr;
    const HWND old = m_focus;
    if (old == hwnd)
        return old;
    m_focus = hwnd;
    if (CWnd* previous = Lookup(old))
        previous->SendMessage(WM_KILLFOCUS, reinterpret_cast<WPARAM>(hwnd));
    if (CWnd* next = Lookup(hwnd); next && m_focus == hwnd)
        next->SendMessage(WM_SETFOCUS, reinterpret_cast<WPARAM>(old));
    if (m_focusHook && m_focus == hwnd)
    {
        const std::function<void(HWND)> hook = m_focusHook; // the hook may replace itself
        hook(hwnd);
    }
    return old;
}

void WindowSystem::DropFocus(HWND hwnd)
{
    if (m_focus == hwnd)
        m_focus = nullptr;
}

void WindowSystem::SetDriver(IWindowSystemDriver* driver)
{
    m_driver = driver;
    TimersChanged();
}

void WindowSystem::NotifyInvalidated(HWND hwnd)
{
    if (m_driver)
        m_driver->OnWindowInvalidated(hwnd);
}

void WindowSystem::BeginWaitCursor()
{
    if (m_waitCursors++ == 0 && m_driver)
        m_driver->OnWaitCursor(true);
}

void WindowSystem::EndWaitCursor()
{
    if (m_waitCursors > 0 && --m_waitCursors == 0 && m_driver)
        m_driver->OnWaitCursor(false);
}

void WindowSystem::Reset()
{
    m_queue.clear();
    // What waited for idle is done, not dropped: it frees memory.
    m_handlers = 0;
    std::vector<std::function<void()>> work;
    work.swap(m_idleWork);
    for (auto& step : work)
        step();
    m_timers.clear();
    std::fill(std::begin(m_keys), std::end(m_keys), false);
    m_cursor = POINT{};
    m_doubleClickTime = 500;
    m_waitCursors = 0;
    m_focus = nullptr;
    m_clock = 0;
    m_driver = nullptr;
}

namespace
{
struct AtomTable
{
    std::mutex lock;
    std::map<std::wstring, UINT> numbers;
    UINT next = WM_REGISTERED_FIRST;
};

AtomTable& Atoms()
{
    // Created on first use, so that any module's static initialisation may register.
    static AtomTable* table = new AtomTable;
    return *table;
}
} // namespace

UINT RegisterWindowMessage(LPCWSTR text)
{
    if (!text || !*text)
        return 0;
    AtomTable& atoms = Atoms();
    std::lock_guard guard(atoms.lock);
    auto [it, added] = atoms.numbers.emplace(text, atoms.next);
    if (added)
        ++atoms.next;
    return it->second;
}

UINT RegisterWindowMessage(const char* text)
{
    if (!text)
        return 0;
    // Registered names are ASCII identifiers; widen them byte for byte.
    std::wstring wide(text, text + std::char_traits<char>::length(text));
    return RegisterWindowMessage(wide.c_str());
}

UINT RegisterClipboardFormat(LPCWSTR name)
{
    return RegisterWindowMessage(name);
}

SHORT GetKeyState(int vk)
{
    return WindowSystem::Get().IsKeyDown(vk) ? static_cast<SHORT>(0x8000) : 0;
}

SHORT GetAsyncKeyState(int vk)
{
    return GetKeyState(vk);
}

BOOL GetCursorPos(LPPOINT point)
{
    if (!point)
        return FALSE;
    *point = WindowSystem::Get().GetCursorPos();
    return TRUE;
}

DWORD GetTickCount()
{
    return WindowSystem::Get().Now();
}

UINT GetDoubleClickTime()
{
    return WindowSystem::Get().GetDoubleClickTime();
}

UINT_PTR SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc)
{
    return WindowSystem::Get().SetTimer(hwnd, id, elapse, proc);
}

BOOL KillTimer(HWND hwnd, UINT_PTR id)
{
    return WindowSystem::Get().KillTimer(hwnd, id);
}
