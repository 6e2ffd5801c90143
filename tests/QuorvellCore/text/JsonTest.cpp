// SPDX-License-Identifier: MIT
// Catches JSON beyond its bounds taken, bad text written, values bent to another type.
#include "QuorvellCore/text/Json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {
namespace {

TEST(Json, whatIsRead)
{
    struct Row {
        const char* name;
        std::string text;
        std::optional<std::string> dumped; ///< Absent when refused.
    };
    const Row rows[] = {
        {"a fragment", "7", "7"},
        {"key order stays", R"({"b":1,"a":[true,null]})", R"({"b":1,"a":[true,null]})"},
        {"the last of two equal keys", R"({"a":1,"b":2,"a":3})", R"({"a":3,"b":2})"},
        {"a slash is not escaped", R"("a\/b")", R"("a/b")"},
        {"brackets in strings are no depth", '"' + std::string(500, '[') + '"', '"' + std::string(500, '[') + '"'},
        {"an escaped quote does not end a string", R"(["\"[[[[[[", 1])", R"(["\"[[[[[[",1])"},
        {"malformed", "{\"a\":}", {}},
        {"two values", "1 2", {}},
        {"nothing", "", {}},
        {"bad UTF-8", "\"\xff\"", {}},
        {"half a surrogate pair", R"("\ud800")", {}},
        {"a number beyond every type", "1e999", {}},
        {"as deep as allowed", std::string(64, '[') + std::string(64, ']'),
            std::string(64, '[') + std::string(64, ']')},
        {"one deeper", std::string(65, '[') + std::string(65, ']'), {}},
        {"deep and never closed", std::string(100'000, '{'), {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto value = parseJson(row.text);
        EXPECT_EQ(value ? std::optional(dumpJson(*value)) : std::nullopt, row.dumped);
    }
}

TEST(Json, limitsOfSize)
{
    EXPECT_TRUE(parseJson("[1,2]", {.maximumBytes = 5}));
    EXPECT_FALSE(parseJson("[1,2]", {.maximumBytes = 4}));
    EXPECT_TRUE(parseJson(R"({"a":[1,2,3,4],"b":2})", {.maximumMembers = 2}));
    EXPECT_FALSE(parseJson(R"([{"a":1,"b":2,"c":3}])", {.maximumMembers = 2}));
}

TEST(Json, dumpsBadTextRepaired)
{
    EXPECT_EQ(dumpJson(Json("a\xff")), "\"a\xEF\xBF\xBD\"");
}

TEST(Json, sortsKeysAtEveryDepth)
{
    const auto value = parseJson(R"({"b":[{"z":1,"a\n":{}},2],"é":0,"Z":[],"a":""})");
    ASSERT_TRUE(value);
    EXPECT_EQ(dumpSortedJson(*value), R"({"Z":[],"a":"","b":[{"a\n":{},"z":1},2],"é":0})");
}

TEST(Json, readersNeverBend)
{
    struct Row {
        const char* text;
        std::optional<std::int64_t> integer;
        std::optional<double> number;
    };
    const Row rows[] = {
        {"7", 7, 7.0},
        {"-7", -7, -7.0},
        {"7.0", 7, 7.0},
        {"7.5", {}, 7.5},
        {"9223372036854775807", INT64_MAX, 9223372036854775807.0},
        {"9223372036854775808", {}, 9223372036854775808.0},
        {"-9223372036854775808", INT64_MIN, -9223372036854775808.0},
        {"9223372036854775808.0", {}, 9223372036854775808.0},
        {"1e300", {}, 1e300},
        {"\"7\"", {}, {}},
        {"true", {}, {}},
        {"null", {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto value = parseJson(row.text);
        ASSERT_TRUE(value);
        EXPECT_EQ(readInteger(*value), row.integer);
        EXPECT_EQ(readNumber(*value), row.number);
    }
}

TEST(Json, membersOfAnObject)
{
    const auto object = parseJson(R"({"text":"a","flag":false,"list":["a","b"],"mixed":["a",1],"none":null})");
    ASSERT_TRUE(object);
    EXPECT_EQ(readString(*object, "text"), "a");
    EXPECT_EQ(readBool(*object, "flag"), false);
    EXPECT_EQ(readStrings(*object, "list"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(readStrings(*object, "mixed"), std::nullopt);
    EXPECT_EQ(readString(*object, "none"), std::nullopt);
    EXPECT_EQ(readString(*object, "absent"), std::nullopt);
    EXPECT_EQ(readBool(*object, "text"), std::nullopt);
    EXPECT_EQ(memberOf(Json::array({1}), "text"), nullptr);
}

} // namespace
} // namespace quorvell
