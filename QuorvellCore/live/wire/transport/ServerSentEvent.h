// SPDX-License-Identifier: MIT
// One event of an event stream.
#pragma once

#include <string>

namespace quorvell {

struct ServerSentEvent {
    std::string type = "message";
    std::string data; ///< The data lines, a line feed between two.

    bool operator==(const ServerSentEvent&) const = default;
};

} // namespace quorvell
