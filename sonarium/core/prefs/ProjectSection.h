#pragma once
// Settings kept per project: "<PROJECT>" in a section's name stands for the project that is open,
// replaced by that project's key (its GUID). With no project open such a section does not exist:
// reading finds nothing and writing keeps nothing, so a view emptied by a closing project never
// overwrites what was kept for it.

#include <optional>
#include <string>

namespace sn
{
inline constexpr const wchar_t* kProjectToken = L"<PROJECT>";

// The section as stored; nullopt when it names the open project and none is open.
std::optional<std::wstring> ResolveProjectSection(const wchar_t* section, const std::wstring& projectKey);
} // namespace sn
