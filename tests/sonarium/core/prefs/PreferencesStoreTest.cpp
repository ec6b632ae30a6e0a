#include "sonarium/core/prefs/PreferencesStore.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <climits>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{
const GUID kSampleGuid{0x01234567, 0x89ab, 0xcdef, {0x01, 0x23, 0x45, 0x67, 0x89, 0xab, 0xcd, 0xef}};

class PreferencesStoreTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_folder =
            fs::temp_directory_path() / ("sonarium-prefs-" + std::to_string(::getpid()) + "-" + info->name());
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
        m_path = m_folder / "preferences.json";
    }
    void TearDown() override
    {
        sn::PreferencesStore::Install(nullptr);
        fs::permissions(m_path, fs::perms::owner_all, m_ignore);
        fs::remove_all(m_folder, m_ignore);
    }

    void WriteFile(const std::string& text) const { std::ofstream(m_path, std::ios::binary) << text; }
    static std::string ReadText(const fs::path& path)
    {
        std::ifstream in(path, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    // A file of the right shape holding one section with the given entries.
    void WriteEntries(const nlohmann::json& entries) const
    {
        WriteFile(nlohmann::json{{"version", 1}, {"sections", {{"S", entries}}}}.dump());
    }

    fs::path m_folder;
    fs::path m_path;
    std::error_code m_ignore;
};

std::optional<std::string> Binary(const sn::PreferencesStore& store, const wchar_t* key)
{
    unsigned char* data = nullptr;
    size_t size = 99;
    if (!store.GetBinaryValue(L"S", key, &data, &size))
        return std::nullopt;
    std::unique_ptr<unsigned char[]> owned(data);
    EXPECT_NE(data, nullptr);
    return std::string(reinterpret_cast<char*>(data), size);
}

std::optional<std::wstring> String(const sn::PreferencesStore& store, const wchar_t* section,
                                   const wchar_t* key)
{
    const wchar_t* value = nullptr;
    if (!store.GetStringValue(section, key, &value))
        return std::nullopt;
    return std::wstring(value);
}

TEST_F(PreferencesStoreTest, EveryTypeSurvivesARestartAndTheFileHasTheDocumentedShape)
{
    const std::string bytes("\x00\x7f\x80\xff", 4);
    m_path = m_folder / "not" / "yet" / "preferences.json";
    {
        sn::PreferencesStore store(m_path);
        EXPECT_EQ(store.GetIntValue(L"S", L"min", 4), 4);
        store.SetBinaryValue(L"S", L"bin", reinterpret_cast<const unsigned char*>(bytes.data()),
                             bytes.size());
        store.SetBinaryValue(L"S", L"empty", nullptr, 0);
        store.SetGUIDValue(L"S", L"guid", kSampleGuid);
        store.SetIntValue(L"S", L"min", LLONG_MIN);
        store.SetIntValue(L"S", L"max", LLONG_MAX);
        store.SetStringValue(L"S", L"text", L"Ünïcødé ✓ 𝄞");
        store.SetStringValue(L"s", L"text", L"lower-case section");
        store.SetIntValue(L"S", L"retyped", 5);
        store.SetStringValue(L"S", L"retyped", L"now a string");
        EXPECT_TRUE(store.Problems().empty());
    }
    sn::PreferencesStore restarted(m_path);
    EXPECT_TRUE(restarted.Problems().empty());
    EXPECT_EQ(Binary(restarted, L"bin"), bytes);
    EXPECT_EQ(Binary(restarted, L"empty"), std::string());
    GUID guid;
    restarted.GetGUIDValue(guid, L"S", L"guid", GUID_NULL);
    EXPECT_EQ(guid, kSampleGuid);
    EXPECT_EQ(restarted.GetIntValue(L"S", L"min", 0), LLONG_MIN);
    EXPECT_EQ(restarted.GetIntValue(L"S", L"max", 0), LLONG_MAX);
    EXPECT_EQ(String(restarted, L"S", L"text"), L"Ünïcødé ✓ 𝄞");
    EXPECT_EQ(String(restarted, L"s", L"text"), L"lower-case section");
    EXPECT_EQ(String(restarted, L"S", L"Text"), std::nullopt);
    EXPECT_EQ(restarted.GetIntValue(L"S", L"retyped", -1), -1);
    EXPECT_EQ(String(restarted, L"S", L"retyped"), L"now a string");

    const auto file = nlohmann::json::parse(ReadText(m_path));
    EXPECT_EQ(file["version"], 1);
    EXPECT_EQ(file["sections"]["S"]["bin"], (nlohmann::json{{"type", "binary"}, {"value", "007f80ff"}}));
    EXPECT_EQ(file["sections"]["S"]["guid"]["value"], GuidText::ToString(kSampleGuid));
    EXPECT_EQ(file["sections"]["S"]["text"]["value"], "Ünïcødé ✓ 𝄞");
}

TEST_F(PreferencesStoreTest, AStringPointerStaysValidUntilItsKeyIsSetAgain)
{
    sn::PreferencesStore store(m_path);
    store.SetStringValue(L"S", L"a", L"first value, long enough to live on the heap");
    const wchar_t *first = nullptr, *again = nullptr;
    ASSERT_TRUE(store.GetStringValue(L"S", L"a", &first));
    ASSERT_TRUE(store.GetStringValue(L"S", L"a", &again));
    store.SetStringValue(L"S", L"b", L"another key");
    EXPECT_EQ(first, again);
    EXPECT_STREQ(first, L"first value, long enough to live on the heap");

    store.SetStringValue(L"S", L"a", L"second");
    EXPECT_EQ(String(store, L"S", L"a"), L"second");
}

TEST_F(PreferencesStoreTest, WrongTypesAndMalformedValuesReadAsAbsentAndAreKept)
{
    WriteEntries({{"oddHex", {{"type", "binary"}, {"value", "abc"}}},
                  {"badHex", {{"type", "binary"}, {"value", "zz"}}},
                  {"hexNumber", {{"type", "binary"}, {"value", 12}}},
                  {"badGuid", {{"type", "guid"}, {"value", "{not-a-guid}"}}},
                  {"textInt", {{"type", "integer"}, {"value", "12"}}},
                  {"realInt", {{"type", "integer"}, {"value", 1.5}}},
                  {"hugeInt", {{"type", "integer"}, {"value", 18446744073709551615ull}}},
                  {"noValue", {{"type", "integer"}}},
                  {"notAnEntry", 7},
                  {"unknownType", {{"type", "colour"}, {"value", "red"}}},
                  {"number", {{"type", "integer"}, {"value", 42}}}});
    sn::PreferencesStore store(m_path);
    // Each unusable value of a known type is said once; the unknown type is another version's.
    std::wstring said;
    for (const std::wstring& problem : store.Problems())
        said += problem + L"\n";
    std::wstring expected;
    for (auto [key, why] : std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>{
             {L"badGuid", L"not a GUID"},
             {L"badHex", L"a binary value must hold only hex digits"},
             {L"hexNumber", L"a binary value must be an even number of hex digits"},
             {L"hugeInt", L"not a whole number of at most 64 bits"},
             {L"noValue", L"not an entry with a type and a value"},
             {L"notAnEntry", L"not an entry with a type and a value"},
             {L"oddHex", L"a binary value must be an even number of hex digits"},
             {L"realInt", L"not a whole number of at most 64 bits"},
             {L"textInt", L"not a whole number of at most 64 bits"}})
        expected += m_path.wstring() + L": the value \"S/" + key + L"\" is not read (" + why +
                    L"): its default is used until it is set again\n";
    EXPECT_EQ(said, expected);

    for (const wchar_t* key : {L"oddHex", L"badHex", L"hexNumber", L"number", L"unknownType"})
        EXPECT_EQ(Binary(store, key), std::nullopt) << key;
    GUID guid;
    for (const wchar_t* key : {L"badGuid", L"number", L"notAnEntry"})
    {
        store.GetGUIDValue(guid, L"S", key, kSampleGuid);
        EXPECT_EQ(guid, kSampleGuid);
    }
    for (const wchar_t* key : {L"textInt", L"realInt", L"hugeInt", L"noValue", L"notAnEntry", L"oddHex"})
        EXPECT_EQ(store.GetIntValue(L"S", key, -7), -7) << key;
    EXPECT_EQ(String(store, L"S", L"number"), std::nullopt);
    EXPECT_EQ(store.GetIntValue(L"S", L"number", 0), 42);
    EXPECT_EQ(store.GetIntValue(L"Missing", L"number", 3), 3);

    // Saving another key must not drop what this version could not read.
    store.SetIntValue(L"S", L"new", 1);
    const auto file = nlohmann::json::parse(ReadText(m_path));
    EXPECT_EQ(file["sections"]["S"]["unknownType"]["value"], "red");
    EXPECT_EQ(file["sections"]["S"]["oddHex"]["value"], "abc");
}

TEST_F(PreferencesStoreTest, ADamagedFileIsMovedAsideReportedAndReplacedOnTheNextSet)
{
    const std::vector<std::pair<std::string, std::string>> damaged = {
        {"{\"version\": 1, \"sections\": {", "syntax error"},
        {"[1, 2]", "not an object"},
        {"{\"version\": 2, \"sections\": {}}", "unsupported version 2"},
        {"{\"version\": 1}", "missing key \"sections\""},
        {"{\"version\": 1, \"sections\": {\"S\": 3}}", "section \"S\" is not an object"},
    };
    for (size_t i = 0; i < damaged.size(); ++i)
    {
        const auto& [content, reason] = damaged[i];
        WriteFile(content);
        sn::PreferencesStore store(m_path);
        const fs::path aside = m_path.string() + ".corrupt-" + std::to_string(i + 1);
        EXPECT_EQ(ReadText(aside), content);
        EXPECT_FALSE(fs::exists(m_path));
        ASSERT_EQ(store.Problems().size(), 1u) << content;
        const std::wstring& problem = store.Problems().front();
        EXPECT_NE(problem.find(m_path.wstring()), std::wstring::npos) << content;
        EXPECT_NE(problem.find(aside.wstring()), std::wstring::npos) << content;
        EXPECT_NE(problem.find(std::wstring(reason.begin(), reason.end())), std::wstring::npos) << content;
        EXPECT_FALSE(store.IsReadOnly());

        store.SetIntValue(L"S", L"k", 9);
        EXPECT_EQ(sn::PreferencesStore(m_path).GetIntValue(L"S", L"k", 0), 9);
    }
}

TEST_F(PreferencesStoreTest, AnUnreadableFileIsReportedAndNeverOverwritten)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "permissions do not apply to root";
    const std::string content = R"({"version":1,"sections":{"S":{"k":{"type":"integer","value":1}}}})";
    WriteFile(content);
    fs::permissions(m_path, fs::perms::none);

    sn::PreferencesStore store(m_path);
    EXPECT_TRUE(store.IsReadOnly());
    ASSERT_EQ(store.Problems().size(), 1u);
    EXPECT_NE(store.Problems().front().find(m_path.wstring()), std::wstring::npos);

    store.SetIntValue(L"S", L"k", 2);
    store.SetIntValue(L"S", L"other", 3);
    EXPECT_EQ(store.GetIntValue(L"S", L"k", 0), 2);
    EXPECT_EQ(store.Problems().size(), 2u);
    EXPECT_FALSE(fs::exists(m_path.string() + ".corrupt-1"));
    fs::permissions(m_path, fs::perms::owner_read);
    EXPECT_EQ(ReadText(m_path), content);
}

TEST_F(PreferencesStoreTest, AFolderInPlaceOfTheFileIsReportedAndLeftAlone)
{
    fs::create_directories(m_path / "inside");
    sn::PreferencesStore store(m_path);
    EXPECT_TRUE(store.IsReadOnly());
    ASSERT_EQ(store.Problems().size(), 1u);
    EXPECT_NE(store.Problems().front().find(L"folder"), std::wstring::npos);

    store.SetStringValue(L"S", L"k", L"kept in memory");
    EXPECT_EQ(String(store, L"S", L"k"), L"kept in memory");
    EXPECT_TRUE(fs::is_directory(m_path / "inside"));
    EXPECT_FALSE(fs::exists(m_path.string() + ".corrupt-1"));
}

TEST_F(PreferencesStoreTest, FlagsUseTheirDefaultsUntilTheInstalledStoreOverridesThem)
{
    auto flags = []
    {
        return std::vector<bool>{
            InspectUserPref::GetInspectOnSingleClick(), EditorPreferences::IsEventActionNamePrefix(),
            EditorPreferences::IsEventNameCaseAllLower(), EditorPreferences::IsModifyEventNameCase(),
            EditorPreferences::IsUseActionNameForEvent()};
    };
    const std::vector<bool> defaults{true, false, false, false, true};
    EXPECT_EQ(IUserPreferences::Get(), nullptr);
    EXPECT_EQ(flags(), defaults);
    {
        sn::PreferencesStore store(m_path);
        sn::PreferencesStore::Install(&store);
        EXPECT_EQ(IUserPreferences::Get(), &store);
        EXPECT_EQ(flags(), defaults);

        for (const wchar_t* key : {L"InspectOnSingleClick", L"UseActionNameForEvent"})
            store.SetIntValue(L"Preferences", key, 0);
        for (const wchar_t* key :
             {L"EventActionNamePrefix", L"EventNameCaseAllLower", L"ModifyEventNameCase"})
            store.SetIntValue(L"Preferences", key, 1);
        EXPECT_EQ(flags(), (std::vector<bool>{false, true, true, true, false}));
    }
    // A destroyed store must not stay reachable.
    EXPECT_EQ(IUserPreferences::Get(), nullptr);
    EXPECT_EQ(flags(), defaults);
}

class EnvironmentVariable
{
public:
    EnvironmentVariable(const char* name, const char* value) : m_name(name)
    {
        if (const char* old = std::getenv(name))
            m_old = old;
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~EnvironmentVariable() { m_old ? ::setenv(m_name, m_old->c_str(), 1) : ::unsetenv(m_name); }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

TEST(PreferencesStoreDefaultPath, PrefersTheConfigHomeAndFallsBackToHome)
{
    EnvironmentVariable home("HOME", "/home/ann");
    {
        EnvironmentVariable config("XDG_CONFIG_HOME", "/cfg");
        EXPECT_EQ(sn::PreferencesStore::DefaultPath(), fs::path("/cfg/sonarium/preferences.json"));
    }
    for (const char* unusable : {static_cast<const char*>(nullptr), "", "relative"})
    {
        EnvironmentVariable config("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(sn::PreferencesStore::DefaultPath(),
                  fs::path("/home/ann/.config/sonarium/preferences.json"));
    }
}
} // namespace

TEST_F(PreferencesStoreTest, HugeValuesComeBackWholeAndAreWrittenOnce)
{
    std::string bytes(2 << 20, '\0');
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7919 >> 3);
    const std::wstring text(1 << 20, L'\u00e9');
    {
        sn::PreferencesStore store(m_path);
        store.SetBinaryValue(L"S", L"bin", reinterpret_cast<const unsigned char*>(bytes.data()),
                             bytes.size());
        store.SetStringValue(L"S", L"text", text.c_str());
        EXPECT_TRUE(store.Problems().empty());
    }
    // Hex for the bytes, two bytes of UTF-8 per character, and little else.
    EXPECT_LT(fs::file_size(m_path), 2 * bytes.size() + 2 * text.size() + 200);
    sn::PreferencesStore restarted(m_path);
    EXPECT_TRUE(restarted.Problems().empty());
    EXPECT_EQ(Binary(restarted, L"bin"), bytes);
    EXPECT_EQ(String(restarted, L"S", L"text"), text);
}
