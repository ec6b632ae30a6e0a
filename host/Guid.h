#pragma once
// Object identity: a 16-byte identifier laid out as the host stores it.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

struct GUID
{
    uint32_t Data1 = 0;
    uint16_t Data2 = 0;
    uint16_t Data3 = 0;
    uint8_t Data4[8] = {};

    // Inline: look-ups in large projects compare and hash GUIDs on every probe.
    friend bool operator==(const GUID& a, const GUID& b) { return std::memcmp(&a, &b, sizeof(GUID)) == 0; }
    friend bool operator!=(const GUID& a, const GUID& b) { return !(a == b); }
};
static_assert(sizeof(GUID) == 16, "a GUID is stored and persisted as exactly 16 bytes");

inline constexpr GUID GUID_NULL{};

// The host's order of GUIDs: by Data1, Data2, Data3, then the eight bytes of Data4.
struct GUIDLess
{
    bool operator()(const GUID& a, const GUID& b) const;
};

struct GUIDHash
{
    size_t operator()(const GUID& g) const
    {
        // GUIDs are random enough that folding the two halves spreads them well.
        uint64_t halves[2];
        std::memcpy(halves, &g, sizeof(halves));
        return static_cast<size_t>(halves[0] * 0x9E3779B97F4A7C15ull ^ halves[1]);
    }
};

namespace GuidText
{
// "{01234567-89AB-CDEF-0123-456789ABCDEF}", upper-case hexadecimal.
std::string ToString(const GUID& g);
// Accepts the braced and the bare form, any case; nullopt when malformed.
std::optional<GUID> FromString(std::string_view text);
// The value of a hexadecimal digit of either case, or -1.
int HexDigitValue(char c);
} // namespace GuidText

template <> struct std::hash<GUID> : GUIDHash
{
};
