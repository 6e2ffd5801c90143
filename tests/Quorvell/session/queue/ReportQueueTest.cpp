// SPDX-License-Identifier: MIT
// Reports are taken in order, and never inside a call.
#include "Quorvell/session/queue/ReportQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quorvell {

using Lines = std::vector<std::string>;

TEST(ReportQueue, takesReportsInOrderOnceTheCallHasReturned)
{
    Lines taken;
    ReportQueue<std::string>* self = nullptr;
    ReportQueue<std::string> queue([&](const std::string& report) {
        taken.push_back(report + " begins");
        const auto call = self->enter(); // The owner's own operations enter as well.
        if (report == "first") {
            self->addFromOutside("heard meanwhile");
            self->add("led to");
        }
        taken.push_back(report + " ends");
    });
    self = &queue;
    {
        const auto outer = queue.enter();
        queue.addFromOutside("heard before");
        const auto inner = queue.enter();
        queue.add("first");
        queue.add("second");
        EXPECT_TRUE(taken.empty());
    }
    EXPECT_EQ(taken,
        (Lines{"first begins", "first ends", "second begins", "second ends", "led to begins", "led to ends",
            "heard before begins", "heard before ends", "heard meanwhile begins", "heard meanwhile ends"}));
    taken.clear();
    queue.addFromOutside("alone");
    EXPECT_EQ(taken, (Lines{"alone begins", "alone ends"})) << "nothing is under way";
}

TEST(ReportQueue, takesNothingOnceClosed)
{
    int taken = 0;
    ReportQueue<std::unique_ptr<int>> queue([&](const std::unique_ptr<int>&) { ++taken; });
    queue.add(std::make_unique<int>(1));
    queue.close();
    queue.add(std::make_unique<int>(2));
    EXPECT_EQ(taken, 1);
}

} // namespace quorvell
