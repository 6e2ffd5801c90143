// SPDX-License-Identifier: MIT
// The course of a conversation as lines of text.
#pragma once

#include "Quorvell/session/reports/SessionObserver.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvell {

class RecordingObserver : public SessionObserver {
public:
    void phaseChanged(SessionPhase phase) override
    {
        constexpr const char* names[] = {"idle", "connecting", "active"};
        lines.push_back(names[static_cast<int>(phase)]);
    }
    void restChanged(Doze doze) override
    {
        constexpr const char* names[] = {"awake", "dozing", "waking"};
        lines.push_back(names[static_cast<int>(doze)]);
    }
    void linkChanged(Link link) override { lines.push_back(link == Link::steady ? "steady" : "reconnecting"); }
    void helpModeChanged(HelpMode mode) override
    {
        constexpr const char* names[] = {"guide", "auto", "do"};
        lines.push_back(std::string("mode ") + names[static_cast<int>(mode)]);
    }
    void userSaid(const std::string& text, Words words) override
    {
        lines.push_back((words == Words::typed ? "typed: " : "spoken: ") + text);
    }
    void assistantWordsHeard(const std::string& delta) override { lines.push_back("words: " + delta); }
    void assistantSaid(const std::string& text) override { lines.push_back("said: " + text); }
    void thoughtChanged(const ThoughtSummary& thought) override { lines.push_back("thought: " + thought.newestLine()); }
    void planChanged(const TaskPlan& plan) override
    {
        const auto done =
            std::count_if(plan.steps.begin(), plan.steps.end(), [](const auto& step) { return step.done; });
        lines.push_back("plan " + std::to_string(done) + " of " + std::to_string(plan.steps.size()));
    }
    void toolCalled(const LiveFunctionCall& call) override { lines.push_back("call " + call.name); }
    void toolAnswered(const LiveFunctionResponse& response) override
    {
        lines.push_back("result " + dumpJson(response.response));
    }
    void problemArose(const std::string& sentence) override { lines.push_back("problem: " + sentence); }
    void turnCompleted(TurnOutcome outcome) override
    {
        constexpr const char* names[] = {"answered", "unanswered", "interrupted", "broken off"};
        lines.push_back(std::string("turn ") + names[static_cast<int>(outcome)]);
    }
    void conversationEnded(const SessionEnd& end) override
    {
        std::string line = end.isFailure ? "ended: " + end.sentence : "ended " + end.reason;
        for (const std::string& text : end.unsent)
            line += " unsent: " + text;
        lines.push_back(line);
    }

    std::vector<std::string> lines;
};

} // namespace quorvell
