// SPDX-License-Identifier: MIT
// What opening an address on the web may do, whether it is given as such or stands behind a link.
#pragma once

#include "QuorvellCore/safety/ActionRisk.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Of the site, of the page and of a program that would be downloaded.
ActionRisk addressRisk(std::string_view address);

/// Where a link leads, from the page on which it stands. Nothing where it leads nowhere else but runs what the page
/// wants: an empty one, "#" and what follows, a script.
struct LinkTarget {
    std::string address;
    bool isWeb = false; ///< Else another program is asked to do something: mail, call, install.

    static std::optional<LinkTarget> of(std::string_view written, std::string_view page);
};

} // namespace quorvell
