#pragma once
// CWnd: a window of the portable window system. It has a handle, a parent and children, a
// control id, a style, a position, focus, timers and a message table; messages are sent
// (dispatched at once) or posted (queued by the window system).

#include "platform/MessageMap.h"

#include <string>
#include <vector>

// A device context: here only a handle to whatever draws (see Canvas.h).
class CDC
{
public:
    explicit CDC(HDC hdc = nullptr) : m_hDC(hdc) {}
    HDC GetSafeHdc() const { return m_hDC; }
    HDC m_hDC;
};

class CWnd
{
public:
    CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    // Destroys the window if the owner did not; derived handlers of WM_DESTROY no longer run
    // by then, so owners destroy their windows first.
    virtual ~CWnd();

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }
    // The window of a handle, or null when the handle is stale or unknown.
    static CWnd* FromHandle(HWND hwnd);

    BOOL Create(LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    BOOL CreateEx(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id, void* param = nullptr);
    // WM_DESTROY to the window, then its children are destroyed, then the handle is released
    // and PostNcDestroy runs (which may delete the object).
    BOOL DestroyWindow();

    CWnd* GetParent() const;
    std::vector<CWnd*> GetChildren() const;
    // True for any descendant, as in Win32.
    BOOL IsChild(const CWnd* wnd) const;
    CWnd* GetDlgItem(int id) const;
    int GetDlgCtrlID() const { return static_cast<int>(m_id); }
    int SetDlgCtrlID(int id);

    DWORD GetStyle() const { return m_style; }
    BOOL ModifyStyle(DWORD remove, DWORD add);
    // Returns whether the window was visible before.
    BOOL ShowWindow(int cmdShow);
    // True when the window and all its ancestors have WS_VISIBLE.
    BOOL IsWindowVisible() const;
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;

    void GetClientRect(LPRECT rect) const;
    // In screen coordinates.
    void GetWindowRect(LPRECT rect) const;
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE);
    void ClientToScreen(LPPOINT point) const;
    void ClientToScreen(LPRECT rect) const;
    void ScreenToClient(LPPOINT point) const;
    void ScreenToClient(LPRECT rect) const;

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    UINT_PTR SetTimer(UINT_PTR id, UINT elapse, TIMERPROC proc = nullptr);
    BOOL KillTimer(UINT_PTR id);

    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE);
    void UpdateWindow();
    // How often the window was invalidated since it was created: what a painter would redraw.
    int GetInvalidationCount() const { return m_invalidations; }

    static CWnd* GetFocus();
    // Returns the window that had the focus.
    CWnd* SetFocus();

    void SetWindowText(LPCWSTR text);
    void GetWindowText(std::wstring& text) const;
    std::wstring GetWindowText() const;
    int GetWindowTextLength() const;

    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL PreTranslateMessage(MSG* msg) { return FALSE; }

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;

    // Looks the message up in the table chain; WM_NOTIFY and WM_COMMAND go through their
    // own overridable steps first.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual void PostNcDestroy() {}
    // Called when the window's content must be redrawn; painters hook in here.
    virtual void OnInvalidated(LPCRECT rect) {}

    // Default handlers that derived tables may name.
    void OnDestroy() {}
    BOOL OnEraseBkgnd(CDC* dc) { return FALSE; }
    void OnSize(UINT type, int cx, int cy) {}
    void OnTimer(UINT_PTR id) {}
    void OnContextMenu(CWnd* wnd, CPoint point) {}
    void OnSetFocus(CWnd* oldWnd) {}
    void OnKillFocus(CWnd* newWnd) {}
    void OnKeyDown(UINT vk, UINT repeat, UINT flags) {}

    // The message being dispatched, for handlers that pass it on with Default().
    const MSG* GetCurrentMessage() const { return &m_currentMsg; }
    LRESULT Default();

private:
    BOOL DispatchFromMap(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    void DestroyTree();
    void DetachFromParent();

    HWND m_hParent = nullptr;
    std::vector<HWND> m_children;
    UINT m_id = 0;
    DWORD m_style = 0;
    RECT m_rect{}; // in the parent's client coordinates (screen for top-level windows)
    std::wstring m_text;
    int m_invalidations = 0;
    bool m_destroying = false;
    MSG m_currentMsg{};
};

BOOL IsWindow(HWND hwnd);
LRESULT SendMessage(HWND hwnd, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
BOOL PostMessage(HWND hwnd, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
HWND GetFocus();
HWND SetFocus(HWND hwnd);
HWND GetParent(HWND hwnd);
