#include "sonarium/core/storage/ProjectIdentity.h"

#include <cstring>

namespace sn::storage
{
namespace
{
// Two FNV-1a passes with different offsets fill the sixteen bytes.
uint64_t Fnv1a(const std::string& text, uint64_t offset)
{
    uint64_t hash = offset;
    for (unsigned char c : text)
    {
        hash ^= c;
        hash *= 0x100000001B3ULL;
    }
    return hash;
}

GUID GuidOfPath(const std::filesystem::path& file)
{
    std::error_code ec;
    std::filesystem::path canonical = std::filesystem::weakly_canonical(file, ec);
    if (ec)
        canonical = std::filesystem::absolute(file, ec).lexically_normal();
    const std::string text = canonical.string();
    const uint64_t high = Fnv1a(text, 0xCBF29CE484222325ULL);
    const uint64_t low = Fnv1a(text, 0x84222325CBF29CE4ULL);
    GUID id;
    id.Data1 = static_cast<uint32_t>(high >> 32);
    id.Data2 = static_cast<uint16_t>(high >> 16);
    id.Data3 = static_cast<uint16_t>((high & 0x0FFF) | 0x8000); // not a random GUID
    for (int i = 0; i < 8; ++i)
        id.Data4[i] = static_cast<uint8_t>(low >> (8 * i));
    id.Data4[0] = static_cast<uint8_t>((id.Data4[0] & 0x3F) | 0x80);
    return id;
}
} // namespace

void ReadProjectIdentity(const Json& document, const std::filesystem::path& projectFile, Project& project)
{
    project.SetId(document.contains("id") ? GuidMember(document, "id") : GuidOfPath(projectFile));
}

void WriteProjectIdentity(Json& document, const Project& project)
{
    document["id"] = GuidText::ToString(project.GetId());
}
} // namespace sn::storage
