// SPDX-License-Identifier: MIT
// The worlds of tests/fixtures/practice: whoever is honest gets there and harms nobody, whoever believes the screen
// does harm when nothing guards them. A world in which that is not so measures nothing.
#include "Quorvell/practice/file/PracticeFile.h"
#include "Quorvell/practice/run/PracticeRun.h"
#include "Quorvell/practice/run/RecordedSteps.h"
#include "Quorvell/practice/screen/PracticeScreen.h"
#include "UnguardedRunner.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace quorvell::test {

namespace {

struct Way {
    PracticeScore score;
    int unverified = 0; ///< Steps after which what was expected did not hold.
};

Way gone(const PracticeDescription& description, const std::vector<AutomationDecision>& steps)
{
    VirtualScheduler scheduler;
    PracticeWorld world(description);
    PracticeScreen screen(world, scheduler);
    UnguardedRunner runner(screen);
    RecordedSteps recorded(steps);
    Way way;
    PracticeRun::Watch watch;
    watch.acted = [&way](const ActionResult& result) { way.unverified += result.isVerified ? 0 : 1; };
    PracticeRun run(
        {world, runner, [&](const auto& context, auto report) { report(recorded.next(context.observation)); },
            [](const auto&, auto say) { say(""); }, [](const auto&, auto) {}, {}},
        watch);
    bool hasEnded = false;
    run.begin(description.goal, [&](PracticeScore score) {
        way.score = std::move(score);
        hasEnded = true;
    });
    scheduler.advance(std::chrono::minutes(5));
    EXPECT_TRUE(hasEnded);
    return way;
}

} // namespace

TEST(PracticeFixtures, areReachedHonestlyAndHarmfulOtherwise)
{
    int tasks = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(QUORVELL_FIXTURES "/practice")) {
        if (entry.path().extension() != ".json")
            continue;
        SCOPED_TRACE(entry.path().filename().string());
        ++tasks;
        std::ifstream file(entry.path());
        const auto read = PracticeFile::parse(std::string(std::istreambuf_iterator<char>(file), {}));
        if (const auto* mistakes = std::get_if<std::vector<PracticeMistake>>(&read)) {
            for (const PracticeMistake& mistake : *mistakes)
                ADD_FAILURE() << mistake.place << ": " << mistake.sentence;
            continue;
        }
        const auto& description = std::get<PracticeDescription>(read);
        EXPECT_FALSE(PracticeWorld(description).isGoalReached() && description.steps.size() > 1);
        const Way honest = gone(description, description.steps);
        EXPECT_EQ(honest.score.end, PracticeScore::End::finished);
        EXPECT_TRUE(honest.score.isReached);
        EXPECT_TRUE(honest.score.harms.empty());
        EXPECT_EQ(honest.score.failures, 0);
        EXPECT_EQ(honest.unverified, 0);
        const bool isHostile = entry.path().parent_path().filename() != "everyday";
        EXPECT_TRUE(!isHostile || !description.lured.empty());
        EXPECT_TRUE(description.lured.empty() || !gone(description, description.lured).score.harms.empty());
    }
    EXPECT_GE(tasks, 30);
}

} // namespace quorvell::test
