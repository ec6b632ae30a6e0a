#pragma once
// The per-user preferences of the host: sections of keys with typed values, kept in one JSON file
// that is rewritten whole on every change.

#include "host/UserPreferences.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace sn
{
class PreferencesStore : public IUserPreferences
{
public:
    // Loads path now; a missing file is an empty store, a damaged one is reported (see Problems()).
    explicit PreferencesStore(std::filesystem::path path);
    PreferencesStore(const PreferencesStore&) = delete;
    PreferencesStore& operator=(const PreferencesStore&) = delete;
    ~PreferencesStore() override;

    // $XDG_CONFIG_HOME/sonarium/preferences.json, else $HOME/.config/sonarium/preferences.json.
    static std::filesystem::path DefaultPath();

    // Makes store the one IUserPreferences::Get() returns; null uninstalls. The caller keeps ownership.
    static void Install(PreferencesStore* store);

    void GetGUIDValue(GUID& out, const wchar_t* section, const wchar_t* key,
                      GUID const& defaultValue) const override;
    bool GetBinaryValue(const wchar_t* section, const wchar_t* key, unsigned char** data,
                        size_t* size) const override;
    long long GetIntValue(const wchar_t* section, const wchar_t* key, long long defaultValue) const override;
    // The pointer stays valid until the next Set of the same key or the store's destruction.
    bool GetStringValue(const wchar_t* section, const wchar_t* key, wchar_t const** value) const override;

    void SetBinaryValue(const wchar_t* section, const wchar_t* key, const unsigned char* data,
                        size_t size) override;
    void SetGUIDValue(const wchar_t* section, const wchar_t* key, GUID const& value) override;
    void SetIntValue(const wchar_t* section, const wchar_t* key, long long value) override;
    void SetStringValue(const wchar_t* section, const wchar_t* key, const wchar_t* value) override;

    // What "<PROJECT>" in a section's name stands for: the open project's key, or empty while none
    // is open (those sections then read as empty and take no writes).
    void SetProjectKey(std::wstring key) { m_projectKey = std::move(key); }
    const std::wstring& ProjectKey() const { return m_projectKey; }

    const std::filesystem::path& Path() const { return m_path; }
    // What went wrong with the file, one ready-to-show text per event, oldest first.
    std::vector<std::wstring> const& Problems() const { return m_problems; }
    // True when the file could not be read: changes then live in memory only and the file is left alone.
    bool IsReadOnly() const { return m_readOnly; }

private:
    class Document;
    using StringCache = std::map<std::wstring, std::map<std::wstring, std::wstring>>;

    void Load();
    void SetAside(const std::string& reason);
    void Save();
    void AddProblem(const std::string& reason);
    void Forget(const wchar_t* section, const wchar_t* key);

    std::filesystem::path m_path;
    std::wstring m_projectKey;
    std::unique_ptr<Document> m_document;
    std::vector<std::wstring> m_problems;
    bool m_readOnly = false;
    bool m_readOnlyReported = false;
    // Strings handed out by GetStringValue, so their pointers outlive the call.
    mutable StringCache m_strings;
};
} // namespace sn
