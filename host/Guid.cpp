#include "host/Guid.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <tuple>

bool GUIDLess::operator()(const GUID& a, const GUID& b) const
{
    if (std::tie(a.Data1, a.Data2, a.Data3) != std::tie(b.Data1, b.Data2, b.Data3))
        return std::tie(a.Data1, a.Data2, a.Data3) < std::tie(b.Data1, b.Data2, b.Data3);
    return std::memcmp(a.Data4, b.Data4, sizeof(a.Data4)) < 0;
}

namespace GuidText
{
std::string ToString(const GUID& g)
{
    char text[39];
    std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                  static_cast<unsigned>(g.Data1), g.Data2, g.Data3, g.Data4[0], g.Data4[1], g.Data4[2],
                  g.Data4[3], g.Data4[4], g.Data4[5], g.Data4[6], g.Data4[7]);
    return text;
}

namespace
{
// The value of each byte as a hexadecimal digit, -1 for the others: GUIDs are read by the
// million when a large project opens.
constexpr std::array<int8_t, 256> kHexDigits = []
{
    std::array<int8_t, 256> digits{};
    digits.fill(-1);
    for (int c = 0; c < 10; ++c)
        digits[static_cast<size_t>('0' + c)] = static_cast<int8_t>(c);
    for (int c = 0; c < 6; ++c)
    {
        digits[static_cast<size_t>('a' + c)] = static_cast<int8_t>(10 + c);
        digits[static_cast<size_t>('A' + c)] = static_cast<int8_t>(10 + c);
    }
    return digits;
}();
} // namespace

int HexDigitValue(char c)
{
    return kHexDigits[static_cast<unsigned char>(c)];
}

std::optional<GUID> FromString(std::string_view text)
{
    if (text.size() == 38 && text.front() == '{' && text.back() == '}')
        text = text.substr(1, 36);
    if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-')
        return std::nullopt;

    uint8_t bytes[16];
    size_t n = 0;
    for (size_t i = 0; i < text.size(); ++i)
    {
        if (i == 8 || i == 13 || i == 18 || i == 23)
            continue;
        const int hi = kHexDigits[static_cast<unsigned char>(text[i])];
        const int lo = kHexDigits[static_cast<unsigned char>(text[++i])];
        if (hi < 0 || lo < 0)
            return std::nullopt;
        bytes[n++] = static_cast<uint8_t>(hi << 4 | lo);
    }
    GUID g;
    g.Data1 = uint32_t(bytes[0]) << 24 | uint32_t(bytes[1]) << 16 | uint32_t(bytes[2]) << 8 | bytes[3];
    g.Data2 = static_cast<uint16_t>(bytes[4] << 8 | bytes[5]);
    g.Data3 = static_cast<uint16_t>(bytes[6] << 8 | bytes[7]);
    std::memcpy(g.Data4, bytes + 8, 8);
    return g;
}
} // namespace GuidText
