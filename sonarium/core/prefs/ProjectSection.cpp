#include "sonarium/core/prefs/ProjectSection.h"

namespace sn
{
std::optional<std::wstring> ResolveProjectSection(const wchar_t* section, const std::wstring& projectKey)
{
    if (!section)
        return std::nullopt;
    std::wstring resolved = section;
    const std::wstring token = kProjectToken;
    size_t at = resolved.find(token);
    if (at == std::wstring::npos)
        return resolved;
    if (projectKey.empty())
        return std::nullopt;
    for (; at != std::wstring::npos; at = resolved.find(token, at + projectKey.size()))
        resolved.replace(at, token.size(), projectKey);
    return resolved;
}
} // namespace sn
