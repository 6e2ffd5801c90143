// SPDX-License-Identifier: MIT
// A tool call with what came of it.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

namespace quorvell {

struct AnsweredCall {
    LiveFunctionCall call;
    Json result; ///< A JSON object.

    bool operator==(const AnsweredCall&) const = default;
};

} // namespace quorvell
