// SPDX-License-Identifier: MIT
// Catches a plan that is called finished on a model's word, and one that is finished and never gets through.
#include "QuorvellCore/automation/evidence/CompletionGate.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(CompletionGate, wantsEvidence)
{
    using Verdict = CompletionGate::Verdict;
    using End = LastStep::End;
    const TaskPlan done{"Order shoes", {{"Search", true}, {"Order", true}}, {}, "The order is confirmed"};
    const TaskPlan open{"Order shoes", {{"Search", true}, {"Order", false}}, {}, "The order is confirmed"};
    TaskPlan vague = done;
    vague.doneWhen.clear();
    const LastStep verified{End::worked, Postcondition::Kind::labelAppeared};
    const AutomationObservation before{.app = "Shop", .window = "3 unread messages"};
    const AutomationObservation after{.app = "Shop", .window = "Your order was confirmed: order number 4711"};
    struct Row {
        const char* name;
        TaskPlan plan;
        const char* evidence;
        std::optional<LastStep> last;
        const AutomationObservation* look;
        Verdict verdict;
    };
    const Row rows[] = {
        {"no plan", {}, "The order is confirmed", verified, &after, Verdict::noPlan},
        {"an open step", open, "The order is confirmed", verified, &after, Verdict::openSteps},
        {"a step that was seen to work", done, "", verified, nullptr, Verdict::finished},
        {"nothing done, no look", done, "I ordered them", {}, nullptr, Verdict::needsLook},
        {"something changed", done, "", LastStep{End::worked, Postcondition::Kind::changed}, nullptr,
            Verdict::needsLook},
        {"something worked, nobody knows what", done, "", LastStep{End::worked, {}}, nullptr, Verdict::needsLook},
        {"a step that failed", done, "", LastStep{End::unproven, Postcondition::Kind::app}, nullptr,
            Verdict::needsLook},
        {"a question is open", done, "", LastStep{End::waits, Postcondition::Kind::app}, &after, Verdict::waitsForYes},
        {"the look shows it", done, "", LastStep{End::unproven, {}}, &after, Verdict::finished},
        {"the look does not", done, "The order is confirmed", {}, &before, Verdict::notShown},
        {"the look shows the evidence, not the plan's", done, "3 unread messages", {}, &before, Verdict::notShown},
        {"the plan says nothing", vague, "Order number 4711", {}, &after, Verdict::finished},
        {"nobody says anything", vague, "", {}, &after, Verdict::notShown},
    };
    for (const Row& row : rows) {
        const auto gate = CompletionGate::judge(row.plan, row.evidence, row.last, row.look);
        EXPECT_EQ(gate.verdict, row.verdict) << row.name;
        EXPECT_EQ(gate.missing.empty(), row.verdict == Verdict::finished) << row.name;
    }
    EXPECT_NE(CompletionGate::judge(open, "", {}, nullptr).missing.find("2. Order"), std::string::npos);
}

} // namespace quorvell
