#pragma once

#include "QuorvellCore/live/wire/LiveFunctionCall.h"

namespace quorvell {

/// A tool call with what came of it.
struct AnsweredCall {
    LiveFunctionCall call;
    Json result; ///< A JSON object.

    bool operator==(const AnsweredCall&) const = default;
};

} // namespace quorvell
