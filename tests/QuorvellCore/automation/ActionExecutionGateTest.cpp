#include "QuorvellCore/automation/ActionExecutionGate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace quorvell {

namespace {

/// The counter has no lock of its own: the gate calls it under its.
std::function<std::string()> countingIDs()
{
    return [count = 0]() mutable { return std::to_string(++count); };
}

} // namespace

TEST(ActionExecutionGate, oneActionAtATime)
{
    ActionExecutionGate gate(countingIDs());
    const auto first = gate.begin("call_1");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->callID, "call_1");
    EXPECT_FALSE(gate.begin("call_2")) << "a second one while the first runs";
    EXPECT_TRUE(gate.isCurrent(*first));

    gate.cancel();
    EXPECT_TRUE(first->cancellation->isCancelled());
    EXPECT_FALSE(gate.isCurrent(*first));
    const auto second = gate.begin("call_1");
    ASSERT_TRUE(second) << "after a cancellation";
    EXPECT_NE(second->id, first->id);
    EXPECT_FALSE(second->cancellation->isCancelled());

    gate.finish(*first); // comes late and changes nothing
    EXPECT_TRUE(gate.isCurrent(*second));
    gate.finish(*second);
    EXPECT_FALSE(gate.isCurrent(*second));
    gate.cancel();
    EXPECT_FALSE(second->cancellation->isCancelled()) << "it had finished";
}

TEST(ActionExecutionGate, holdsBetweenThreads)
{
    ActionExecutionGate gate(countingIDs());
    int inside = 0; // guarded by nothing but the ticket: the thread sanitizer would see two holders
    int most = 0;
    {
        std::vector<std::jthread> actions;
        for (int action = 0; action < 4; ++action) {
            actions.emplace_back([&] {
                for (int round = 0; round < 2000; ++round) {
                    const auto ticket = gate.begin("call");
                    if (!ticket)
                        continue;
                    most = std::max(most, ++inside);
                    --inside;
                    gate.finish(*ticket);
                }
            });
        }
    }
    EXPECT_EQ(most, 1);

    const auto last = gate.begin("call");
    ASSERT_TRUE(last);
    const std::jthread canceller([&] { gate.cancel(); });
    while (!last->cancellation->isCancelled())
        std::this_thread::yield();
}

} // namespace quorvell
