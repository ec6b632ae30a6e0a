#include "host/StdStr.h"
#include "host/Utf8.h"

#include <gtest/gtest.h>

TEST(StdStr, FormatNeverTruncatesLongTexts)
{
    const CStdStr<wchar_t> longName(5000, L'x');
    CStdStr<wchar_t> s;
    s.Format(L"New %s (%d)", longName.c_str(), 42);
    EXPECT_EQ(s.size(), 4u + 5000u + 5u);
    EXPECT_EQ(s.substr(0, 4), L"New ");
    EXPECT_EQ(s.substr(s.size() - 5), L" (42)");

    // Exactly at the step boundary: the terminator needs one more character.
    CStdStr<wchar_t> edge;
    edge.Format(L"%s", CStdStr<wchar_t>(2048, L'y').c_str());
    EXPECT_EQ(edge.size(), 2048u);

    CStdStr<char> narrow;
    narrow.Format("%s-%03d", std::string(3000, 'n').c_str(), 7);
    EXPECT_EQ(narrow.size(), 3004u);
}

TEST(StdStr, FormatUsesTheHostsWideDialect)
{
    CStdStr<wchar_t> s;
    s.Format(L"%s|%c|%hs|%5.1f|%%|%ls", L"wide", L'C', "narrow", 2.25, L"explicit");
    EXPECT_EQ(s, L"wide|C|narrow|  2.2|%|explicit");
}

TEST(StdStr, TrimUsesLocaleBlanksAndKeepsInnerOnes)
{
    CStdStr<wchar_t> s(L" \t\n Footsteps  Concrete \r\n");
    EXPECT_EQ(s.Trim(), L"Footsteps  Concrete");
    CStdStr<wchar_t> blanks(L" \t ");
    EXPECT_TRUE(blanks.Trim().IsEmpty());
}

TEST(StdStr, CompareNoCaseIsAsciiOnly)
{
    EXPECT_EQ(CStdStr<wchar_t>(L"Work Unit").CompareNoCase(L"WORK unit"), 0);
    EXPECT_LT(CStdStr<wchar_t>(L"abc").CompareNoCase(L"ABD"), 0);
    EXPECT_GT(CStdStr<wchar_t>(L"abcd").CompareNoCase(L"ABC"), 0);
    // Non-ASCII letters are compared as they are.
    EXPECT_NE(CStdStr<wchar_t>(L"\u00e9").CompareNoCase(L"\u00c9"), 0);
}

TEST(StdStr, ReplaceMidAndUtf8)
{
    CStdStr<wchar_t> s(L"a b  c");
    EXPECT_EQ(s.Replace(L" ", L""), 3);
    EXPECT_EQ(s, L"abc");
    EXPECT_EQ(s.Mid(1), L"bc");
    EXPECT_EQ(s.Mid(5), L"");
    EXPECT_EQ(s.Mid(1, 1), L"b");

    const std::wstring text = L"Amb_For\u00eat_\u65e5\U0001F3B5";
    EXPECT_EQ(Utf8::ToWide(Utf8::FromWide(text)), text);
    EXPECT_EQ(Utf8::ToWide("ok\xC3(bad\xE2\x82"), L"ok\uFFFD(bad\uFFFD\uFFFD");
    EXPECT_EQ(Utf8::ToWide("\xC0\xAF"), L"\uFFFD\uFFFD"); // overlong form is not a slash
}
