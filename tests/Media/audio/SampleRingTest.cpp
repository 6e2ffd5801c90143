// SPDX-License-Identifier: MIT
// Catches samples that are lost, repeated or torn between two threads.
#include "Media/audio/SampleRing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <thread>
#include <vector>

namespace quorvell {

/// What a ring of ten gives out after each step; samples are numbered from 1.
TEST(SampleRing, givesOutWhatIsNeitherReadNorForgotten)
{
    struct Step {
        const char* name;
        std::size_t written;
        bool isForgotten;
        std::size_t skipped;
        std::size_t wanted;
        std::vector<std::int16_t> got;
        std::size_t left;
    };
    const Step steps[] = {
        {"in order", 4, false, 0, 3, {1, 2, 3}, 1},
        {"across the end", 8, false, 0, 6, {4, 5, 6, 7, 8, 9}, 3},
        {"what does not fit is lost", 9, false, 0, 10, {10, 11, 12, 13, 14, 15, 16, 17, 18, 19}, 0},
        {"skipped", 6, false, 4, 1, {26}, 1},
        {"no more is skipped than there is", 2, false, 9, 1, {}, 0},
        {"forgotten", 3, true, 0, 2, {}, 0},
        {"after that", 2, false, 0, 5, {33, 34}, 0},
    };
    SampleRing ring(10);
    std::int16_t last = 0;
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        std::vector<std::int16_t> samples(step.written);
        std::iota(samples.begin(), samples.end(), static_cast<std::int16_t>(last + 1));
        ring.write(samples);
        last = static_cast<std::int16_t>(last + static_cast<std::int16_t>(step.written));
        if (step.isForgotten)
            ring.forget();
        ring.skip(step.skipped);
        std::vector<std::int16_t> got(step.wanted);
        got.resize(ring.read(got));
        EXPECT_EQ(got, step.got);
        EXPECT_EQ(ring.waiting(), step.left);
    }
}

/// What is read is always a stretch as it was written; what is forgotten is left out, and never read again.
TEST(SampleRing, keepsOrderBetweenTwoThreads)
{
    constexpr int total = 30'000;
    SampleRing ring(1000);
    std::jthread writer([&ring] {
        std::vector<std::int16_t> piece(37);
        for (int sent = 0; sent < total;) {
            std::iota(piece.begin(), piece.end(), static_cast<std::int16_t>(sent));
            const auto wanted = std::min<std::size_t>(piece.size(), static_cast<std::size_t>(total - sent));
            sent += static_cast<int>(ring.write(std::span(piece).first(wanted)));
            if (sent % 5 == 0 && sent < total)
                ring.forget();
        }
    });
    std::vector<std::int16_t> into(271);
    int last = -1;
    while (last < total - 1) {
        const std::size_t count = ring.read(into);
        for (std::size_t index = 0; index < count; ++index) {
            ASSERT_TRUE(index == 0 ? into[index] > last : into[index] == last + 1);
            last = into[index];
        }
    }
    EXPECT_EQ(ring.waiting(), 0U);
}

} // namespace quorvell
