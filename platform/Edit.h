#pragma once
// A single-line edit control: text, a selection, a length limit, and the clipboard
// commands acting on the selection through the process's text clipboard.

#include "platform/Wnd.h"

#include <string>

// Where the text of the clipboard lives when the process shares the desktop's clipboard.
class ITextClipboardBackend
{
public:
    virtual ~ITextClipboardBackend() = default;
    virtual std::wstring GetText() const = 0;
    virtual void SetText(const std::wstring& text) = 0;
};

// The process's clipboard of plain text, shared by every edit control and the host's commands
// that copy text. Without a backend (headless) the process keeps the text itself.
class TextClipboard
{
public:
    static std::wstring Get();
    static void Set(std::wstring text);
    // Not owned; null goes back to the process's own text.
    static void SetBackend(ITextClipboardBackend* backend);
};

class CEdit : public CWnd
{
public:
    // Win32's default limit of a single-line edit control.
    static constexpr int DefaultLimit = 32767;

    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // Selection as [start, end) character positions; SetSel(0, -1) selects everything.
    void SetSel(int start, int end);
    void GetSel(int& start, int& end) const;
    void ReplaceSel(LPCWSTR text);
    void SetLimitText(UINT limit);
    UINT GetLimitText() const { return m_limit; }

    // The user types text (replacing the selection) or presses an editing key.
    void TypeText(const std::wstring& text);
    void PressKey(int vk);

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Insert(const std::wstring& text);
    void ClampSelection();

    int m_selStart = 0;
    int m_selEnd = 0;
    UINT m_limit = DefaultLimit;
};
