#pragma once
// The values of the preferences file as stored: binary values as hex text, and what makes an
// entry of a known type unusable, so that a damaged value is said once rather than silently
// read as absent.

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace sn::prefs
{
// The bytes of hex text; none when its length is odd or it holds anything but hex digits.
std::optional<std::string> FromHex(std::string_view hex);

// Why entry (a {"type": ..., "value": ...} object) cannot be read as its type says, or empty when
// it can, or when its type is one this version does not know (kept for the version that wrote it).
std::string ValueProblem(const nlohmann::json& entry);
} // namespace sn::prefs
