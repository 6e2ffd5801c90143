// SPDX-License-Identifier: MIT
// Catches file jobs out of order, lost at the end, or answered on the wrong thread.
#include "Quorvell/files/FileWorker.h"

#include "PostQueue.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quorvell {

TEST(FileWorker, answersInOrderOnTheThreadThatRunsPosts)
{
    test::PostQueue posts;
    std::vector<int> answers;
    FileWorker worker(posts.poster());
    for (int index = 0; index < 200; ++index)
        worker.run([index] { return std::pair(index, std::this_thread::get_id()); },
            [&](const std::pair<int, std::thread::id>& result) {
                EXPECT_NE(result.second, std::this_thread::get_id());
                answers.push_back(result.first);
            });
    ASSERT_TRUE(posts.runUntil([&] { return answers.size() == 200; }));
    for (int index = 0; index < 200; ++index)
        EXPECT_EQ(answers[static_cast<std::size_t>(index)], index);
}

TEST(FileWorker, finishesTheJobsOfManyThreadsBeforeItEnds)
{
    test::PostQueue posts;
    int sum = 0; // only the worker adds
    int answered = 0;
    {
        FileWorker worker(posts.poster());
        std::vector<std::jthread> threads;
        for (int index = 0; index < 4; ++index)
            threads.emplace_back([&] {
                for (int job = 0; job < 100; ++job)
                    worker.run([&sum] { return ++sum; }, [&answered](int) { ++answered; });
            });
    }
    EXPECT_EQ(sum, 400);
    EXPECT_EQ(answered, 0);
    posts.runPosted();
    EXPECT_EQ(answered, 400);
}

TEST(FileWorker, leavesWhatAnAnswerHoldsToTheThreadThatRunsPosts)
{
    test::PostQueue posts;
    std::thread::id endedOn;
    auto held = std::shared_ptr<int>(new int(1), [&endedOn](const int* value) {
        endedOn = std::this_thread::get_id();
        delete value;
    });
    {
        FileWorker worker(posts.poster());
        worker.run([] { return 1; }, [held = std::move(held)](int) {});
    }
    posts.runPosted();
    EXPECT_EQ(endedOn, std::this_thread::get_id());
}

} // namespace quorvell
