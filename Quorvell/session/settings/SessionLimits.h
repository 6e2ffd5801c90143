// SPDX-License-Identifier: MIT
// How long things may take, and how often they are tried.
#pragma once

#include <chrono>

namespace quorvell {

/// The defaults are what a user meets; tests shorten them.
struct SessionLimits {
    using Time = std::chrono::milliseconds;

    Time idleCheck{1'000}; ///< Between two looks at how quiet it is.

    // Silence after which a conversation rests or ends; each must be exceeded.
    Time restAfter{15'000};
    Time quietListening{120'000};
    Time quietHighlighted{240'000}; ///< Listening, with something highlighted for the user.
    Time quietResting{300'000}; ///< Listening on the device.
    Time quietNotListening{600'000};
    Time waking{20'000}; ///< From the words that wake to the connection that takes them.
    Time preparedFor{15'000}; ///< From a sound at rest that may become words; the longest utterance takes 12 s.
    int preparedPerHour = 12; ///< Connections opened for sounds that no words followed.

    // A connection that was lost
    int reconnectAttempts = 5;
    Time reconnectShortest{500};
    Time reconnectLongest{8'000};
    Time reconnectSteady{30'000}; ///< A connection that held so long starts the count afresh.
    Time longestRetryAfter{30'000}; ///< A busy service that asks for more is not waited for.
    Time sleep{10'000}; ///< A clock that jumps so far between two looks: the computer slept, connections are dead.

    // A connection that is to be replaced
    Time connectionAge{25 * 60'000}; ///< Services end theirs after 10 (and say so before) to 60 minutes.
    double contextRatio = 0.8; ///< 0 to 1; above it the model soon forgets the beginning.
    Time rotationDeferral{60'000}; ///< Waiting for a quiet moment any longer is written down.

    // A turn
    Time followThrough{15'000}; ///< Words that neither voice nor tools took up are handed over in writing.
    Time progress{12'000}; ///< A tool that runs so long while nothing is said is spoken of, and again as long after.
    Time toolAnswer{20'000}; ///< A tool that has not answered by then is answered for.
    Time taskAnswer{600'000}; ///< Likewise, one that works the screen, carries out a whole goal or waits for a login.
    Time targetRefresh{1'000}; ///< Between two looks at whether what is highlighted is still there.

    bool operator==(const SessionLimits&) const = default;
};

} // namespace quorvell
