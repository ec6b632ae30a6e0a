#include "sonarium/core/prefs/PreferencesStore.h"

#include "sonarium/core/prefs/PreferenceValues.h"
#include "sonarium/core/prefs/ProjectSection.h"

#include "host/Utf8.h"
#include "sonarium/core/storage/FileIO.h"
#include "sonarium/core/storage/JsonDepth.h"
#include "sonarium/core/storage/StorageProblem.h"

#include <nlohmann/json.hpp>

#include <atomic>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

namespace sn
{
namespace
{
using Json = nlohmann::json;

constexpr int kFormatVersion = 1;
constexpr const char* kBinary = "binary";
constexpr const char* kGuid = "guid";
constexpr const char* kInt = "integer";
constexpr const char* kString = "string";

std::atomic<PreferencesStore*> s_installed{nullptr};

std::string ToHex(const unsigned char* data, size_t size)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(size * 2);
    for (size_t i = 0; i < size; ++i)
    {
        hex += digits[data[i] >> 4];
        hex += digits[data[i] & 0x0f];
    }
    return hex;
}

// What is wrong with the shape of a parsed file; empty when it is usable. Entries themselves are
// checked when read, so one odd value does not cost the user every other preference.
std::string ShapeError(const Json& root)
{
    if (!root.is_object())
        return "the top level is not an object";
    const auto version = root.find("version");
    if (version == root.end())
        return "missing key \"version\"";
    if (!version->is_number_integer() || version->get<long long>() != kFormatVersion)
        return "unsupported version " + version->dump();
    const auto sections = root.find("sections");
    if (sections == root.end())
        return "missing key \"sections\"";
    if (!sections->is_object())
        return "\"sections\" is not an object";
    for (const auto& [name, section] : sections->items())
    {
        if (!section.is_object())
            return "section \"" + name + "\" is not an object";
    }
    return {};
}

std::string WithoutExceptionPrefix(const char* what)
{
    // nlohmann's messages start with "[json.exception.parse_error.101] ", which means nothing to a user.
    std::string_view text(what);
    if (!text.empty() && text.front() == '[')
    {
        const size_t end = text.find("] ");
        if (end != std::string_view::npos)
            text.remove_prefix(end + 2);
    }
    return std::string(text);
}
} // namespace

// The file's content as last loaded or set: {"section": {"key": {"type": ..., "value": ...}}}.
class PreferencesStore::Document
{
public:
    Json sections = Json::object();

    // The value of section/key when it is stored with this type, else null.
    const Json* Find(const wchar_t* section, const wchar_t* key, const char* type) const
    {
        if (!section || !key)
            return nullptr;
        const auto s = sections.find(Utf8::FromWide(section));
        if (s == sections.end())
            return nullptr;
        const auto entry = s->find(Utf8::FromWide(key));
        if (entry == s->end() || !entry->is_object())
            return nullptr;
        const auto storedType = entry->find("type");
        const auto value = entry->find("value");
        if (storedType == entry->end() || value == entry->end() || *storedType != type)
            return nullptr;
        return &*value;
    }

    const std::string* FindText(const wchar_t* section, const wchar_t* key, const char* type) const
    {
        const Json* value = Find(section, key, type);
        return value && value->is_string() ? value->get_ptr<const std::string*>() : nullptr;
    }

    void Put(const wchar_t* section, const wchar_t* key, const char* type, Json value)
    {
        sections[Utf8::FromWide(section)][Utf8::FromWide(key)] =
            Json{{"type", type}, {"value", std::move(value)}};
    }

    // One line per section and per key, each entry written as compactly as it reads: a value
    // that nests writes no indentation, so the file never grows from one save to the next.
    std::string Serialize() const
    {
        std::string out = "{\n  \"version\": " + std::to_string(kFormatVersion) + ",\n  \"sections\": {";
        const char* sectionSeparator = "\n";
        for (const auto& [name, section] : sections.items())
        {
            out += sectionSeparator + std::string("    ") + Compact(name) + ": {";
            const char* keySeparator = "\n";
            for (const auto& [key, entry] : section.items())
            {
                out += keySeparator + std::string("      ") + Compact(key) + ": " + Compact(entry);
                keySeparator = ",\n";
            }
            out += *keySeparator == ',' ? "\n    }" : "}";
            sectionSeparator = ",\n";
        }
        out += *sectionSeparator == ',' ? "\n  }\n}\n" : "}\n}\n";
        return out;
    }

private:
    static std::string Compact(const Json& value)
    {
        // Replace rather than throw: a lone surrogate in a wide string must not cost the whole save.
        return value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
};

PreferencesStore::PreferencesStore(std::filesystem::path path)
    : m_path(std::move(path)), m_document(std::make_unique<Document>())
{
    Load();
}

PreferencesStore::~PreferencesStore()
{
    PreferencesStore* self = this;
    s_installed.compare_exchange_strong(self, nullptr);
}

std::filesystem::path PreferencesStore::DefaultPath()
{
    const char* configHome = std::getenv("XDG_CONFIG_HOME");
    std::filesystem::path folder;
    // An empty or relative value is invalid for this variable and must be ignored.
    if (configHome && *configHome == '/')
        folder = configHome;
    else
    {
        const char* home = std::getenv("HOME");
        folder = std::filesystem::path(home ? home : "") / ".config";
    }
    return folder / "sonarium" / "preferences.json";
}

void PreferencesStore::Install(PreferencesStore* store)
{
    s_installed = store;
}

void PreferencesStore::Load()
{
    std::string bytes;
    std::string error;
    if (!FileIO::ReadFile(m_path, bytes, error))
    {
        std::error_code ec;
        const auto status = std::filesystem::symlink_status(m_path, ec);
        if (status.type() == std::filesystem::file_type::not_found)
            return;
        m_readOnly = true;
        AddProblem("cannot read the preferences (" + error +
                   "); they are not saved until the file is readable again");
        return;
    }
    if (std::string tooDeep = storage::DepthProblem(bytes); !tooDeep.empty())
    {
        SetAside(tooDeep);
        return;
    }
    Json root;
    try
    {
        root = Json::parse(bytes);
    }
    catch (const Json::parse_error& e)
    {
        SetAside(WithoutExceptionPrefix(e.what()));
        return;
    }
    const std::string shapeError = ShapeError(root);
    if (!shapeError.empty())
    {
        SetAside(shapeError);
        return;
    }
    m_document->sections = std::move(root["sections"]);
    // Said once here; such a value then reads as absent, and stays in the file until set again.
    for (const auto& [section, entries] : m_document->sections.items())
        for (const auto& [key, entry] : entries.items())
            if (const std::string problem = prefs::ValueProblem(entry); !problem.empty())
                AddProblem("the value \"" + section + "/" + key + "\" is not read (" + problem +
                           "): its default is used until it is set again");
}

// Keeps the damaged file for the user to inspect; the store then starts empty.
void PreferencesStore::SetAside(const std::string& reason)
{
    std::error_code ec;
    for (int n = 1;; ++n)
    {
        std::filesystem::path aside = m_path;
        aside += ".corrupt-" + std::to_string(n);
        if (std::filesystem::symlink_status(aside, ec).type() != std::filesystem::file_type::not_found)
            continue;
        std::filesystem::rename(m_path, aside, ec);
        if (ec)
        {
            // Not moved, so not overwritten either.
            m_readOnly = true;
            AddProblem(reason + "; cannot move it aside (" + ec.message() + "), so it is left as is");
            return;
        }
        AddProblem(reason + "; moved aside to " + aside.string() + " and starting with default preferences");
        return;
    }
}

void PreferencesStore::Save()
{
    if (m_readOnly)
    {
        if (!m_readOnlyReported)
            AddProblem("changes are kept until the host quits but not saved: the file is left as is");
        m_readOnlyReported = true;
        return;
    }
    std::string error;
    if (!FileIO::WriteAtomically(m_path, m_document->Serialize(), error))
        AddProblem("cannot save the preferences: " + error);
}

void PreferencesStore::AddProblem(const std::string& reason)
{
    std::wstring text = StorageProblem{m_path, reason}.Text();
    // A failing disk would otherwise add the same line on every change.
    if (m_problems.empty() || m_problems.back() != text)
        m_problems.push_back(std::move(text));
}

void PreferencesStore::Forget(const wchar_t* section, const wchar_t* key)
{
    const auto s = m_strings.find(section);
    if (s != m_strings.end())
        s->second.erase(key);
}

void PreferencesStore::GetGUIDValue(GUID& out, const wchar_t* section, const wchar_t* key,
                                    GUID const& defaultValue) const
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    const std::string* text = m_document->FindText(section, key, kGuid);
    const std::optional<GUID> parsed = text ? GuidText::FromString(*text) : std::nullopt;
    out = parsed ? *parsed : defaultValue;
}

bool PreferencesStore::GetBinaryValue(const wchar_t* section, const wchar_t* key, unsigned char** data,
                                      size_t* size) const
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    const std::string* text = m_document->FindText(section, key, kBinary);
    const std::optional<std::string> bytes = text ? prefs::FromHex(*text) : std::nullopt;
    if (!bytes || !data || !size)
        return false;
    // Never a null buffer: callers free it unconditionally.
    *data = new unsigned char[bytes->empty() ? 1 : bytes->size()];
    std::memcpy(*data, bytes->data(), bytes->size());
    *size = bytes->size();
    return true;
}

long long PreferencesStore::GetIntValue(const wchar_t* section, const wchar_t* key,
                                        long long defaultValue) const
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    const Json* value = m_document->Find(section, key, kInt);
    if (!value || !value->is_number_integer())
        return defaultValue;
    if (value->is_number_unsigned() && value->get<unsigned long long>() > LLONG_MAX)
        return defaultValue;
    return value->get<long long>();
}

bool PreferencesStore::GetStringValue(const wchar_t* section, const wchar_t* key, wchar_t const** value) const
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    const std::string* text = m_document->FindText(section, key, kString);
    if (!text || !value)
        return false;
    auto& cached = m_strings[section];
    auto entry = cached.find(key);
    if (entry == cached.end())
        entry = cached.emplace(key, Utf8::ToWide(*text)).first;
    *value = entry->second.c_str();
    return true;
}

void PreferencesStore::SetBinaryValue(const wchar_t* section, const wchar_t* key, const unsigned char* data,
                                      size_t size)
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    if (!section || !key || (!data && size != 0))
        return;
    m_document->Put(section, key, kBinary, ToHex(data, size));
    Forget(section, key);
    Save();
}

void PreferencesStore::SetGUIDValue(const wchar_t* section, const wchar_t* key, GUID const& value)
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    if (!section || !key)
        return;
    m_document->Put(section, key, kGuid, GuidText::ToString(value));
    Forget(section, key);
    Save();
}

void PreferencesStore::SetIntValue(const wchar_t* section, const wchar_t* key, long long value)
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    if (!section || !key)
        return;
    m_document->Put(section, key, kInt, value);
    Forget(section, key);
    Save();
}

void PreferencesStore::SetStringValue(const wchar_t* section, const wchar_t* key, const wchar_t* value)
{
    const std::optional<std::wstring> resolved = ResolveProjectSection(section, m_projectKey);
    section = resolved ? resolved->c_str() : nullptr;
    if (!section || !key)
        return;
    m_document->Put(section, key, kString, Utf8::FromWide(value ? value : L""));
    Forget(section, key);
    Save();
}
} // namespace sn

IUserPreferences* IUserPreferences::Get()
{
    return sn::s_installed.load();
}
