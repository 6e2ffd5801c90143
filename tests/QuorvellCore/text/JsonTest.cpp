// SPDX-License-Identifier: MIT
// Catches JSON beyond its bounds taken, bad text written, values bent to another type.
#include "QuorvellCore/text/Json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <tuple>

namespace quorvell {

TEST(Json, whatIsRead)
{
    const std::string deepest = std::string(64, '[') + std::string(64, ']');
    const std::string brackets = '"' + std::string(500, '[') + '"'; // In a text they are no depth.
    const std::pair<std::string, std::string> rows[] = {{"7", "7"},
        {R"({"b":1,"a":[true,null]})", R"({"b":1,"a":[true,null]})"}, {R"({"a":1,"b":2,"a":3})", R"({"a":3,"b":2})"},
        {R"("a\/b")", R"("a/b")"}, {brackets, brackets}, {R"(["\"[[[[[[", 1])", R"(["\"[[[[[[",1])"},
        {deepest, deepest}};
    for (const auto& [text, dumped] : rows) {
        const auto value = parseJson(text);
        EXPECT_EQ(value ? dumpJson(*value) : "refused", dumped) << text;
    }
    for (const std::string& text : {std::string("{\"a\":}"), std::string("1 2"), std::string(), std::string("\"\xff\""),
             std::string(R"("\ud800")"), std::string("1e999"), "[" + deepest + "]", std::string(100'000, '{')})
        EXPECT_FALSE(parseJson(text)) << text.substr(0, 80);
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
    const std::tuple<const char*, std::optional<std::int64_t>, std::optional<double>> rows[] = {{"7", 7, 7.0},
        {"-7", -7, -7.0}, {"7.0", 7, 7.0}, {"7.5", {}, 7.5}, {"9223372036854775807", INT64_MAX, 9223372036854775807.0},
        {"9223372036854775808", {}, 9223372036854775808.0}, {"-9223372036854775808", INT64_MIN, -9223372036854775808.0},
        {"9223372036854775808.0", {}, 9223372036854775808.0}, {"1e300", {}, 1e300}, {"\"7\"", {}, {}}, {"true", {}, {}},
        {"null", {}, {}}};
    for (const auto& [text, integer, number] : rows) {
        SCOPED_TRACE(text);
        const auto value = parseJson(text);
        ASSERT_TRUE(value);
        EXPECT_EQ(readInteger(*value), integer);
        EXPECT_EQ(readNumber(*value), number);
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

} // namespace quorvell
