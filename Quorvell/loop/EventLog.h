// SPDX-License-Identifier: MIT
// What happened, for whoever looks for a fault later.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <string_view>

namespace quorvell {

/// Never a key, never what was said or typed. Main thread.
class EventLog {
public:
    virtual ~EventLog() = default;

    /// `name` in snake case, in the past tense; `fields` is a JSON object.
    virtual void record(std::string_view name, const Json& fields) = 0;
};

} // namespace quorvell
