// SPDX-License-Identifier: MIT
// Catches a selector that acts though it is unsure, that presses what could do harm, that tells secrets, and a failing
// service that is asked again and again.
#include "QuorvellCore/automation/engine/pim/PimSelector.h"

#include "QuorvellCore/automation/engine/pim/PimNextStep.h"
#include "Screens.h"
#include "ScriptedDecisionHTTP.h"

#include <gtest/gtest.h>

#include <fstream>

namespace quorvell {

namespace {

using test::choiceAnswer;
using test::element;
using test::stepOptions;
using test::stepReply;

const std::vector<std::string> targets = {"More", "Delete", "Dim", "none"};

DecisionContext stepContext()
{
    AutomationCandidate disabled = element("AXButton", "Dim");
    disabled.enabled = false;
    return {"Open the list",
        test::screenWith({element("AXButton", "More"), element("AXButton", "Delete"), std::move(disabled)}), {}, {}};
}

PimSelector selectorOver(const std::shared_ptr<test::ScriptedDecisionHTTP>& http)
{
    return {.apiKey = "key", .http = http, .host = "https://selector.example/"};
}

std::string shown(const std::optional<AutomationDecision>& decision)
{
    return decision ? decision->message + " " + dumpJson(decision->action->arguments()) : "-";
}

} // namespace

TEST(PimSelector, decidesOnlyWhatIsPlainAndSure)
{
    const Json click = choiceAnswer("click", stepOptions);
    const Json more = choiceAnswer("More", targets);
    const std::string clicks = R"(I'll open More. {"element_id":"More"})";
    struct Row {
        const char* name;
        Json reply;
        std::string decision;
        bool isUsable = true;
    };
    const Row rows[] = {
        {"a click", stepReply(click, more), clicks},
        {"up", stepReply(choiceAnswer("up", stepOptions), more), R"(I'll look further up. {"direction":"up"})"},
        {"down, whatever the target is", stepReply(choiceAnswer("down", stepOptions), Json()),
            R"(I'll look further down. {"direction":"down"})"},
        {"to be planned", stepReply(choiceAnswer("plan", stepOptions), more), "-"},
        {"as sure as it has to be", stepReply(choiceAnswer("click", stepOptions, 0.9, 0.95), more), clicks},
        {"not confident", stepReply(choiceAnswer("click", stepOptions, 0.89, 1), more), "-"},
        {"not probable", stepReply(choiceAnswer("click", stepOptions, 1, 0.94), more), "-"},
        {"a target not confident", stepReply(click, choiceAnswer("More", targets, 0.89, 1)), "-"},
        {"a target not probable", stepReply(click, choiceAnswer("More", targets, 1, 0.94)), "-"},
        {"a scroll not probable", stepReply(choiceAnswer("up", stepOptions, 1, 0.94), more), "-"},
        {"hardly sensitive", stepReply(click, more, 0.0999), clicks},
        {"sensitive", stepReply(click, more, 0.1), "-"},
        {"what the guard forbids", stepReply(click, choiceAnswer("Delete", targets)), "-"},
        {"a disabled element", stepReply(click, choiceAnswer("Dim", targets)), "-"},
        {"no target", stepReply(click, choiceAnswer("none", targets)), "-"},
        {"a target that is not there", stepReply(click, choiceAnswer("Pay", {"Pay", "none"})), "-", false},
        {"a click without a target", stepReply(click, Json()), "-", false},
        {"no number for sensitive", {{"answers", {{"operation", click}, {"target", more}}}}, "-", false},
        {"beyond 1", stepReply(click, more, 1.5), "-", false},
        {"no operation", stepReply(Json(), more), "-", false},
        {"nothing", Json::object(), "-", false},
        {"no object", Json(7), "-", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto http = std::make_shared<test::ScriptedDecisionHTTP>();
        http->answerNext(row.reply);
        PimSelector selector = selectorOver(http);
        std::vector<PimUsage> used;
        selector.onTelemetry = [&](const PimUsage& usage) { used.push_back(usage); };
        selector.breaker = std::make_shared<SharedPimBreaker>([] { return std::chrono::steady_clock::time_point(); });
        const auto decision = selector.select(stepContext(), {});
        EXPECT_EQ(shown(decision), row.decision);
        EXPECT_EQ(used.size(), row.isUsable ? 1u : 0u) << "told of every reply that can be used";
        EXPECT_EQ(selector.breaker->value().failures, row.isUsable ? 0 : 1);
        const bool isClick = decision && decision->action->target;
        const Postcondition changed{.kind = Postcondition::Kind::changed};
        EXPECT_EQ(decision && decision->expected == changed, isClick);
    }
}

TEST(PimSelector, asksWhatItsServiceExpects)
{
    const auto http = std::make_shared<test::ScriptedDecisionHTTP>();
    DecisionContext context = stepContext();
    context.observation = test::screenWith({element("AXButton", "More"), element("AXTextField", "PIN", "1234"),
        element("AXButton", "More"), element("AXButton", "none")});
    context.image = Bytes{1, 2, 3};
    EXPECT_FALSE(selectorOver(http).select(context, {}));
    ASSERT_EQ(http->asked.size(), 1u);
    const auto& asked = http->asked.front();
    EXPECT_EQ(asked.url, "https://selector.example/v1/systemone");
    EXPECT_EQ(asked.headers, (std::vector<std::pair<std::string, std::string>>{{"Authorization", "Bearer key"}}));
    EXPECT_EQ(asked.timeout, std::chrono::seconds(3));
    std::ifstream file(QUORVELL_FIXTURES "/automation/selectorRequest.json");
    std::string expected;
    std::getline(file, expected);
    EXPECT_EQ(dumpJson(asked.body), expected) << "without the picture, the PIN and the second element of one id";

    AutomationObservation many = test::screenWith({});
    for (int number = 0; number < 200; ++number)
        many.candidates.push_back(element("AXLink", std::to_string(number)));
    EXPECT_FALSE(selectorOver(http).select({"", many, {}, {}}, {}));
    const Json& body = http->asked.back().body;
    EXPECT_EQ(body["state"]["observation"]["candidates"].size(), 150u);
    EXPECT_EQ(body["questions"]["target"]["criteria"].size(), 151u);
    EXPECT_FALSE(body["questions"]["target"]["criteria"].contains("150"));
}

TEST(PimSelector, leavesAFailingServiceAlone)
{
    using namespace std::chrono_literals;
    auto now = std::chrono::steady_clock::time_point(1s);
    const auto http = std::make_shared<test::ScriptedDecisionHTTP>();
    PimSelector selector = selectorOver(http);
    selector.breaker = std::make_shared<SharedPimBreaker>([&] { return now; });
    std::stop_source stop;
    http->whileAsked = [&] { stop.request_stop(); };
    for (int round = 0; round < 5; ++round)
        EXPECT_FALSE(selector.select(stepContext(), stop.get_token()));
    EXPECT_EQ(http->asked.size(), 1u) << "once stopped nobody is asked";
    EXPECT_EQ(selector.breaker->value(), PimBreaker{}) << "being stopped is no failure of the service";

    http->whileAsked = nullptr;
    for (int round = 0; round < 5; ++round)
        EXPECT_FALSE(selector.select(stepContext(), {}));
    EXPECT_EQ(http->asked.size(), 4u);
    now += 60s;
    http->answerNext(stepReply(choiceAnswer("up", stepOptions), Json()));
    EXPECT_TRUE(selector.select(stepContext(), {}));
    for (PimSelector broken : {PimSelector{}, PimSelector{.apiKey = "key", .http = http},
             PimSelector{.http = http, .host = "https://selector.example"}})
        EXPECT_FALSE(broken.select(stepContext(), {})) << "not set up";
    EXPECT_EQ(http->asked.size(), 5u);
}

TEST(PimNextStep, followsWhatThePlannerNamed)
{
    EXPECT_EQ(PimNextStep::goal(" Buy milk \n", "click More"), "Buy milk\nNext step: click More");
    EXPECT_EQ(PimNextStep::goal(" \n", "click More"), "Next step: click More");
    EXPECT_EQ(PimNextStep::goal(std::string(400, 'x'), "y"), std::string(300, 'x') + "\nNext step: y");

    EXPECT_EQ(PimNextStep::context(stepContext(), " click\n More ").value_or(DecisionContext{}).goal,
        "Open the list\nNext step: click More");
    for (const std::string& next : {std::string(" \n"), std::string(501, 'x'), std::string(1'000'000, 'x')})
        EXPECT_FALSE(PimNextStep::context(stepContext(), next));

    const auto http = std::make_shared<test::ScriptedDecisionHTTP>();
    const PimSelector next = PimNextStep::selector(selectorOver(http));
    EXPECT_EQ(std::tuple(next.apiKey, next.host, next.timeout),
        std::tuple("key", "https://selector.example/", std::chrono::milliseconds(1500)));
    for (const auto& [sensitivity, isChosen] : {std::pair(0.29, true), std::pair(0.3, false)}) {
        http->answerNext(stepReply(choiceAnswer("click", stepOptions), choiceAnswer("More", targets), sensitivity));
        EXPECT_EQ(next.select(stepContext(), {}).has_value(), isChosen) << sensitivity;
    }
    EXPECT_EQ(http->asked.back().body["questions"]["operation"]["instructions"], PimNextStep::operationInstructions);
    EXPECT_EQ(http->asked.back().body["questions"]["target"]["instructions"], PimNextStep::targetInstructions);
}

} // namespace quorvell
