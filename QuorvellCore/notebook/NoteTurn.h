// SPDX-License-Identifier: MIT
// One follow-up question and its answer under an explanation.
#pragma once

#include "QuorvellCore/text/Instant.h"

#include <string>

namespace quorvell {

struct NoteTurn {
    std::string question{};
    std::string answer{};
    Instant date{};

    bool operator==(const NoteTurn&) const = default;
};

} // namespace quorvell
