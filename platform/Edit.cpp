#include "platform/Edit.h"

#include <algorithm>

namespace
{
std::wstring& ClipboardText()
{
    static std::wstring text;
    return text;
}

ITextClipboardBackend*& Backend()
{
    static ITextClipboardBackend* backend = nullptr;
    return backend;
}
} // namespace

std::wstring TextClipboard::Get()
{
    return Backend() ? Backend()->GetText() : ClipboardText();
}

void TextClipboard::Set(std::wstring text)
{
    if (Backend())
        Backend()->SetText(text);
    else
        ClipboardText() = std::move(text);
}

void TextClipboard::SetBackend(ITextClipboardBackend* backend)
{
    Backend() = backend;
}

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"EDIT", L"", style, rect, parent, id);
}

void CEdit::SetSel(int start, int end)
{
    SendMessage(EM_SETSEL, static_cast<WPARAM>(start), static_cast<LPARAM>(end));
}

void CEdit::GetSel(int& start, int& end) const
{
    start = m_selStart;
    end = m_selEnd;
}

void CEdit::ReplaceSel(LPCWSTR text)
{
    SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text ? text : L""));
}

void CEdit::SetLimitText(UINT limit)
{
    SendMessage(EM_LIMITTEXT, limit);
}

void CEdit::TypeText(const std::wstring& text)
{
    Insert(text);
}

void CEdit::PressKey(int vk)
{
    const int length = GetWindowTextLength();
    switch (vk)
    {
    case VK_BACK:
    case VK_DELETE:
        if (m_selStart == m_selEnd)
        {
            if (vk == VK_BACK && m_selStart > 0)
                --m_selStart;
            else if (vk == VK_DELETE && m_selEnd < length)
                ++m_selEnd;
        }
        Insert(L"");
        break;
    case VK_LEFT:
        m_selStart = m_selEnd = std::max(0, std::min(m_selStart, m_selEnd) - (m_selStart == m_selEnd ? 1 : 0));
        break;
    case VK_RIGHT:
        m_selStart = m_selEnd = std::min(length, std::max(m_selStart, m_selEnd) + (m_selStart == m_selEnd ? 1 : 0));
        break;
    case VK_HOME:
        m_selStart = m_selEnd = 0;
        break;
    case VK_END:
        m_selStart = m_selEnd = length;
        break;
    default:
        SendMessage(WM_KEYDOWN, static_cast<WPARAM>(vk));
        break;
    }
}

void CEdit::ClampSelection()
{
    const int length = GetWindowTextLength();
    m_selStart = std::clamp(m_selStart, 0, length);
    m_selEnd = std::clamp(m_selEnd, 0, length);
    if (m_selStart > m_selEnd)
        std::swap(m_selStart, m_selEnd);
}

void CEdit::Insert(const std::wstring& inserted)
{
    ClampSelection();
    std::wstring text = GetWindowText();
    const size_t kept = text.size() - static_cast<size_t>(m_selEnd - m_selStart);
    const size_t room = m_limit > kept ? m_limit - kept : 0;
    const std::wstring piece = inserted.substr(0, std::min(room, inserted.size()));
    text.replace(static_cast<size_t>(m_selStart), static_cast<size_t>(m_selEnd - m_selStart), piece);
    CWnd::DefWindowProc(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    m_selStart = m_selEnd = m_selStart + static_cast<int>(piece.size());
}

LRESULT CEdit::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_SETTEXT:
    {
        const LRESULT result = CWnd::DefWindowProc(message, wParam, lParam);
        m_selStart = m_selEnd = 0;
        return result;
    }
    case EM_SETSEL:
    {
        const int length = GetWindowTextLength();
        int start = static_cast<int>(static_cast<INT_PTR>(wParam));
        int end = static_cast<int>(lParam);
        if (start == -1)
        {
            // -1 as the start removes the selection.
            m_selStart = m_selEnd;
            return 0;
        }
        if (end < 0 || end > length)
            end = length;
        m_selStart = std::clamp(start, 0, length);
        m_selEnd = end;
        if (m_selStart > m_selEnd)
            std::swap(m_selStart, m_selEnd);
        return 0;
    }
    case EM_GETSEL:
        if (wParam)
            *reinterpret_cast<DWORD*>(wParam) = static_cast<DWORD>(m_selStart);
        if (lParam)
            *reinterpret_cast<DWORD*>(lParam) = static_cast<DWORD>(m_selEnd);
        return static_cast<LRESULT>(MAKELPARAM(static_cast<WORD>(m_selStart), static_cast<WORD>(m_selEnd)));
    case EM_REPLACESEL:
        Insert(reinterpret_cast<LPCWSTR>(lParam));
        return 0;
    case EM_LIMITTEXT:
        m_limit = wParam ? static_cast<UINT>(wParam) : 0x7FFFFFFE;
        return 0;
    case EM_GETLIMITTEXT:
        return m_limit;
    case WM_COPY:
    case WM_CUT:
        ClampSelection();
        if (m_selStart != m_selEnd)
        {
            TextClipboard::Set(GetWindowText().substr(static_cast<size_t>(m_selStart),
                                                      static_cast<size_t>(m_selEnd - m_selStart)));
            if (message == WM_CUT)
                Insert(L"");
        }
        return 0;
    case WM_CLEAR:
        Insert(L"");
        return 0;
    case WM_PASTE:
        Insert(TextClipboard::Get());
        return 0;
    default:
        return CWnd::DefWindowProc(message, wParam, lParam);
    }
}
