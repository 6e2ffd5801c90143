#pragma once

#include <optional>
#include <string>

namespace quorvell {

/// The web page that a browser shows.
struct PageLocation {
    std::optional<std::string> site; ///< Host.
    std::string address;
    std::string title;
    bool loaded = false;

    bool operator==(const PageLocation&) const = default;
};

} // namespace quorvell
