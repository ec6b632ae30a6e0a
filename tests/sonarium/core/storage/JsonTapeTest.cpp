// The tape that work units are read through: it must read every value as the general parser does,
// refuse everything the general parser refuses (and a little more), and leave the message about a
// refused file to the general parser, word for word.

#include "sonarium/core/storage/JsonDepth.h"
#include "sonarium/core/storage/StorageJson.h"

#include <gtest/gtest.h>

namespace
{
using namespace sn::storage;

// Compares a tape's value with the general parser's, recursively, in the file's order.
void ExpectSame(const JsonValue& tape, const Json& json, const std::string& where)
{
    SCOPED_TRACE(where);
    ASSERT_EQ(tape.is_object(), json.is_object());
    ASSERT_EQ(tape.is_array(), json.is_array());
    ASSERT_EQ(tape.is_string(), json.is_string());
    ASSERT_EQ(tape.is_boolean(), json.is_boolean());
    ASSERT_EQ(tape.is_number_integer(), json.is_number_integer());
    ASSERT_EQ(tape.is_number_unsigned(), json.is_number_unsigned());
    if (json.is_string())
    {
        EXPECT_EQ(tape.Text(), json.get<std::string>());
    }
    else if (json.is_boolean())
    {
        EXPECT_EQ(tape.Boolean(), json.get<bool>());
    }
    else if (json.is_number_unsigned())
    {
        EXPECT_EQ(tape.UnsignedValue(), json.get<uint64_t>());
    }
    if (json.is_number_integer())
    {
        EXPECT_EQ(tape.IntegerValue(), json.get<int64_t>());
        EXPECT_EQ(tape.dump(), json.dump());
    }
    if (json.is_array())
    {
        ASSERT_EQ(tape.size(), json.size());
        size_t i = 0;
        for (const JsonValue element : tape)
        {
            ExpectSame(element, json[i], where + "/" + std::to_string(i));
            ++i;
        }
    }
    if (json.is_object())
    {
        ASSERT_EQ(tape.size(), json.size());
        auto it = json.begin();
        tape.ForEachMember(
            [&](std::string_view key, const JsonValue& value)
            {
                EXPECT_EQ(key, it.key());
                EXPECT_TRUE(tape.contains(key));
                ExpectSame(value, it.value(), where + "/" + it.key());
                ++it;
            });
        EXPECT_FALSE(tape.contains("no such key"));
    }
}

// Every way a document can hold a value, with the corners of numbers and escapes.
const char* const kValidDocuments[] = {
    "{}",
    " [ ] ",
    "[[], {}, [[[]]], {\"a\": {}}]",
    "{\"a\": true, \"b\": false, \"c\": null, \"d\": \"\"}",
    "[0, -0, 7, -7, 1.5, -2.5e-3, 1E3, 4e+2]",
    "[18446744073709551615, 18446744073709551616, -9223372036854775808, -9223372036854775809]",
    "[\"plain\", \"tab\\there\", \"\\\"\\\\\\/\\b\\f\\n\\r\\t\", \"\\u00e9\\u20AC\", \"\\ud83c\\udfb5\", \"a\\u0000b\"]",
    "{\"na\\u00efve key\": 1, \"caf\xC3\xA9\": \"\xE2\x82\xAC\"}",
    "\r\n\t{\"deep\": [[{\"x\": [1, {\"y\": [\"z\"]}]}]]}\n\n",
};

// Refused by the tape: the general parser refuses them too, except the key given twice, which it
// reads its own way.
const char* const kRefusedDocuments[] = {
    "",
    "   ",
    "5",
    "\"text\"",
    "null",
    "{\"a\": 1,}",
    "[1, 2,]",
    "[1 2]",
    "{\"a\" 1}",
    "{a: 1}",
    "[01]",
    "[1.]",
    "[.5]",
    "[1e]",
    "[-]",
    "[+1]",
    "[tru]",
    "[True]",
    "[nul]",
    "[\"unterminated]",
    "[\"bad escape \\x\"]",
    "[\"short \\u12\"]",
    "[\"lone low \\udc00\"]",
    "[\"lone high \\ud800\"]",
    "[\"high then other \\ud800\\u0041\"]",
    "[\"raw\ttab\"]",
    "{} {}",
    "{}x",
    "{\"a\": 1, \"a\": 2}",
};
} // namespace

TEST(JsonTape, ReadsEveryValueAsTheGeneralParserDoes)
{
    for (const char* text : kValidDocuments)
    {
        SCOPED_TRACE(text);
        JsonTape tape;
        ASSERT_TRUE(tape.Parse(text, kMaxJsonDepth));
        ExpectSame(tape.Root(), Json::parse(text), "");
    }
}

TEST(JsonTape, RefusesWhatIsNotOneReadingOfJson)
{
    for (const char* text : kRefusedDocuments)
    {
        SCOPED_TRACE(text);
        JsonTape tape;
        EXPECT_FALSE(tape.Parse(text, kMaxJsonDepth));
    }
    // NUL bytes, in a string and between values.
    JsonTape tape;
    EXPECT_FALSE(tape.Parse(std::string_view("[\"a\0b\"]", 7), kMaxJsonDepth));
    EXPECT_FALSE(tape.Parse(std::string_view("[1,\0 2]", 7), kMaxJsonDepth));
    // Every document cut short, at every byte.
    const std::string whole = kValidDocuments[8];
    for (size_t length = 0; length + 3 < whole.size(); ++length)
        EXPECT_FALSE(tape.Parse(std::string_view(whole).substr(0, length), kMaxJsonDepth)) << length;
    // Nesting: as deep as the limit reads, one more does not.
    const auto nested = [](size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    EXPECT_TRUE(tape.Parse(nested(kMaxJsonDepth), kMaxJsonDepth));
    const std::string tooDeep = nested(kMaxJsonDepth + 1);
    EXPECT_FALSE(tape.Parse(tooDeep, kMaxJsonDepth));
}

// Objects with many members keep their keys in a set past a few dozen: a key given twice is found
// wherever it is, escaped or not, and distinct keys that differ in one character all read.
TEST(JsonTape, FindsAKeyGivenTwiceInALargeObject)
{
    const auto object = [](size_t members, const std::string& extra)
    {
        std::string text = "{";
        for (size_t i = 0; i < members; ++i)
            text += "\"k" + std::to_string(i) + "\": " + std::to_string(i) + ", ";
        return text + extra + "}";
    };
    JsonTape tape;
    for (size_t members : {31u, 32u, 33u, 2000u})
    {
        SCOPED_TRACE(members);
        const std::string distinct = object(members, "\"k\": [{\"k0\": 1}]");
        ASSERT_TRUE(tape.Parse(distinct, kMaxJsonDepth));
        ExpectSame(tape.Root(), Json::parse(distinct), "");
        EXPECT_FALSE(tape.Parse(object(members, "\"k0\": 0"), kMaxJsonDepth));
        EXPECT_FALSE(tape.Parse(object(members, "\"k" + std::to_string(members - 1) + "\": 0"), kMaxJsonDepth));
        EXPECT_FALSE(tape.Parse(object(members, "\"\\u006b" + std::to_string(members / 2) + "\": 0"), kMaxJsonDepth));
        // Read as the general parser reads it: the last value, at the first place.
        std::string twice = object(members, "\"k0\": \"last\"");
        ParseTape(twice, tape);
        EXPECT_EQ(tape.Root().Find("k0")->Text(), "last");
        EXPECT_EQ(tape.Root().size(), members);
    }
}

TEST(JsonTape, AFileItRefusesIsSaidAsTheGeneralParserSaysIt)
{
    const std::string deep = "{\"a\": " + std::string(600, '[') + std::string(600, ']') + "}";
    const std::vector<std::string> files = {
        "",
        "\n\n  {\"format\": \"x\",\n  \"version\": 1,",
        "{\"a\": [1, 2,]}",
        "{\"a\": \"\\ud800\"}",
        std::string("{\"a\":\n \"b\0\"}", 13),
        "\xEF\xBB\xBF{}",
        "{\"a\": 1} trailing",
        deep,
    };
    for (const std::string& file : files)
    {
        SCOPED_TRACE(file.substr(0, 40));
        std::string general;
        try
        {
            Parse(file);
            ADD_FAILURE() << "the general parser reads it";
        }
        catch (const FormatError& error)
        {
            general = error.what();
        }
        std::string bytes = file;
        JsonTape tape;
        try
        {
            ParseTape(bytes, tape);
            ADD_FAILURE() << "read through the tape";
        }
        catch (const FormatError& error)
        {
            EXPECT_EQ(error.what(), general);
        }
    }

    // A key given twice: its last value, at its first place, as the general parser keeps it.
    const std::string twice = "{\"a\": 1, \"b\": [true], \"a\": {\"c\": \"d\"}}";
    std::string bytes = twice;
    JsonTape tape;
    ParseTape(bytes, tape);
    ExpectSame(tape.Root(), Json::parse(twice), "");
    EXPECT_TRUE(tape.Root().Find("a")->is_object());
}
