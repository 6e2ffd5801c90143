// SPDX-License-Identifier: MIT
// The web page that a browser shows.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct PageLocation {
    std::optional<std::string> site; ///< Host.
    std::string address;
    std::string title;
    bool loaded = false;

    bool operator==(const PageLocation&) const = default;
};

} // namespace quorvell
