// SPDX-License-Identifier: MIT
// Catches two actions at once, and a cancelled one that goes on.
#include "QuorvellCore/automation/ActionExecutionGate.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace quorvell {

TEST(ActionExecutionGate, oneActionAtATime)
{
    ActionExecutionGate gate([count = 0]() mutable { return std::to_string(++count); });
    const auto first = gate.begin("call_1");
    ASSERT_TRUE(first);
    EXPECT_FALSE(gate.begin("call_2")) << "a second one while the first runs";
    EXPECT_TRUE(gate.isCurrent(*first));

    gate.cancel();
    EXPECT_TRUE(first->cancellation->isCancelled());
    EXPECT_FALSE(gate.isCurrent(*first));
    const auto second = gate.begin("call_1");
    ASSERT_TRUE(second) << "after a cancellation";
    EXPECT_FALSE(second->cancellation->isCancelled());
    gate.finish(*first); // comes late and changes nothing
    EXPECT_TRUE(gate.isCurrent(*second));
    gate.finish(*second);
    gate.cancel();
    EXPECT_FALSE(gate.isCurrent(*second) || second->cancellation->isCancelled()) << "it had finished";
}

TEST(ActionExecutionGate, holdsBetweenThreads)
{
    ActionExecutionGate gate([count = 0]() mutable { return std::to_string(++count); });
    int inside = 0; // guarded by nothing but the ticket: the thread sanitizer would see two holders
    std::vector<std::jthread> actions;
    for (int action = 0; action < 4; ++action) {
        actions.emplace_back([&] {
            for (int round = 0; round < 2000; ++round) {
                if (const auto ticket = gate.begin("call")) {
                    EXPECT_EQ(++inside, 1);
                    --inside;
                    gate.finish(*ticket);
                }
            }
        });
    }
    actions.clear();
    const auto last = gate.begin("call");
    const std::jthread canceller([&] { gate.cancel(); });
    while (!last->cancellation->isCancelled())
        std::this_thread::yield();
}

} // namespace quorvell
