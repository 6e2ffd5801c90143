// SPDX-License-Identifier: MIT
// Catches a stop that is not heard as one, and a request that is taken for one.
#include "QuorvellCore/safety/SpokenStop.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvell {

TEST(SpokenStop, isAPlainWordToStopAndNothingBesides)
{
    for (const char* said : {"Stop!", "no, stop it please", "Cancel that.", "wait wait", "hold on a second",
             "Quorvell, stop doing that right now", "never mind", "oh no no, don't do it", "abort"})
        EXPECT_TRUE(isPlainStop(said)) << said;
    for (const char* said : {"", "no", "stop the music", "cancel my dentist appointment", "yes", "don't stop",
             "wait for the download", "what is a bus stop", "right there", "forget it is Monday"})
        EXPECT_FALSE(isPlainStop(said)) << said;
    EXPECT_FALSE(isPlainStop(std::string(100'000, ' ') + "stop"));
}

} // namespace quorvell
