#pragma once
// The host's string type: a std::basic_string with the few helpers the host's code relies on.

#include <cstdarg>
#include <string>
#include <string_view>

template <typename CT>
class CStdStr : public std::basic_string<CT>
{
    using Base = std::basic_string<CT>;

public:
    using Base::Base;
    CStdStr() = default;
    CStdStr(const Base& s) : Base(s) {}
    CStdStr(Base&& s) : Base(std::move(s)) {}
    CStdStr(const CT* s) : Base(s ? s : CStdStr::Empty()) {}

    operator const CT*() const { return this->c_str(); }

    bool IsEmpty() const { return this->empty(); }
    int GetLength() const { return static_cast<int>(this->size()); }

    // Whether c is a blank of the current global locale: what Trim takes away.
    static bool IsBlank(CT c);
    CStdStr& Trim() { return TrimRight().TrimLeft(); }
    CStdStr& TrimLeft();
    CStdStr& TrimRight();

    CStdStr& MakeLower();
    CStdStr& MakeUpper();

    // ASCII case-insensitive comparison: <0, 0, >0 like wcscmp.
    int CompareNoCase(const CT* other) const;
    bool EqualsNoCase(const CT* other) const { return CompareNoCase(other) == 0; }

    // printf-style formatting that never truncates: the buffer grows in steps of
    // 2,048 characters until the whole text fits. In wide strings "%s" and "%c"
    // take wide arguments, as in the host's original printf dialect ("%hs" is narrow).
    void Format(const CT* format, ...);
    void FormatV(const CT* format, va_list args);

    CStdStr Left(int count) const { return this->substr(0, static_cast<size_t>(count < 0 ? 0 : count)); }
    CStdStr Mid(int first) const;
    CStdStr Mid(int first, int count) const;
    int Replace(const CT* from, const CT* to);

private:
    static const CT* Empty();
};

using CStdStringW = CStdStr<wchar_t>;
using CStdStringA = CStdStr<char>;

extern template class CStdStr<wchar_t>;
extern template class CStdStr<char>;
