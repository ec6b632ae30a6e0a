#include "host/StdStr.h"

#include <cctype>
#include <cstdio>
#include <cwchar>
#include <cwctype>
#include <locale>
#include <vector>

namespace
{
constexpr size_t kFormatStep = 2048;

// Rewrites the host's printf dialect for the C library: in a wide format, %s and %c
// become %ls and %lc, and %hs / %hc become the narrow %s / %c.
std::wstring ToLibcFormat(const wchar_t* format)
{
    std::wstring out;
    for (const wchar_t* p = format; *p; ++p)
    {
        out += *p;
        if (*p != L'%')
            continue;
        if (p[1] == L'%')
        {
            out += *++p;
            continue;
        }
        // Copy flags, width, precision; then fix the length modifier of s and c.
        while (p[1] && std::wcschr(L"-+ #0123456789.*", p[1]))
            out += *++p;
        if (p[1] == L'h' && (p[2] == L's' || p[2] == L'c'))
            out += *(p += 2);
        else if (p[1] == L's' || p[1] == L'c')
            out += L'l', out += *++p;
    }
    return out;
}

int PrintInto(wchar_t* buffer, size_t size, const wchar_t* format, va_list args)
{
    return std::vswprintf(buffer, size, format, args);
}

int PrintInto(char* buffer, size_t size, const char* format, va_list args)
{
    return std::vsnprintf(buffer, size, format, args);
}

std::wstring LibcFormat(const wchar_t* format) { return ToLibcFormat(format); }
std::string LibcFormat(const char* format) { return format; }

// The C library's classification: the global locale, once set by name, is the C library's too,
// and asking it costs no copy of the locale per character.
bool IsSpace(wchar_t c) { return std::iswspace(static_cast<wint_t>(c)) != 0; }
bool IsSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

template <typename CT>
CT AsciiLower(CT c)
{
    return (c >= 'A' && c <= 'Z') ? static_cast<CT>(c - 'A' + 'a') : c;
}
} // namespace

template <typename CT>
const CT* CStdStr<CT>::Empty()
{
    static const CT empty[1] = {};
    return empty;
}

template <typename CT>
bool CStdStr<CT>::IsBlank(CT c)
{
    return IsSpace(c);
}

template <typename CT>
CStdStr<CT>& CStdStr<CT>::TrimLeft()
{
    size_t i = 0;
    while (i < this->size() && IsBlank((*this)[i]))
        ++i;
    this->erase(0, i);
    return *this;
}

template <typename CT>
CStdStr<CT>& CStdStr<CT>::TrimRight()
{
    size_t n = this->size();
    while (n > 0 && IsBlank((*this)[n - 1]))
        --n;
    this->erase(n);
    return *this;
}

template <typename CT>
CStdStr<CT>& CStdStr<CT>::MakeLower()
{
    const auto& facet = std::use_facet<std::ctype<CT>>(std::locale());
    facet.tolower(this->data(), this->data() + this->size());
    return *this;
}

template <typename CT>
CStdStr<CT>& CStdStr<CT>::MakeUpper()
{
    const auto& facet = std::use_facet<std::ctype<CT>>(std::locale());
    facet.toupper(this->data(), this->data() + this->size());
    return *this;
}

template <typename CT>
int CStdStr<CT>::CompareNoCase(const CT* other) const
{
    const CT* a = this->c_str();
    const CT* b = other ? other : Empty();
    for (;; ++a, ++b)
    {
        const CT x = AsciiLower(*a), y = AsciiLower(*b);
        if (x != y)
            return x < y ? -1 : 1;
        if (x == 0)
            return 0;
    }
}

template <typename CT>
void CStdStr<CT>::Format(const CT* format, ...)
{
    va_list args;
    va_start(args, format);
    FormatV(format, args);
    va_end(args);
}

template <typename CT>
void CStdStr<CT>::FormatV(const CT* format, va_list args)
{
    const auto libcFormat = LibcFormat(format ? format : Empty());
    std::vector<CT> buffer(kFormatStep);
    for (;;)
    {
        va_list copy;
        va_copy(copy, args);
        const int written = PrintInto(buffer.data(), buffer.size(), libcFormat.c_str(), copy);
        va_end(copy);
        // The wide printer reports truncation as -1, the narrow one as the size it needed.
        if (written >= 0 && static_cast<size_t>(written) < buffer.size())
        {
            this->assign(buffer.data(), static_cast<size_t>(written));
            return;
        }
        if (buffer.size() > (size_t(1) << 28)) // a format that can never fit (bad conversion)
        {
            this->clear();
            return;
        }
        buffer.resize(buffer.size() + kFormatStep);
    }
}

template <typename CT>
CStdStr<CT> CStdStr<CT>::Mid(int first) const
{
    if (first < 0)
        first = 0;
    return static_cast<size_t>(first) >= this->size() ? CStdStr() : CStdStr(this->substr(static_cast<size_t>(first)));
}

template <typename CT>
CStdStr<CT> CStdStr<CT>::Mid(int first, int count) const
{
    if (first < 0)
        first = 0;
    if (count <= 0 || static_cast<size_t>(first) >= this->size())
        return CStdStr();
    return CStdStr(this->substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

template <typename CT>
int CStdStr<CT>::Replace(const CT* from, const CT* to)
{
    const std::basic_string_view<CT> f(from ? from : Empty()), t(to ? to : Empty());
    if (f.empty())
        return 0;
    int count = 0;
    for (size_t pos = this->find(f); pos != Base::npos; pos = this->find(f, pos + t.size()))
    {
        this->replace(pos, f.size(), t);
        ++count;
    }
    return count;
}

template class CStdStr<wchar_t>;
template class CStdStr<char>;
