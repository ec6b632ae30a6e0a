#include "platform/Wnd.h"

#include "platform/WindowSystem.h"

#include <algorithm>

namespace
{
WindowSystem& Sys()
{
    return WindowSystem::Get();
}
} // namespace

bool AFX_MSGMAP_ENTRY::Matches(UINT msg, WPARAM wParam, LPARAM lParam) const
{
    switch (kind)
    {
    case Message:
        return msg == message;
    case Registered:
        return registered && *registered != 0 && msg == *registered;
    case Notify:
    {
        if (msg != WM_NOTIFY || !lParam)
            return false;
        const auto* hdr = reinterpret_cast<const NMHDR*>(lParam);
        return hdr->code == code && hdr->idFrom >= idFirst && hdr->idFrom <= idLast;
    }
    case Command:
        return msg == WM_COMMAND && HIWORD(wParam) == code && LOWORD(wParam) >= idFirst &&
               LOWORD(wParam) <= idLast;
    case End:
        break;
    }
    return false;
}

CWnd::CWnd() = default;

CWnd::~CWnd()
{
    if (m_hWnd)
        DestroyWindow();
    else
        DetachFromParent();
}

CWnd* CWnd::FromHandle(HWND hwnd)
{
    return hwnd ? Sys().Lookup(hwnd) : nullptr;
}

BOOL CWnd::Create(LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CreateEx(0, className, windowName, style, rect, parent, id);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, void* param)
{
    if (m_hWnd || (parent && !parent->m_hWnd))
        return FALSE;
    m_hWnd = Sys().AddWindow(this);
    m_hParent = parent ? parent->m_hWnd : nullptr;
    if (parent)
        parent->m_children.push_back(m_hWnd);
    m_id = id;
    m_style = style;
    m_rect = rect;
    m_text = windowName ? windowName : L"";
    m_invalidations = 0;
    SendMessage(WM_CREATE);
    if (m_hWnd)
        SendMessage(WM_SIZE, SIZE_RESTORED,
                    MAKELPARAM(static_cast<WORD>(rect.right - rect.left), static_cast<WORD>(rect.bottom - rect.top)));
    return m_hWnd != nullptr;
}

BOOL CWnd::DestroyWindow()
{
    if (!m_hWnd || m_destroying)
        return FALSE;
    DestroyTree();
    return TRUE;
}

void CWnd::DestroyTree()
{
    m_destroying = true;
    SendMessage(WM_DESTROY);
    // Children may be destroyed (and deleted) while we walk, so work from a copy of handles.
    const std::vector<HWND> children = m_children;
    for (HWND child : children)
        if (CWnd* wnd = FromHandle(child))
            wnd->DestroyWindow();
    m_children.clear();
    DetachFromParent();
    const HWND hwnd = m_hWnd;
    Sys().RemoveWindow(hwnd);
    m_hWnd = nullptr;
    m_destroying = false;
    PostNcDestroy(); // may delete this
}

void CWnd::DetachFromParent()
{
    if (CWnd* parent = FromHandle(m_hParent))
        std::erase(parent->m_children, m_hWnd);
    m_hParent = nullptr;
}

CWnd* CWnd::GetParent() const
{
    return FromHandle(m_hParent);
}

std::vector<CWnd*> CWnd::GetChildren() const
{
    std::vector<CWnd*> result;
    for (HWND child : m_children)
        if (CWnd* wnd = FromHandle(child))
            result.push_back(wnd);
    return result;
}

BOOL CWnd::IsChild(const CWnd* wnd) const
{
    if (!wnd || !m_hWnd)
        return FALSE;
    for (const CWnd* up = wnd->GetParent(); up; up = up->GetParent())
        if (up == this)
            return TRUE;
    return FALSE;
}

CWnd* CWnd::GetDlgItem(int id) const
{
    for (HWND child : m_children)
        if (CWnd* wnd = FromHandle(child); wnd && wnd->GetDlgCtrlID() == id)
            return wnd;
    return nullptr;
}

int CWnd::SetDlgCtrlID(int id)
{
    const int old = static_cast<int>(m_id);
    m_id = static_cast<UINT>(id);
    return old;
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add)
{
    const DWORD style = (m_style & ~remove) | add;
    if (style == m_style)
        return FALSE;
    m_style = style;
    return TRUE;
}

BOOL CWnd::ShowWindow(int cmdShow)
{
    const BOOL wasVisible = (m_style & WS_VISIBLE) != 0;
    const bool show = cmdShow != SW_HIDE;
    if (show != static_cast<bool>(wasVisible))
    {
        ModifyStyle(show ? 0 : WS_VISIBLE, show ? WS_VISIBLE : 0);
        SendMessage(WM_SHOWWINDOW, show ? TRUE : FALSE);
        if (CWnd* parent = GetParent())
            parent->Invalidate();
        else
            Invalidate();
    }
    return wasVisible;
}

BOOL CWnd::IsWindowVisible() const
{
    if (!m_hWnd)
        return FALSE;
    for (const CWnd* wnd = this; wnd; wnd = wnd->GetParent())
        if (!(wnd->m_style & WS_VISIBLE))
            return FALSE;
    return TRUE;
}

BOOL CWnd::EnableWindow(BOOL enable)
{
    const BOOL wasDisabled = (m_style & WS_DISABLED) != 0;
    if (static_cast<bool>(enable) == static_cast<bool>(wasDisabled))
    {
        ModifyStyle(enable ? WS_DISABLED : 0, enable ? 0 : WS_DISABLED);
        SendMessage(WM_ENABLE, enable ? TRUE : FALSE);
        Invalidate();
    }
    return wasDisabled;
}

BOOL CWnd::IsWindowEnabled() const
{
    return m_hWnd && !(m_style & WS_DISABLED);
}

void CWnd::GetClientRect(LPRECT rect) const
{
    *rect = RECT{0, 0, m_rect.right - m_rect.left, m_rect.bottom - m_rect.top};
}

void CWnd::GetWindowRect(LPRECT rect) const
{
    CRect r(0, 0, m_rect.right - m_rect.left, m_rect.bottom - m_rect.top);
    ClientToScreen(static_cast<LPRECT>(r));
    *rect = r;
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL repaint)
{
    const bool resized = width != m_rect.right - m_rect.left || height != m_rect.bottom - m_rect.top;
    m_rect = RECT{x, y, x + width, y + height};
    if (resized)
        SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(static_cast<WORD>(width), static_cast<WORD>(height)));
    if (repaint)
        Invalidate();
}

void CWnd::MoveWindow(LPCRECT rect, BOOL repaint)
{
    MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}

void CWnd::ClientToScreen(LPPOINT point) const
{
    for (const CWnd* wnd = this; wnd; wnd = wnd->GetParent())
    {
        point->x += wnd->m_rect.left;
        point->y += wnd->m_rect.top;
    }
}

void CWnd::ClientToScreen(LPRECT rect) const
{
    POINT origin{};
    ClientToScreen(&origin);
    rect->left += origin.x;
    rect->right += origin.x;
    rect->top += origin.y;
    rect->bottom += origin.y;
}

void CWnd::ScreenToClient(LPPOINT point) const
{
    POINT origin{};
    ClientToScreen(&origin);
    point->x -= origin.x;
    point->y -= origin.y;
}

void CWnd::ScreenToClient(LPRECT rect) const
{
    POINT origin{};
    ClientToScreen(&origin);
    rect->left -= origin.x;
    rect->right -= origin.x;
    rect->top -= origin.y;
    rect->bottom -= origin.y;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_hWnd)
        return 0;
    WindowSystem::HandlerScope handling;
    return WindowProc(message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_hWnd)
        return FALSE;
    Sys().Post(m_hWnd, message, wParam, lParam);
    return TRUE;
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT elapse, TIMERPROC proc)
{
    return m_hWnd ? Sys().SetTimer(m_hWnd, id, elapse, proc) : 0;
}

BOOL CWnd::KillTimer(UINT_PTR id)
{
    return m_hWnd ? Sys().KillTimer(m_hWnd, id) : FALSE;
}

void CWnd::Invalidate(BOOL erase)
{
    InvalidateRect(nullptr, erase);
}

void CWnd::InvalidateRect(LPCRECT rect, BOOL erase)
{
    if (!m_hWnd)
        return;
    ++m_invalidations;
    OnInvalidated(rect);
    Sys().NotifyInvalidated(m_hWnd);
}

void CWnd::UpdateWindow()
{
}

CWnd* CWnd::GetFocus()
{
    return FromHandle(Sys().GetFocus());
}

CWnd* CWnd::SetFocus()
{
    return FromHandle(Sys().SetFocus(m_hWnd));
}

void CWnd::SetWindowText(LPCWSTR text)
{
    SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text ? text : L""));
}

void CWnd::GetWindowText(std::wstring& text) const
{
    text = m_text;
}

std::wstring CWnd::GetWindowText() const
{
    return m_text;
}

int CWnd::GetWindowTextLength() const
{
    return static_cast<int>(m_text.size());
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const MSG saved = m_currentMsg;
    m_currentMsg = MSG{m_hWnd, message, wParam, lParam, Sys().Now(), Sys().GetCursorPos()};
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result))
        result = DefWindowProc(message, wParam, lParam);
    m_currentMsg = saved;
    return result;
}

LRESULT CWnd::Default()
{
    return DefWindowProc(m_currentMsg.message, m_currentMsg.wParam, m_currentMsg.lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_SETTEXT:
        m_text = reinterpret_cast<LPCWSTR>(lParam);
        Invalidate();
        return TRUE;
    case WM_GETTEXT:
    {
        auto* buffer = reinterpret_cast<wchar_t*>(lParam);
        const size_t capacity = wParam;
        if (!buffer || capacity == 0)
            return 0;
        const size_t count = std::min(capacity - 1, m_text.size());
        std::copy_n(m_text.data(), count, buffer);
        buffer[count] = L'\0';
        return static_cast<LRESULT>(count);
    }
    case WM_CONTEXTMENU:
        // A child that does not handle the context menu lets its parent offer one.
        if ((m_style & WS_CHILD) && GetParent())
            return GetParent()->SendMessage(message, wParam, lParam);
        return 0;
    default:
        return 0;
    }
}

const AFX_MSGMAP* CWnd::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {AFX_MSGMAP_ENTRY{}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CWnd::GetMessageMap() const
{
    return GetThisMessageMap();
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_NOTIFY)
        return OnNotify(wParam, lParam, result);
    if (message == WM_COMMAND)
        return OnCommand(wParam, lParam);
    return DispatchFromMap(message, wParam, lParam, result);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    *result = 0;
    return DispatchFromMap(WM_NOTIFY, wParam, lParam, result);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    LRESULT ignored = 0;
    return DispatchFromMap(WM_COMMAND, wParam, lParam, &ignored);
}

BOOL CWnd::DispatchFromMap(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    for (const AFX_MSGMAP* map = GetMessageMap(); map;
         map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->kind != AFX_MSGMAP_ENTRY::End; ++entry)
        {
            if (entry->Matches(message, wParam, lParam))
            {
                entry->thunk(this, wParam, lParam, result);
                return TRUE;
            }
        }
    }
    return FALSE;
}

BOOL IsWindow(HWND hwnd)
{
    return CWnd::FromHandle(hwnd) != nullptr;
}

LRESULT SendMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    CWnd* wnd = CWnd::FromHandle(hwnd);
    return wnd ? wnd->SendMessage(message, wParam, lParam) : 0;
}

BOOL PostMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!CWnd::FromHandle(hwnd))
        return FALSE;
    WindowSystem::Get().Post(hwnd, message, wParam, lParam);
    return TRUE;
}

HWND GetFocus()
{
    return WindowSystem::Get().GetFocus();
}

HWND SetFocus(HWND hwnd)
{
    return WindowSystem::Get().SetFocus(hwnd);
}

HWND GetParent(HWND hwnd)
{
    CWnd* wnd = CWnd::FromHandle(hwnd);
    CWnd* parent = wnd ? wnd->GetParent() : nullptr;
    return parent ? parent->m_hWnd : nullptr;
}
