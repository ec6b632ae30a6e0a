#pragma once
// The host's message boxes. They go through the installed dialog service; with none installed
// they show nothing and answer 0, which no caller takes for a yes.

#include "platform/WinConstants.h"

namespace CXMessageBoxDefs
{
// Style bit: offer a "Don't ask me again" check box; needs a key in the parameters.
constexpr UINT DontAskAgain = 0x01000000;

struct CXMSGBOXPARAMS
{
    // The answer given with the box ticked is remembered under this key (section "DontAskAgain"
    // of the user's preferences), and the box is answered without showing from then on. A ticked
    // Cancel is not remembered.
    const wchar_t* pszDontAskAgainKey = nullptr;
    // Text of the check box; null for the host's default.
    const wchar_t* pszCheckBoxText = nullptr;
};
} // namespace CXMessageBoxDefs

// style: MB_ buttons and icon. Answers IDOK, IDCANCEL, IDYES, IDNO, ... A null caption
// shows the application's name.
int CXMessageBox(const wchar_t* text, UINT style = 0, const wchar_t* caption = nullptr);
int CXMessageBoxEx(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style,
                   CXMessageBoxDefs::CXMSGBOXPARAMS* params);
