// SPDX-License-Identifier: MIT
// Catches an answer that comes to somebody who is gone, a thread that does not end, and state that two threads share.
#include "Quorvell/actions/tasks/DecisionThread.h"

#include "PostQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quorvell {

namespace {

/// Answers only when it is told to stop, as one that waits for a service does.
StepAnswer untilStopped(const DecisionContext&, const std::stop_token& stop)
{
    std::mutex lock;
    std::condition_variable_any news;
    std::unique_lock held(lock);
    news.wait(held, stop, [] { return false; });
    return DecisionError{DecisionError::Kind::cancelled, 0, "Cancelled."};
}

StepAnswer atOnce(const DecisionContext& context, const std::stop_token&)
{
    return RoutedDecision{{AutomationDecision::Kind::finished, context.goal, {}, {}}};
}

} // namespace

TEST(DecisionThread, answersOnTheAskingThreadInOrder)
{
    test::PostQueue queue;
    DecisionThread deciding(queue.poster());
    std::string heard;
    std::thread::id heardOn;
    std::vector<StepWish> wishes;
    for (const char* goal : {"a", "b", "c"})
        wishes.push_back(deciding.ask(atOnce, {.goal = goal}, [&](const StepAnswer& answer) {
            heard += std::get<RoutedDecision>(answer).decision.message;
            heardOn = std::this_thread::get_id();
        }));
    EXPECT_TRUE(queue.runUntil([&] { return heard == "abc"; })) << heard;
    EXPECT_EQ(heardOn, std::this_thread::get_id());
}

TEST(DecisionThread, tellsADeciderThatNobodyWantsToHear)
{
    test::PostQueue queue;
    DecisionThread deciding(queue.poster());
    std::string heard;
    const auto hear = [&](const StepAnswer&) { heard += "x"; };
    StepWish waits = deciding.ask(untilStopped, {}, hear);
    StepWish behind = deciding.ask(untilStopped, {}, hear);
    StepWish last = deciding.ask(atOnce, {}, hear);
    behind.abandon();
    waits.abandon();
    EXPECT_TRUE(queue.runUntil([&] { return heard == "x"; }));
}

TEST(DecisionThread, endsWhileADeciderWaits)
{
    test::PostQueue queue;
    std::atomic<bool> isAsked = false;
    std::optional<DecisionThread> deciding(queue.poster());
    int heard = 0;
    const StepWish waits = deciding->ask(
        [&](const DecisionContext& context, const std::stop_token& stop) {
            isAsked = true;
            return untilStopped(context, stop);
        },
        {}, [&](const StepAnswer&) { ++heard; });
    const StepWish never = deciding->ask(untilStopped, {}, [&](const StepAnswer&) { ++heard; });
    while (!isAsked)
        std::this_thread::yield();
    deciding.reset();
    queue.runPosted(); // What it still had to say finds a wish that is alive.
    EXPECT_EQ(heard, 1);
}

} // namespace quorvell
