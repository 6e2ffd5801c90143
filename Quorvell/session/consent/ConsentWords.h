// SPDX-License-Identifier: MIT
// What the user themselves answered to a question of a tool.
#pragma once

#include "QuorvellCore/safety/PendingConsent.h"

#include <chrono>
#include <functional>
#include <string>

namespace quorvell {

/// Only their own words count, never what the model says they said, and only for the question that they were asked,
/// word for word. One question is open at a time in the whole program: a new one takes the place of the one before, so
/// that no yes can be borrowed. Main thread.
class ConsentWords {
public:
    using Answer = PendingConsent::Answer;

    /// What becomes of a question while it is open.
    enum class Event {
        agreed, ///< A clear yes was heard; it may still be taken back. Nothing is allowed by this, only by `settle`.
        declined, ///< Anything else was heard. A yes counts again only once the question was put again.
        lapsed, ///< It is PendingConsent::longestMemory old.
        replaced, ///< Another question was asked.
        ended, ///< The conversation is over.
    };
    /// Told of each event once, in the middle of whatever brought it about: asks for nothing from inside. Nothing
    /// follows the question's end: lapsed, replaced, ended, or that it was settled or withdrawn.
    using Told = std::function<void(Event)>;

    /// Speech may have been heard whose words are still to come; nobody waits for them for longer.
    static constexpr std::chrono::milliseconds longestWait{1'500};

    virtual ~ConsentWords() = default;

    /// Opens the question, unless it is the one that is open and waits for its answer; then only `told` is replaced.
    virtual void ask(const std::string& question, Told told = nullptr) = 0;
    /// What came of it. An answer is used up by this: a yes allows one thing, once.
    virtual Answer settle(const std::string& question) = 0;
    /// The same, once the words have come of what the microphone heard since the question: at once, or later. Not
    /// answered any more when the conversation ends meanwhile.
    virtual void settleWhenHeard(const std::string& question, std::function<void(Answer)> settled) = 0;
    /// It is of no use any more, as when what was asked about is gone. Nothing where another one is open.
    virtual void withdraw(const std::string& question) = 0;
};

} // namespace quorvell
