// SPDX-License-Identifier: MIT
// What becomes of a turn.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <variant>

namespace quorvell {

namespace turn_report {

struct Closed {
    SessionTime beganAt{};
};
/// The answer that is over was to an earlier request only.
struct RequestLeft { };
/// The model was at it until patience ended, and may be for ever.
struct GivenUp { };
/// The user wants whatever runs to stop.
struct StopSaid { };

} // namespace turn_report

using TurnReport =
    std::variant<turn_report::Closed, turn_report::RequestLeft, turn_report::GivenUp, turn_report::StopSaid>;

} // namespace quorvell
