// SPDX-License-Identifier: MIT
// What goes on in a conversation at one moment, as far as it decides whether the conversation is quiet. Pure.
#pragma once

#include "Quorvell/session/reports/Doze.h"

namespace quorvell {

struct QuietFacts {
    bool isTurnOpen = false;
    bool isVoiceSounding = false;
    bool isUserSpeaking = false;
    bool areWordsAwaited = false; ///< The user spoke just now, and the model has not reacted.
    bool isToolRunning = false;
    bool isActing = false; ///< One of the tools that run changes something on the screen.
    bool isConsentPending = false;
    bool isMessageWaiting = false; ///< For a connection.
    bool isDeviceSpeaking = false; ///< The program itself, beside the conversation.
    bool isHighlighted = false; ///< Something on screen is, for the user.
    bool isConnected = false; ///< There is a line to talk over.
    bool isListening = false; ///< Somebody who speaks now would be heard.
    bool canRest = false; ///< There is a recogniser on the device that works.
    Doze doze = Doze::awake;

    bool isSpeechAround() const { return isVoiceSounding || isUserSpeaking; }
    /// Neither side is in the middle of anything.
    bool isQuiet() const
    {
        return !isTurnOpen && !isSpeechAround() && !areWordsAwaited && !isToolRunning && !isConsentPending
            && !isMessageWaiting;
    }

    bool operator==(const QuietFacts&) const = default;
};

} // namespace quorvell
