// SPDX-License-Identifier: MIT
// What every room that waits for something builds on.
#include "Quorvell/loop/FreshUUID.h"
#include "Quorvell/loop/GuardedPost.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace quorvell {

using namespace std::chrono_literals;

TEST(TimerHandle, cancelsWhatItHoldsOnce)
{
    VirtualScheduler scheduler;
    int runs = 0;
    const auto timer = [&] { return scheduler.after(1s, [&] { ++runs; }); };
    TimerHandle kept = timer();
    TimerHandle taken = std::move(kept);
    kept.cancel(); // It holds nothing any more.
    taken = timer(); // The first one goes.
    static_cast<void>(timer()); // Held by nobody.
    scheduler.advance(2s);
    EXPECT_EQ(runs, 1);
    taken.cancel();
    EXPECT_FALSE(taken.isSet());
}

TEST(GuardedPost, bringsNothingToAnOwnerThatIsGone)
{
    VirtualScheduler scheduler;
    int facts = 0;
    std::optional<GuardedPost> post(scheduler);
    (*post)([&] { ++facts; });
    EXPECT_EQ(facts, 0) << "never from inside the call";
    scheduler.settle();
    EXPECT_EQ(facts, 1);
    (*post)([&] { ++facts; });
    post.reset();
    scheduler.settle();
    EXPECT_EQ(facts, 1);
}

TEST(FreshUUID, isOfTheRandomKindAndNeverTheSame)
{
    const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::string> seen;
    for (int count = 0; count < 100; ++count) {
        const std::string uuid = freshUUID();
        EXPECT_TRUE(std::regex_match(uuid, form)) << uuid;
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 100U);
}

} // namespace quorvell
