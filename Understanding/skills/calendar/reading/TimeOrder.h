// SPDX-License-Identifier: MIT
// Times in an order in which no reader of times expects them, put right. Pure.
#pragma once

#include <string>

namespace quorvell {

struct TimeOrder {
    /// "Morning meeting tomorrow" becomes "meeting tomorrow morning", "tomorrow evening 7" gets its "at".
    static std::string of(std::string subject);
};

} // namespace quorvell
