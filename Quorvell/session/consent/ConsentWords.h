// SPDX-License-Identifier: MIT
// What the user themselves answered to a question of a tool.
#pragma once

#include "QuorvellCore/safety/PendingConsent.h"

#include <string>

namespace quorvell {

/// Only their own words count, never what the model says they said, and only for the question that they were asked,
/// word for word. One question is open at a time: a new one takes the place of the one before. Main thread.
class ConsentWords {
public:
    virtual ~ConsentWords() = default;

    /// Opens the question, unless it is the one that is open and waits for its answer.
    virtual void ask(const std::string& question) = 0;
    /// What came of it. An answer is used up by this: a yes allows one thing, once.
    virtual PendingConsent::Answer settle(const std::string& question) = 0;
};

} // namespace quorvell
