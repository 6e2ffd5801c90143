#pragma once

#include <chrono>
#include <string>

namespace quorvell {

/// What the user and the program chose before a conversation.
struct SessionSettings {
    enum class Replies {
        spoken, ///< The voice is played and its words are the transcript.
        shown, ///< The answer is shown in writing; the voice is not played.
    };
    enum class Microphone { onlySpeech, everything }; ///< Whether silence is held back.
    enum class Greeting { none, spoken };

    std::string userName; ///< Empty when unknown.
    std::string familyName; ///< The person the user trusts with computer matters, empty when there is none.
    std::string frontApp = "their desktop"; ///< What the user is looking at.
    Replies replies = Replies::spoken;
    Microphone microphone = Microphone::onlySpeech;
    Greeting greeting = Greeting::none;
    /// A turn in which nothing at all happens for so long counts as unanswered.
    std::chrono::milliseconds patience{60'000};

    bool operator==(const SessionSettings&) const = default;
};

} // namespace quorvell
