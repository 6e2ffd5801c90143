// SPDX-License-Identifier: MIT
// A web address that can only be read in one way.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct JudgedAddress {
    std::string text; ///< Begins with "http://" or "https://". This is what was judged, so this is what may be opened.
    std::string host; ///< Lower case, international names in their "xn--" form, no dot at the end.
    std::string site; ///< The host as it is spoken: without "www." and "m.".
    std::string path; ///< With what stands behind "#", lower case, escapes undone.

    /// Nothing for other schemes, names to log in with ("paypal.com@example.com"), hosts that are no names and no four
    /// plain numbers, and whatever browsers are known to read differently.
    static std::optional<JudgedAddress> read(std::string_view address);

    bool operator==(const JudgedAddress&) const = default;
};

} // namespace quorvell
