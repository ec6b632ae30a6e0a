#include "host/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace Utf8
{
std::string FromWide(std::wstring_view text)
{
    // Names are mostly ASCII: their leading ASCII part is copied without growing the string per
    // character.
    size_t ascii = 0;
    while (ascii < text.size() && static_cast<char32_t>(text[ascii]) < 0x80)
        ++ascii;
    std::string out(ascii, '\0');
    std::copy(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(ascii), out.begin());
    if (ascii == text.size())
        return out;
    out.reserve(text.size());
    for (wchar_t wc : text.substr(ascii))
    {
        auto c = static_cast<char32_t>(wc);
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
            c = 0xFFFD;
        if (c < 0x80)
            out += static_cast<char>(c);
        else if (c < 0x800)
        {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
        else if (c < 0x10000)
        {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
        else
        {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

namespace
{
// Decodes the character at i; its length in bytes, or 0 when the bytes there are not UTF-8.
int Decode(std::string_view text, size_t i, char32_t& c)
{
    const auto lead = static_cast<unsigned char>(text[i]);
    const int length = lead < 0x80 ? 1 : (lead >> 5) == 0x6 ? 2 : (lead >> 4) == 0xE ? 3 : (lead >> 3) == 0x1E ? 4 : 0;
    c = length == 1 ? lead : length == 2 ? (lead & 0x1F) : length == 3 ? (lead & 0x0F) : (lead & 0x07);
    bool valid = length != 0 && i + static_cast<size_t>(length) <= text.size();
    for (int k = 1; valid && k < length; ++k)
    {
        const auto next = static_cast<unsigned char>(text[i + static_cast<size_t>(k)]);
        valid = (next & 0xC0) == 0x80;
        c = (c << 6) | (next & 0x3F);
    }
    static constexpr char32_t kMinimum[] = {0, 0, 0x80, 0x800, 0x10000};
    if (valid && (c < kMinimum[length] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)))
        valid = false;
    return valid ? length : 0;
}
} // namespace

std::wstring ToWide(std::string_view text)
{
    size_t i = 0;
    while (i < text.size() && static_cast<unsigned char>(text[i]) < 0x80)
        ++i;
    std::wstring out(i, L'\0');
    std::copy(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(i), out.begin());
    if (i == text.size())
        return out;
    out.reserve(text.size());
    while (i < text.size())
    {
        char32_t c = 0;
        const int length = Decode(text, i, c);
        out += length ? static_cast<wchar_t>(c) : L'\xFFFD';
        i += length ? static_cast<size_t>(length) : 1;
    }
    return out;
}

bool IsValid(std::string_view text)
{
    size_t i = 0;
    while (i < text.size())
    {
        // Mostly plain ASCII: skipped eight bytes at a time without decoding.
        uint64_t word = 0;
        if (i + sizeof(word) <= text.size())
        {
            std::memcpy(&word, text.data() + i, sizeof(word));
            if ((word & 0x8080808080808080ull) == 0)
            {
                i += sizeof(word);
                continue;
            }
        }
        if (static_cast<unsigned char>(text[i]) < 0x80)
        {
            ++i;
            continue;
        }
        char32_t c = 0;
        const int length = Decode(text, i, c);
        if (!length)
            return false;
        i += static_cast<size_t>(length);
    }
    return true;
}
} // namespace Utf8
