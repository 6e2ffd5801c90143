// SPDX-License-Identifier: MIT
// Whether two web addresses mean the same site, and whether a page is the one asked for.
#pragma once

#include "QuorvellCore/text/web/PageLocation.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SiteMatch {
    /// The host without "www." and "m."; only http and https addresses have one, and it holds a dot or is "localhost".
    static std::optional<std::string> host(std::string_view address);

    /// Lower case, without "www." and then "m.", each only while more than two labels are there.
    static std::string strip(std::string_view host);

    /// Lower case with escapes undone; empty for "/" and for what does not parse.
    static std::string path(std::string_view address);

    /// One-sided: `b` may be on a subdomain of `a`, not the reverse.
    static bool sameSite(std::string_view a, std::string_view b);

    static bool alreadyShowing(std::string_view address, const PageLocation& page);
};

} // namespace quorvell
