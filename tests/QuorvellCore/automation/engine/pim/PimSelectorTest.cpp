// SPDX-License-Identifier: MIT
// Catches a selector that acts though it is unsure, that presses what could do harm, that tells secrets, and a failing
// service that is asked again and again.
#include "QuorvellCore/automation/engine/pim/PimSelector.h"

#include "QuorvellCore/automation/engine/pim/PimNextStep.h"
#include "Screens.h"
#include "ScriptedDecisionHTTP.h"

#include <sstream>

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

/// "click 0.9 1": the option, its confidence and its probability; "-" where there is no answer.
Json answerOf(const std::string& cell, const std::vector<std::string>& options)
{
    std::istringstream words(cell);
    std::string choice;
    double confidence = 0;
    double probability = 0;
    words >> choice >> confidence >> probability;
    return choice == "-" ? Json() : choiceAnswer(choice, options, confidence, probability);
}

} // namespace

TEST(PimSelector, decidesOnlyWhatIsPlainAndSure)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/selections.txt", 2)) {
        SCOPED_TRACE(name);
        const std::vector<std::string> cells = test::cells(lines[0]);
        const auto http = std::make_shared<test::ScriptedDecisionHTTP>();
        http->answerNext(
            stepReply(answerOf(cells.at(0), stepOptions), answerOf(cells.at(1), targets), std::stod(cells.at(2))));
        PimSelector selector = selectorOver(http);
        int told = 0;
        selector.onTelemetry = [&](const PimUsage& usage) { told += usage == PimUsage{900, 3}; };
        selector.breaker = std::make_shared<SharedPimBreaker>([] { return std::chrono::steady_clock::time_point(); });
        const auto decision = selector.select(stepContext(), {});
        const bool isUsable = lines[1] != "unusable";
        EXPECT_EQ(shown(decision), isUsable ? lines[1] : "-");
        EXPECT_EQ(told, isUsable) << "of every reply that can be used";
        EXPECT_EQ(selector.breaker->value().failures, !isUsable);
        EXPECT_EQ(decision && decision->expected == test::changed, decision && decision->action->target);
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
    EXPECT_EQ(dumpJson(asked.body), test::automationFixture("selectorRequest.json"))
        << "without the picture, the PIN and the second element of one id";

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
    http->answerNext(test::sureReply("up"));
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
