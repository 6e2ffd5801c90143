// SPDX-License-Identifier: MIT
// Catches answers of the classifier that contradict themselves and are believed, and a breaker that never opens or
// closes.
#include "QuorvellCore/automation/engine/pim/PimChoice.h"

#include "FixtureTable.h"
#include "QuorvellCore/automation/engine/pim/PimMode.h"
#include "QuorvellCore/automation/engine/pim/PimUsage.h"
#include "QuorvellCore/automation/engine/pim/SharedPimBreaker.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <thread>

namespace quorvell {

TEST(PimChoice, believesOnlyWhatAddsUp)
{
    const std::vector<test::FixtureRow> rows = test::fixtureRows("automation/choices.txt");
    for (const test::FixtureRow& row : rows) {
        for (const std::string& line : row.lines) {
            const auto read = PimChoice::choice(parseJson(line).value_or(Json()), {"a", "b"});
            EXPECT_EQ(read.has_value(), row.name.starts_with("read")) << line;
        }
    }
    const auto first = PimChoice::choice(parseJson(rows.at(0).lines.at(0)).value_or(Json()), {"a", "b"});
    EXPECT_EQ(first, (PimSelection{"a", 0.5, 0.7, std::nullopt}));
}

TEST(PimUsage, isReadWhole)
{
    const auto read = [](const char* text) { return PimUsage::read(parseJson(text).value_or(Json())); };
    EXPECT_EQ(read(R"({"usage":{"input_tokens":7,"output_tokens":2}})"), (PimUsage{7, 2}));
    for (const char* text : {R"({"usage":{"input_tokens":7}})", R"({"usage":{"input_tokens":-7,"output_tokens":2}})",
             R"({"usage":[]})", "[]"})
        EXPECT_FALSE(read(text)) << text;
    for (const PimMode mode : allPimModes)
        EXPECT_EQ(pimMode(storedText(mode)), mode);
    EXPECT_FALSE(pimMode("on"));
}

TEST(PimBreaker, opensAfterThreeInARowForAMinute)
{
    using namespace std::chrono_literals;
    auto now = std::chrono::steady_clock::time_point(100s);
    SharedPimBreaker breaker([&] { return now; });
    for (const bool answered : {false, false, true, false, false})
        breaker.record(answered);
    EXPECT_TRUE(breaker.allows()) << "an answer begins the count anew";
    breaker.record(false);
    EXPECT_EQ(breaker.value(), (PimBreaker{0, now + 60s}));
    now += 60s - 1ns;
    EXPECT_FALSE(breaker.allows());
    now += 1ns;
    EXPECT_TRUE(breaker.allows()) << "at the very end of the pause";
    breaker.record(true);
    EXPECT_EQ(breaker.value(), PimBreaker{});
}

TEST(PimBreaker, isSharedByThreads)
{
    SharedPimBreaker breaker([] { return std::chrono::steady_clock::time_point(); });
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round) {
                if (breaker.allows())
                    breaker.record(round % 7 != 0);
            }
        });
    }
    threads.clear();
    EXPECT_LT(breaker.value().failures, PimBreaker::failuresToOpen);
}

} // namespace quorvell
