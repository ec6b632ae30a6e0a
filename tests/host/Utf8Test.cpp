// The quick validity check that lets a file's bytes through unconverted must agree with the
// conversion on every kind of malformed sequence.

#include "host/Utf8.h"

#include <gtest/gtest.h>

TEST(Utf8, IsValidExactlyWhenTheRoundTripChangesNothing)
{
    const std::string samples[] = {
        "",
        "plain ascii",
        "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8E\xB5",   // two, three and four bytes
        "\xC3",                                       // cut short at the end
        "\xE2\x82 next",                              // cut short before more text
        "\xC0\xAF",                                   // overlong
        "\xE0\x80\xAF",                               // overlong, three bytes
        "\xED\xA0\x80",                               // a surrogate
        "\xF4\x90\x80\x80",                           // above U+10FFFF
        "\x80 lone continuation",
        "\xF8\x88\x80\x80\x80",                       // five-byte form
        "ok \xFF",
    };
    for (const std::string& text : samples)
    {
        const bool unchanged = Utf8::FromWide(Utf8::ToWide(text)) == text;
        EXPECT_EQ(unchanged, Utf8::IsValid(text)) << testing::PrintToString(text);
    }
}
