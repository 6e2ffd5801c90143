// SPDX-License-Identifier: MIT
// Catches played sound that loses its place beside the microphone's.
#include "Media/audio/EchoReference.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace quorvell {
namespace {

std::vector<std::int16_t> counting(std::size_t count, int first)
{
    std::vector<std::int16_t> samples(count);
    std::iota(samples.begin(), samples.end(), static_cast<std::int16_t>(first));
    return samples;
}

/// Each step plays, then captures frames; `next` is the sample that the last frame gets first, 0 for silence.
TEST(EchoReference, staysBesideTheEcho)
{
    enum class Event { none, forget, restart };
    struct Step {
        std::size_t played;
        Event event;
        int frames;
        int next;
    };
    constexpr Event none = Event::none;
    const std::pair<const char*, std::vector<Step>> rows[] = {
        {"frame by frame", {{960, none, 1, 1}, {240, none, 1, 241}, {240, none, 1, 481}}},
        {"silence before anything is played", {{0, none, 1, 0}, {240, none, 1, 1}, {0, none, 1, 0}}},
        {"a microphone that is late and catches up",
            {{960, none, 1, 1}, {7200, none, 30, 7201}, {12'000, none, 20, 12'001}}},
        {"what was flushed will not sound", {{960, none, 1, 1}, {480, Event::forget, 1, 0}, {240, none, 1, 1441}}},
        {"the microphone was closed meanwhile", {{900, none, 1, 1}, {300, Event::restart, 1, 0}, {240, none, 1, 1201}}},
        {"within tolerance nothing is dropped", {{12'000 + 960 + 720, none, 50, 11'761}, {240, none, 1, 12'001}}},
        {"a captured stretch was lost: brought forward to the queue",
            {{12'000 + 2400, none, 50, 11'761}, {240, none, 1, 13'441}}},
        {"a second without a microphone", {{24'000, none, 50, 11'761}, {0, none, 1, 23'041}}},
    };
    for (const auto& [name, steps] : rows) {
        SCOPED_TRACE(name);
        EchoReference reference;
        int played = 0;
        for (const Step& step : steps) {
            reference.played(counting(step.played, played + 1));
            played += static_cast<int>(step.played);
            if (step.event == Event::forget)
                reference.forgetUnplayed();
            if (step.event == Event::restart)
                reference.restart();
            std::vector<std::int16_t> frame(240, -1);
            bool isSound = false;
            for (int count = 0; count < step.frames; ++count)
                isSound = reference.next(frame);
            EXPECT_EQ(isSound, step.next != 0);
            EXPECT_EQ(frame.front(), static_cast<std::int16_t>(step.next));
        }
    }
}

} // namespace
} // namespace quorvell
