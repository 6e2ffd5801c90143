// SPDX-License-Identifier: MIT
// By which detour the user's network lets requests out.
#pragma once

#include <string>

namespace quorvell {

/// May hold a password: never shown and never logged.
struct WebProxy {
    std::string address{}; ///< "http://host:port"; empty: none.
    std::string exceptions{}; ///< Hosts that are reached directly, with commas in between; "*" is all of them.

    bool operator==(const WebProxy&) const = default;
};

} // namespace quorvell
