// SPDX-License-Identifier: MIT
// Catches a conversation that ends before the goodbye is answered, amid work, or though the user said something else.
#include "Quorvell/session/farewell/Farewell.h"

#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvell {
namespace {

TEST(Farewell, endsTheConversationOnceItIsAnsweredAndNothingIsOpen)
{
    using Outcome = SessionObserver::TurnOutcome;
    VirtualScheduler scheduler;
    WrittenLog log;
    bool isTurnOpen = false;
    bool isWorking = false;
    int left = 0;
    std::vector<std::function<void(bool)>> asked;
    Farewell farewell({scheduler, log, [&](const std::string&, auto answer) { asked.push_back(std::move(answer)); },
        [&] { return isTurnOpen; }, [&] { return isWorking; }, [&] { ++left; }});
    const auto say = [&](const char* words, bool isFarewell) {
        isTurnOpen = true;
        farewell.userSaid({words, words});
        asked.back()(isFarewell);
        scheduler.settle();
    };
    const auto complete = [&](Outcome outcome) {
        isTurnOpen = false;
        farewell.turnCompleted(outcome);
        scheduler.settle();
    };
    struct Row {
        const char* name;
        std::function<void()> course;
        int left;
    };
    const Row rows[] = {
        {"answered", [&] { say("goodbye", true), complete(Outcome::answered); }, 1},
        {"not answered yet", [&] { say("goodbye", true); }, 0},
        {"no answer comes", [&] { say("goodbye", true), complete(Outcome::unanswered); }, 1},
        {"no goodbye", [&] { say("stop the music", false), complete(Outcome::answered); }, 0},
        {"spoken over", [&] { say("goodbye", true), complete(Outcome::interrupted), complete(Outcome::answered); }, 0},
        {"something else behind it",
            [&] { say("goodbye", true), say("what time is it", false), complete(Outcome::answered); }, 0},
        {"something else between the answer and the end",
            [&] {
                say("goodbye", true);
                isTurnOpen = false;
                farewell.turnCompleted(Outcome::answered);
                say("wait", false);
                complete(Outcome::answered);
            },
            0},
        {"something is being done",
            [&] {
                isWorking = true;
                say("goodbye", true), complete(Outcome::answered);
                isWorking = false;
                EXPECT_EQ(left, 0);
                complete(Outcome::answered);
            },
            1},
        {"known only after the turn",
            [&] {
                isTurnOpen = true;
                farewell.userSaid({"goodbye", "goodbye"});
                complete(Outcome::answered);
                asked.back()(true);
                scheduler.settle();
            },
            1},
        {"known only after they went on",
            [&] {
                farewell.userSaid({"goodbye", "goodbye"});
                const auto late = asked.back();
                say("one more thing", false);
                late(true);
                complete(Outcome::answered);
            },
            0},
        {"pasted",
            [&] {
                const std::size_t before = asked.size();
                farewell.userSaid({"goodbye", "", HeardUtterance::How::typed});
                EXPECT_EQ(asked.size(), before);
            },
            0},
        {"ended otherwise", [&] { say("goodbye", true), farewell.ended(), complete(Outcome::answered); }, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        left = 0;
        isTurnOpen = isWorking = false;
        row.course();
        EXPECT_EQ(left, row.left);
        farewell.ended();
    }
}

} // namespace
} // namespace quorvell
