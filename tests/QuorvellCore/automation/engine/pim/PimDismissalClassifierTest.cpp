// SPDX-License-Identifier: MIT
// Catches a conversation that ends though nobody asked for it, and one that does not end.
#include "QuorvellCore/automation/engine/pim/PimDismissalClassifier.h"

#include "Screens.h"
#include "ScriptedDecisionHTTP.h"

namespace quorvell {

TEST(PimDismissalClassifier, endsByAClearAnswerOnly)
{
    const std::vector<std::string> options = {"dismiss", "continue"};
    struct Row {
        const char* name;
        std::variant<Json, DecisionError> answer;
        bool isDismissed;
        bool isRead = true;
    };
    const auto intent = [](const Json& choice) { return Json{{"answers", {{"intent", choice}}}}; };
    const Row rows[] = {
        {"sure", intent(test::choiceAnswer("dismiss", options, 0.1, 0.7)), true},
        {"not quite", intent(test::choiceAnswer("dismiss", options, 1, 0.69)), false},
        {"goes on", intent(test::choiceAnswer("continue", options, 1, 1)), false},
        {"another answer", intent(test::choiceAnswer("leave", {"leave", "continue"})), false, false},
        {"no answers", Json::object(), false, false},
        {"a failure", DecisionError{DecisionError::Kind::timedOut, 0, "late"}, false, false},
    };
    for (const Row& row : rows) {
        const auto http = std::make_shared<test::ScriptedDecisionHTTP>();
        http->answerNext(row.answer);
        int told = 0;
        const PimDismissalClassifier classifier{.apiKey = "key",
            .http = http,
            .onClassification = [&](const PimSelection&) { ++told; },
            .host = "https://selector.example"};
        EXPECT_EQ(classifier.shouldDismiss("bye", {}), row.isDismissed) << row.name;
        EXPECT_EQ(told, row.isRead ? 1 : 0) << row.name;
        EXPECT_EQ(http->asked.at(0).timeout, std::chrono::seconds(2));
        EXPECT_EQ(dumpJson(http->asked.at(0).body["state"]), R"({"user_utterance":"bye"})");
        EXPECT_FALSE(classifier.shouldDismiss(" ", {}));
        EXPECT_FALSE(classifier.shouldDismiss(std::string(3'000, 'x'), {}));
        EXPECT_EQ(http->asked.size(), 1u) << "nobody is asked about nothing";
    }
}

TEST(PimDismissalClassifier, knowsPlainFarewellsByItself)
{
    const PimDismissalClassifier withoutKey;
    for (const auto& [name, lines] : test::fixtureRows("automation/farewells.txt")) {
        for (const std::string& line : lines)
            EXPECT_EQ(withoutKey.shouldDismiss(line, {}), name == "farewells") << line;
    }
    EXPECT_FALSE(withoutKey.shouldDismiss("", {}));
}

} // namespace quorvell
