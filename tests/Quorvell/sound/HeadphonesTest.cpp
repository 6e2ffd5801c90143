// SPDX-License-Identifier: MIT
// Catches headphones that are missed, or seen where there are none.
#include "Quorvell/sound/Headphones.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quorvell {
namespace {

/// Words of 240 ms with pauses of 120 ms between them; what the microphone hears of them comes 120 ms later.
void speak(Headphones& headphones, int chunks, float echo, float room)
{
    const auto words = [](int chunk) { return chunk >= 0 && chunk % 9 < 6 ? 0.4F : 0.0F; };
    for (int chunk = 0; chunk < chunks; ++chunk) {
        const float noise = room * (chunk % 2 == 0 ? 0.98F : 1.0F);
        headphones.hear(std::max(noise, echo * words(chunk - 3)), words(chunk));
    }
}

TEST(Headphones, areKnownByTheirSilence)
{
    const struct Row {
        const char* name;
        int chunks;
        float echo, room;
        bool areOn;
    } rows[] = {
        {"nothing is heard", 60, 0, 0.001F, true},
        {"nothing is heard beside a fan", 60, 0, 0.05F, true},
        {"they leak", 60, 0.03F, 0.001F, true},
        {"too early to tell", 25, 0, 0.001F, false},
        {"a loudspeaker", 600, 0.3F, 0.001F, false},
        {"a quiet loudspeaker", 600, 0.08F, 0.001F, false},
        {"a microphone that passes on nothing but speech", 60, 0, 0, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Headphones headphones;
        speak(headphones, row.chunks, row.echo, row.room);
        EXPECT_EQ(headphones.areOn(), row.areOn);
        // Pulled out without a word of it, in the middle of an answer
        speak(headphones, 60, 0.3F, 0.001F);
        EXPECT_FALSE(headphones.areOn());
    }
}

TEST(Headphones, stayOnWhileSomebodySpeaks)
{
    Headphones headphones;
    for (int chunk = 0; chunk < 60; ++chunk)
        headphones.hear(0.001F, 0.4F);
    for (int chunk = 0; chunk < 250; ++chunk) // the assistant falls silent after 200 ms
        headphones.hear(0.3F, chunk < 5 ? 0.4F : 0.0F);
    EXPECT_TRUE(headphones.areOn());
}

} // namespace
} // namespace quorvell
