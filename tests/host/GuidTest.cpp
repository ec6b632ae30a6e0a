#include "host/Guid.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
GUID Make(uint32_t d1, uint16_t d2, uint16_t d3, uint8_t last)
{
    GUID g;
    g.Data1 = d1;
    g.Data2 = d2;
    g.Data3 = d3;
    g.Data4[7] = last;
    return g;
}
} // namespace

TEST(Guid, OrderIsByFieldsNotByBytes)
{
    // 0x100 is stored little-endian as 00 01 00 00, which compares below 0xFF's FF 00 00 00
    // byte-wise; the host's order compares Data1 as a number.
    EXPECT_TRUE(GUIDLess()(Make(0xFF, 0, 0, 0), Make(0x100, 0, 0, 0)));
    EXPECT_TRUE(GUIDLess()(Make(1, 1, 0, 0), Make(1, 2, 0, 0)));
    EXPECT_TRUE(GUIDLess()(Make(1, 1, 1, 0), Make(1, 1, 1, 1)));
    EXPECT_FALSE(GUIDLess()(Make(1, 1, 1, 1), Make(1, 1, 1, 1)));

    std::set<GUID, GUIDLess> set{Make(3, 0, 0, 0), Make(1, 0, 0, 0), Make(2, 0, 0, 0), Make(1, 0, 0, 0)};
    ASSERT_EQ(set.size(), 3u);
    EXPECT_EQ(set.begin()->Data1, 1u);
}

TEST(Guid, TextFormRoundTripsAndRejectsMalformed)
{
    const GUID g = Make(0x01234567, 0x89AB, 0xCDEF, 0xEF);
    const std::string text = GuidText::ToString(g);
    EXPECT_EQ(text, "{01234567-89AB-CDEF-0000-0000000000EF}");
    EXPECT_EQ(GuidText::FromString(text), g);
    EXPECT_EQ(GuidText::FromString("01234567-89ab-cdef-0000-0000000000ef"), g);

    for (const char* bad : {"", "{}", "01234567-89AB-CDEF-0000-0000000000E", "0123456789AB-CDEF-0000-0000000000EF",
                            "{01234567-89AB-CDEF-0000-0000000000EG}", "{01234567-89AB-CDEF-0000-0000000000EF"})
        EXPECT_FALSE(GuidText::FromString(bad).has_value()) << bad;
    EXPECT_EQ(GuidText::ToString(GUID_NULL), "{00000000-0000-0000-0000-000000000000}");
}
