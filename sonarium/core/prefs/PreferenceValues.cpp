#include "sonarium/core/prefs/PreferenceValues.h"

#include "host/Guid.h"

#include <nlohmann/json.hpp>

#include <climits>

namespace sn::prefs
{
std::optional<std::string> FromHex(std::string_view hex)
{
    if (hex.size() % 2 != 0)
        return std::nullopt;
    std::string bytes;
    bytes.reserve(hex.size() / 2);
    for (size_t i = 0; i < hex.size(); i += 2)
    {
        const int high = GuidText::HexDigitValue(hex[i]);
        const int low = GuidText::HexDigitValue(hex[i + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

std::string ValueProblem(const nlohmann::json& entry)
{
    if (!entry.is_object() || !entry.contains("type") || !entry.contains("value") ||
        !entry["type"].is_string())
        return "not an entry with a type and a value";
    const std::string& type = entry["type"].get_ref<const std::string&>();
    const nlohmann::json& value = entry["value"];
    if (type == "binary")
    {
        if (!value.is_string() || value.get_ref<const std::string&>().size() % 2 != 0)
            return "a binary value must be an even number of hex digits";
        if (!FromHex(value.get_ref<const std::string&>()))
            return "a binary value must hold only hex digits";
    }
    else if (type == "guid")
    {
        if (!value.is_string() || !GuidText::FromString(value.get_ref<const std::string&>()))
            return "not a GUID";
    }
    else if (type == "integer")
    {
        if (!value.is_number_integer() ||
            (value.is_number_unsigned() &&
             value.get<unsigned long long>() > static_cast<unsigned long long>(LLONG_MAX)))
            return "not a whole number of at most 64 bits";
    }
    else if (type == "string" && !value.is_string())
        return "not a string";
    return {};
}
} // namespace sn::prefs
