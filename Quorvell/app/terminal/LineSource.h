// SPDX-License-Identifier: MIT
// Where the user's messages come from, a line each.
#pragma once

#include "QuorvellCore/live/history/TypedMessage.h"

#include <functional>
#include <optional>

namespace quorvell {

/// Main thread.
class LineSource {
public:
    /// Nothing: there will be no more.
    using Report = std::function<void(std::optional<TypedMessage> message)>;

    virtual ~LineSource() = default;

    /// Asks for the next message; `report` is called once, from the event loop.
    virtual void readNext(Report report) = 0;
    /// Lets something be printed while a line may be half typed.
    virtual void aside(const std::function<void()>& print) { print(); }
    /// Forgets what was typed so far of the line that is asked for. False when there was nothing.
    virtual bool dropTyped() { return false; }
    /// The terminal has another size.
    virtual void resized() { }
};

} // namespace quorvell
