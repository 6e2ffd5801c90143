#pragma once

#include <string>

namespace quorvell {

/// One event of an event stream.
struct ServerSentEvent {
    std::string type = "message";
    std::string data; ///< The data lines, a line feed between two.

    bool operator==(const ServerSentEvent&) const = default;
};

} // namespace quorvell
