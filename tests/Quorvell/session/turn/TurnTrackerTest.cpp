// SPDX-License-Identifier: MIT
// When a turn is over that nobody declares over.
// Catches turns taken for over too early or never.
#include "Quorvell/session/turn/TurnTracker.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvell {

using namespace std::chrono_literals;

TEST(TurnTracker, isCompleteOnlyOnceAnsweredIdleAndQuiet)
{
    using Step = std::function<void(TurnTracker&)>;
    const Step requested = [](TurnTracker& turn) { turn.requested(); };
    const Step heard = [](TurnTracker& turn) { turn.heard(); };
    const Step started = [](TurnTracker& turn) { turn.backendStarted(); };
    const Step finished = [](TurnTracker& turn) { turn.backendFinished(); };
    const Step closed = [](TurnTracker& turn) { turn.close(); };
    const auto answered = [](std::chrono::milliseconds until) {
        return Step([until](TurnTracker& turn) { turn.answered(until); });
    };
    struct Row {
        const char* name;
        std::vector<Step> steps;
        std::optional<SessionTime> completeAt;
    };
    const Row rows[] = {
        {"nothing asked", {}, {}},
        {"asked, not answered", {requested}, {}},
        {"answered without the backend", {requested, answered(100ms)}, 800ms},
        {"the voice says it will look, the tool still runs", {requested, answered(100ms), started}, {}},
        {"the backend finished without a word", {requested, started, finished}, {}},
        {"the answer after the tool", {requested, started, finished, answered(500ms)}, 1200ms},
        {"the backend finishes after the answer", {requested, started, answered(500ms), finished}, 1200ms},
        {"sound that plays longer counts", {requested, answered(5000ms), answered(300ms)}, 5700ms},
        {"a new request takes the answer back", {requested, answered(100ms), requested}, {}},
        {"late words of the old request do not", {requested, answered(100ms), heard}, 800ms},
        {"heard words are a request", {heard}, {}},
        {"a voice that begins by itself", {answered(100ms)}, 800ms},
        {"closed", {requested, answered(100ms), closed}, {}},
        {"a backend that works on outlasts the turn", {requested, started, closed, answered(100ms)}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        TurnTracker turn;
        for (const Step& step : row.steps)
            step(turn);
        EXPECT_EQ(turn.completeAt(), row.completeAt);
    }
}

} // namespace quorvell
