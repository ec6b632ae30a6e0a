#pragma once
// Interned read-only narrow string. Equal texts share one interned value for the
// life of the process, so comparing two ROStrings compares identities, never text.

#include <cstddef>
#include <functional>
#include <string_view>

class ROString
{
public:
    ROString() = default; // the empty string
    explicit ROString(const char* text);
    explicit ROString(std::string_view text);

    const char* c_str() const { return m_text ? m_text : ""; }
    std::string_view view() const { return c_str(); }
    bool empty() const { return m_text == nullptr; }

    friend bool operator==(const ROString& a, const ROString& b) { return a.m_text == b.m_text; }
    friend bool operator!=(const ROString& a, const ROString& b) { return a.m_text != b.m_text; }
    // Identity order: fast and stable within a run, not alphabetical.
    friend bool operator<(const ROString& a, const ROString& b) { return std::less<const char*>()(a.m_text, b.m_text); }

private:
    const char* m_text = nullptr; // null for the empty string, else the interned copy
};

template <>
struct std::hash<ROString>
{
    size_t operator()(const ROString& s) const { return std::hash<const void*>()(s.c_str()); }
};
