// SPDX-License-Identifier: MIT
// The way to a made-up screen, with a user who types.
#pragma once

#include "FakeScreen.h"
#include "Quorvell/actions/pipeline/ActionPipeline.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "Quorvell/session/reports/ActionWatchGroup.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <map>
#include <string>
#include <vector>

namespace quorvell {

using namespace std::chrono_literals;

/// "Send" and "Pay" ask first, "Buy" is never pressed; the rest is safe.
struct ActionBench {
    static std::string question(const std::string& label) { return "Shall I press “" + label + "”?"; }

    ActionVerdict judge(const ProposedAction& proposed, const ScreenLook& look)
    {
        const auto* step = std::get_if<AutomationAction>(&proposed.action);
        const auto* element = step && step->target ? look.observation.usableTarget(*step->target) : nullptr;
        const std::string label = element ? element->label : "";
        if (label == "Buy" || (label == "Send" && isNever))
            return {ActionRisk::never("Buying is theirs alone."), ActionVerdict::Reason::guard};
        const auto asked = questions.find(label);
        if (asked == questions.end())
            return {};
        return {ActionRisk::askFirst(asked->second), ActionVerdict::Reason::guard};
    }
    static std::optional<std::string> problem(const ProposedAction& proposed, const ScreenLook& look)
    {
        const auto* step = std::get_if<AutomationAction>(&proposed.action);
        return !step || step->isValid(look.observation) ? std::nullopt : std::optional<std::string>("Not possible.");
    }

    void type(const std::string& words)
    {
        // Later than the question, which was shown at this very moment.
        scheduler.advance(1ms);
        watch.userSaid({.text = words, .ownWords = words, .how = HeardUtterance::How::typed, .at = scheduler.now()});
    }
    /// Proposes to press the element of this name, as it was numbered last.
    void press(const std::string& label)
    {
        const ScreenLook& look = *pipeline.latestLook();
        ProposedAction action{.callID = "press", .tool = "click"};
        action.action = AutomationAction{.tool = AutomationAction::Tool::click, .target = idOn(look, label)};
        action.revision = look.observation.revision;
        run(std::move(action));
    }
    void run(ProposedAction action)
    {
        pipeline.run(std::move(action), [this](ActionResult ended) { results.push_back(std::move(ended)); });
    }
    void look()
    {
        pipeline.look({}, [](const auto&) {});
        scheduler.settle();
    }
    static std::string idOn(const ScreenLook& look, const std::string& label)
    {
        for (const AutomationCandidate& candidate : look.observation.candidates)
            if (candidate.label == label)
                return candidate.id;
        return "none";
    }

    VirtualScheduler scheduler;
    FakeScreen screen{scheduler};
    WrittenLog log;
    int ids = 0;
    ActionExecutionGate gate{[this] { return std::to_string(++ids); }};
    HeardWords consent{{.scheduler = scheduler}};
    std::map<std::string, std::string> questions{{"Send", question("Send")}, {"Pay", question("Pay")}};
    ActionPipeline pipeline{{.screen = screen,
                                .scheduler = scheduler,
                                .gate = gate,
                                .consent = consent,
                                .log = log,
                                .problem = problem,
                                .judgedForm = nullptr,
                                .originsOf = nullptr,
                                .judge = [this](const auto& action, const auto& look) { return judge(action, look); }},
        HelpMode::do_};
    ActionWatchGroup watch{{&consent, &pipeline}};
    bool isNever = false; ///< "Send" is as "Buy".
    std::vector<ActionResult> results; ///< Of what was run, in order.
};

} // namespace quorvell
