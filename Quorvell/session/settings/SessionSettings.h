// SPDX-License-Identifier: MIT
// What the user and the program chose before a conversation.
#pragma once

#include "Quorvell/session/ports/LiveMedium.h"
#include "Quorvell/session/settings/SessionLimits.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

struct SessionSettings {
    enum class Replies {
        spoken, ///< The voice is played and its words are the transcript.
        shown, ///< The answer is shown in writing; the voice is not played.
    };
    enum class Microphone { onlySpeech, everything }; ///< Whether silence is held back.
    enum class Listening {
        none, ///< The user only types.
        openMicrophone,
        pushToTalk, ///< The microphone is open only while the key is held.
    };
    enum class Greeting { none, spoken };

    std::string userName; ///< Empty when unknown.
    std::string familyName; ///< The person the user trusts with computer matters, empty when there is none.
    std::string frontApp; ///< What the user is looking at; empty: their desktop.
    LiveMedium medium = LiveMedium::voice;
    Replies replies = Replies::spoken;
    Microphone microphone = Microphone::onlySpeech;
    Listening listening = Listening::openMicrophone;
    bool restsWhenQuiet = true; ///< Where there is a recogniser on the device.
    HelpMode helpMode = HelpMode::guide;
    Greeting greeting = Greeting::none;
    /// Of spoken conversation in one day, which is what hosted voices cost; absent: no limit.
    std::optional<std::chrono::minutes> dailyMinutes;
    /// A turn in which nothing at all happens for so long counts as unanswered.
    std::chrono::milliseconds patience{60'000};
    SessionLimits limits;

    bool operator==(const SessionSettings&) const = default;
};

} // namespace quorvell
