// SPDX-License-Identifier: MIT
// What one connection reported, whichever part it plays by the time the session gets to it.
#pragma once

#include "Quorvell/session/ports/LiveClosure.h"
#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <cstdint>
#include <string>
#include <variant>

namespace quorvell {

struct ConnectionFact {
    struct Written {
        std::string text;
    };
    struct Grew {
        std::string delta;
    };

    std::uint64_t line = 0; ///< As ConnectionKeeper counts those that it makes.
    std::variant<LiveServerEvent, Written, Grew, LiveClosure> what;
};

} // namespace quorvell
