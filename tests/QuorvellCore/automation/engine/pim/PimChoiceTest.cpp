// SPDX-License-Identifier: MIT
// Catches answers of the classifier that contradict themselves and are believed, and a breaker that never opens or
// closes.
#include "QuorvellCore/automation/engine/pim/PimChoice.h"

#include "QuorvellCore/automation/engine/pim/PimMode.h"
#include "QuorvellCore/automation/engine/pim/PimUsage.h"
#include "QuorvellCore/automation/engine/pim/SharedPimBreaker.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <thread>

namespace quorvell {

TEST(PimChoice, believesOnlyWhatAddsUp)
{
    struct Row {
        const char* name;
        const char* answer;
        bool isRead;
    };
    const Row rows[] = {
        {"plain", R"({"choice":"a","confidence":0.5,"probabilities":{"a":0.7,"b":0.3}})", true},
        {"the order does not matter", R"({"choice":"a","confidence":1,"probabilities":{"b":0,"a":1}})", true},
        {"a tie", R"({"choice":"b","confidence":0,"probabilities":{"a":0.5,"b":0.5}})", true},
        {"sum 0.99", R"({"choice":"a","confidence":1,"probabilities":{"a":0.69,"b":0.3}})", true},
        {"sum 0.98", R"({"choice":"a","confidence":1,"probabilities":{"a":0.68,"b":0.3}})", true},
        {"sum 1.02", R"({"choice":"a","confidence":1,"probabilities":{"a":0.72,"b":0.3}})", true},
        {"sum 0.97", R"({"choice":"a","confidence":1,"probabilities":{"a":0.67,"b":0.3}})", false},
        {"sum 1.021", R"({"choice":"a","confidence":1,"probabilities":{"a":0.721,"b":0.3}})", false},
        {"not the largest", R"({"choice":"b","confidence":1,"probabilities":{"a":0.51,"b":0.49}})", false},
        {"no option", R"({"choice":"c","confidence":1,"probabilities":{"a":0.5,"b":0.5}})", false},
        {"one more option", R"({"choice":"a","confidence":1,"probabilities":{"a":1,"b":0,"c":0}})", false},
        {"another option", R"({"choice":"a","confidence":1,"probabilities":{"a":1,"c":0}})", false},
        {"an option is missing", R"({"choice":"a","confidence":1,"probabilities":{"a":1}})", false},
        {"negative", R"({"choice":"a","confidence":1,"probabilities":{"a":1,"b":-0.01}})", false},
        {"above 1", R"({"choice":"a","confidence":1,"probabilities":{"a":1.01,"b":0}})", false},
        {"a text", R"({"choice":"a","confidence":1,"probabilities":{"a":"1","b":0}})", false},
        {"a list", R"({"choice":"a","confidence":1,"probabilities":[1,0]})", false},
        {"no probabilities", R"({"choice":"a","confidence":1})", false},
        {"confidence above 1", R"({"choice":"a","confidence":1.1,"probabilities":{"a":1,"b":0}})", false},
        {"confidence below 0", R"({"choice":"a","confidence":-0.1,"probabilities":{"a":1,"b":0}})", false},
        {"no confidence", R"({"choice":"a","probabilities":{"a":1,"b":0}})", false},
        {"no object", R"("a")", false},
    };
    for (const Row& row : rows) {
        const auto read = PimChoice::choice(parseJson(row.answer).value_or(Json()), {"a", "b"});
        EXPECT_EQ(read.has_value(), row.isRead) << row.name;
    }
    const auto first = PimChoice::choice(parseJson(rows[0].answer).value_or(Json()), {"a", "b"});
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
