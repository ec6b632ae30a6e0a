#pragma once
// Declarative message tables. Each window class lists the messages it handles; the tables
// chain to the base class's table, and dispatch takes the first entry that matches, most
// derived class first. Each entry carries a small thunk that unpacks the message and calls
// the member handler with its own signature, so no member pointer is ever cast.

#include "platform/WinConstants.h"

class CWnd;

struct AFX_MSGMAP_ENTRY
{
    enum Kind : unsigned char
    {
        End,
        Message,    // a fixed message number
        Registered, // a number known at run time, read through a pointer at dispatch
        Notify,     // WM_NOTIFY by notification code and control-id range
        Command,    // WM_COMMAND by notification code and control-id range
    };

    using Thunk = void (*)(CWnd* wnd, WPARAM wParam, LPARAM lParam, LRESULT* result);

    Kind kind = End;
    UINT message = 0;
    UINT code = 0;
    UINT idFirst = 0;
    UINT idLast = 0;
    const UINT* registered = nullptr;
    Thunk thunk = nullptr;

    bool Matches(UINT msg, WPARAM wParam, LPARAM lParam) const;
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                                                                                  \
protected:                                                                                                     \
    static const AFX_MSGMAP* GetThisMessageMap();                                                              \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                 \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); }                          \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                            \
    {                                                                                                          \
        using ThisClass [[maybe_unused]] = theClass;                                                           \
        using TheBaseClass = baseClass;                                                                        \
        static const AFX_MSGMAP_ENTRY messageEntries[] = {

#define END_MESSAGE_MAP()                                                                                      \
    AFX_MSGMAP_ENTRY{}                                                                                         \
    }                                                                                                          \
    ;                                                                                                          \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, messageEntries};                   \
    return &messageMap;                                                                                        \
    }

#define AFX_THIS(w) static_cast<ThisClass*>(w)

// LRESULT Handler(WPARAM, LPARAM)
#define ON_MESSAGE(msg, memberFxn)                                                                             \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Message, (msg), 0, 0, 0, nullptr,                                       \
                     [](CWnd* w, WPARAM wp, LPARAM lp, LRESULT* r) { *r = (AFX_THIS(w)->*(memberFxn))(wp, lp); }},

// LRESULT Handler(WPARAM, LPARAM), for a number obtained from RegisterWindowMessage.
#define ON_REGISTERED_MESSAGE(registeredVar, memberFxn)                                                        \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Registered, 0, 0, 0, 0, &(registeredVar),                               \
                     [](CWnd* w, WPARAM wp, LPARAM lp, LRESULT* r) { *r = (AFX_THIS(w)->*(memberFxn))(wp, lp); }},

// void Handler(NMHDR*, LRESULT*)
#define ON_NOTIFY(notifyCode, id, memberFxn)                                                                   \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Notify, WM_NOTIFY, static_cast<UINT>(notifyCode), static_cast<UINT>(id), \
                     static_cast<UINT>(id), nullptr, [](CWnd* w, WPARAM, LPARAM lp, LRESULT* r) {              \
                         (AFX_THIS(w)->*(memberFxn))(reinterpret_cast<NMHDR*>(lp), r);                         \
                     }},

// void Handler(UINT id, NMHDR*, LRESULT*)
#define ON_NOTIFY_RANGE(notifyCode, idFirst, idLast, memberFxn)                                                \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Notify, WM_NOTIFY, static_cast<UINT>(notifyCode),                        \
                     static_cast<UINT>(idFirst), static_cast<UINT>(idLast), nullptr,                           \
                     [](CWnd* w, WPARAM, LPARAM lp, LRESULT* r) {                                              \
                         auto* hdr = reinterpret_cast<NMHDR*>(lp);                                             \
                         (AFX_THIS(w)->*(memberFxn))(static_cast<UINT>(hdr->idFrom), hdr, r);                  \
                     }},

// void Handler()
#define ON_CONTROL(notifyCode, id, memberFxn)                                                                  \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Command, WM_COMMAND, static_cast<UINT>(notifyCode),                      \
                     static_cast<UINT>(id), static_cast<UINT>(id), nullptr,                                    \
                     [](CWnd* w, WPARAM, LPARAM, LRESULT*) { (AFX_THIS(w)->*(memberFxn))(); }},
#define ON_COMMAND(id, memberFxn) ON_CONTROL(0, id, memberFxn)
#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)

// void Handler(UINT id)
#define ON_CONTROL_RANGE(notifyCode, idFirst, idLast, memberFxn)                                               \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Command, WM_COMMAND, static_cast<UINT>(notifyCode),                      \
                     static_cast<UINT>(idFirst), static_cast<UINT>(idLast), nullptr,                           \
                     [](CWnd* w, WPARAM wp, LPARAM, LRESULT*) { (AFX_THIS(w)->*(memberFxn))(LOWORD(wp)); }},
#define ON_COMMAND_RANGE(idFirst, idLast, memberFxn) ON_CONTROL_RANGE(0, idFirst, idLast, memberFxn)

#define AFX_ON_WM(msg, body)                                                                                   \
    AFX_MSGMAP_ENTRY{AFX_MSGMAP_ENTRY::Message, (msg), 0, 0, 0, nullptr,                                       \
                     [](CWnd* w, [[maybe_unused]] WPARAM wp, [[maybe_unused]] LPARAM lp,                        \
                        [[maybe_unused]] LRESULT* r) { body; }},

// void OnDestroy()
#define ON_WM_DESTROY() AFX_ON_WM(WM_DESTROY, AFX_THIS(w)->OnDestroy())
// void OnTimer(UINT_PTR id)
#define ON_WM_TIMER() AFX_ON_WM(WM_TIMER, AFX_THIS(w)->OnTimer(static_cast<UINT_PTR>(wp)))
// void OnSize(UINT type, int cx, int cy)
#define ON_WM_SIZE() AFX_ON_WM(WM_SIZE, AFX_THIS(w)->OnSize(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)))
// void OnContextMenu(CWnd* wnd, CPoint screenPoint)
#define ON_WM_CONTEXTMENU()                                                                                    \
    AFX_ON_WM(WM_CONTEXTMENU, AFX_THIS(w)->OnContextMenu(CWnd::FromHandle(reinterpret_cast<HWND>(wp)),          \
                                                         CPoint(static_cast<SHORT>(LOWORD(lp)),               \
                                                                static_cast<SHORT>(HIWORD(lp)))))
// BOOL OnEraseBkgnd(CDC* dc); WPARAM carries the HDC.
#define ON_WM_ERASEBKGND()                                                                                     \
    AFX_ON_WM(WM_ERASEBKGND, CDC dc(reinterpret_cast<HDC>(wp)); *r = AFX_THIS(w)->OnEraseBkgnd(&dc))
// void OnSetFocus(CWnd* oldWnd) / void OnKillFocus(CWnd* newWnd)
#define ON_WM_SETFOCUS() AFX_ON_WM(WM_SETFOCUS, AFX_THIS(w)->OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wp))))
#define ON_WM_KILLFOCUS()                                                                                      \
    AFX_ON_WM(WM_KILLFOCUS, AFX_THIS(w)->OnKillFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wp))))
// void OnKeyDown(UINT vk, UINT repeat, UINT flags)
#define ON_WM_KEYDOWN()                                                                                        \
    AFX_ON_WM(WM_KEYDOWN, AFX_THIS(w)->OnKeyDown(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)))
