// SPDX-License-Identifier: MIT
// Catches actions that run though they harm, questions that are asked for nothing, and sentences that say something
// else.
#include "QuorvellCore/safety/SafetyGuard.h"

#include "FixtureTable.h"
#include "QuorvellCore/safety/SavedFileCheck.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <map>

namespace quorvell {

namespace {

struct Call {
    Json arguments;

    std::string text(std::size_t index) const
    {
        return index < arguments.size() ? readString(arguments[index]).value_or("") : "";
    }
    unsigned number(std::size_t index) const
    {
        return static_cast<unsigned>(readInteger(arguments[index]).value_or(0));
    }
    bool isTrue(std::size_t index) const { return readBool(arguments[index]).value_or(false); }
};

const std::map<std::string, std::function<ActionRisk(const Call&)>> operations{
    {"press", [](const Call& call) { return SafetyGuard::risk(call.text(1), call.text(2), "Notes"); }},
    {"default", [](const Call& call) { return SafetyGuard::defaultButtonRisk(call.text(1), call.text(2)); }},
    {"field", [](const Call& call) { return SafetyGuard::fieldRisk(call.text(1), call.text(2)); }},
    {"type", [](const Call& call) { return SafetyGuard::textRisk(call.text(1)); }},
    {"key", [](const Call& call) { return SafetyGuard::keyRisk(call.text(1), call.number(2), call.isTrue(3)); }},
    {"return",
        [](const Call& call) {
            return SafetyGuard::returnInTextBoxRisk(
                call.text(1), call.text(2), call.text(3), call.text(4), call.text(5));
        }},
    {"app", [](const Call& call) { return SafetyGuard::appRisk(call.text(1)); }},
    {"activate",
        [](const Call& call) { return SafetyGuard::activationRisk(call.text(1), call.text(2), call.text(3)); }},
    {"front", [](const Call& call) { return SafetyGuard::frontAppRisk(call.text(1), call.text(2)); }},
    {"site", [](const Call& call) { return SafetyGuard::websiteRisk(call.text(1)); }},
    {"money", [](const Call& call) { return SafetyGuard::siteRisk(call.text(1)); }},
    {"bar", [](const Call& call) { return SafetyGuard::addressBarRisk(call.text(1)); }},
    {"file",
        [](const Call& call) {
            const bool isUser = call.text(2) == "user";
            return SafetyGuard::openFileRisk(call.text(1), isUser ? FileMention::byUser : FileMention::byOthers);
        }},
};

std::string written(const ActionRisk& risk)
{
    constexpr std::array<const char*, 3> names{"safe", "ask: ", "never: "};
    return names[static_cast<std::size_t>(risk.kind)] + risk.text;
}

} // namespace

TEST(SafetyGuard, judgesEachActionByItsWords)
{
    for (const test::FixtureRow& row : test::fixtureRows("safety/verdicts.txt")) {
        for (std::size_t index = 0; index + 1 < row.lines.size(); ++index) {
            SCOPED_TRACE(row.name + " " + row.lines[index]);
            const Call call{parseJson(row.lines[index]).value_or(Json::array())};
            const auto operation = operations.find(call.text(0));
            ASSERT_NE(operation, operations.end());
            EXPECT_EQ(written(operation->second(call)), row.lines.back());
        }
    }
}

TEST(SafetyGuard, keepsBackWhatIsSensitive)
{
    struct Row {
        const char* label;
        const char* role;
        const char* value;
        bool isSecure;
        bool isSensitive;
    };
    const Row rows[] = {
        {"Name", "AXTextField", "Ann", false, false},
        {"Name", "AXTextField", "Ann", true, true},
        {"Name", "AXSECUREtextfield", "", false, true},
        {"IBAN", "AXTextField", "", false, true},
        {"IBAN", "AXStaticText", "DE00", false, false},
        {"Secure checkout", "AXButton", "", false, false},
        {"Total", "AXStaticText", "4111 1111 1111 1111", false, true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(SafetyGuard::isSensitiveValue(row.label, row.role, row.value, row.isSecure), row.isSensitive)
            << row.label << " " << row.role << " " << row.value;
}

TEST(SafetyGuard, findsWordsWhole)
{
    constexpr auto endings = std::to_array<std::string_view>({"", "s"});
    constexpr auto endingsWithoutNone = std::to_array<std::string_view>({"s"});
    EXPECT_TRUE(SafetyGuard::containsWord("Büro", "repay2BÜROS_x", endings));
    EXPECT_TRUE(SafetyGuard::containsWord("gift card", "gift gift \u2003\n card", endings));
    EXPECT_TRUE(SafetyGuard::containsWord("2fa", "12fa", endings));
    EXPECT_FALSE(SafetyGuard::containsWord("pay", "pay paying", endingsWithoutNone));
    EXPECT_FALSE(SafetyGuard::containsWord("pay", "payß épay", endings));
    EXPECT_FALSE(SafetyGuard::containsWord("", "any text", endings));
    EXPECT_TRUE(SafetyGuard::luhnValid("18"));
    EXPECT_FALSE(SafetyGuard::luhnValid("1 8"));
    EXPECT_FALSE(SafetyGuard::luhnValid(""));
}

/// A page of text in a label, of kinds that take minutes if the work for a place grows with what stands around it.
TEST(SafetyGuard, judgesLongTextsInTime)
{
    for (const char* part :
        {"place your ", "1 1 usdx", "a.", "ο\u0336", "\u200b", "%3", "$ ", "12fa", "\xFF", "\u00a0", "gift\n\n"}) {
        SCOPED_TRACE(part);
        std::string text;
        while (text.size() < 256 * 1024)
            text += part;
        const ActionRisk risk = SafetyGuard::risk(text + " delete", "AXButton");
        EXPECT_EQ(risk.kind, ActionRisk::Case::never);
        EXPECT_LT(risk.text.size(), 20000u);
        EXPECT_TRUE(SafetyGuard::textRisk(text).isSafe());
        EXPECT_FALSE(SafetyGuard::websiteRisk("example.com/" + text).isSafe());
        EXPECT_FALSE(SafetyGuard::isAffirmative("yes 2" + text));
    }
}

TEST(ActionRisk, theStricterCountsAndOfTwoAlikeTheFirst)
{
    const ActionRisk safe = ActionRisk::safe();
    const ActionRisk ask = ActionRisk::askFirst("a?");
    const ActionRisk never = ActionRisk::never("n");
    EXPECT_EQ(ActionRisk::strictest(safe, ask), ask);
    EXPECT_EQ(ActionRisk::strictest(never, ask), never);
    EXPECT_EQ(ActionRisk::strictest(ask, ActionRisk::askFirst("b?")), ask);
    EXPECT_EQ(ask.withQuestion("b?"), ActionRisk::askFirst("b?"));
    EXPECT_EQ(never.withQuestion("b?"), never);
    EXPECT_EQ(safe.withQuestion("b?"), safe);
}

TEST(SavedFileCheck, namesTheOneFileThatIsFinished)
{
    using Names = std::vector<std::string>;
    const auto newFile = [](const Names& before, const Names& after) {
        return SavedFileCheck::newFile(before, after).value_or("-");
    };
    EXPECT_EQ(newFile({"a.pdf"}, {"a.pdf", "b.pdf"}), "b.pdf");
    EXPECT_EQ(newFile({"a.pdf"}, {"a.pdf"}), "-");
    EXPECT_EQ(newFile({}, {"b.pdf", "c.pdf"}), "-");
    EXPECT_EQ(newFile({}, {"b.pdf.crdownload"}), "-");
    EXPECT_EQ(newFile({}, {"b.pdf", "b.Xy12.pdf.part"}), "-");
    EXPECT_EQ(newFile({}, {"b.pdf", "other.DOWNLOAD"}), "b.pdf");
}

} // namespace quorvell
