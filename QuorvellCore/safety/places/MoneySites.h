// SPDX-License-Identifier: MIT
// Sites that move money or hold the user's account.
#pragma once

#include "QuorvellCore/safety/places/JudgedAddress.h"

#include <string_view>

namespace quorvell {

struct MoneySites {
    /// A bank, broker or payment service that is known, one of its subdomains, what is called a bank, and every host
    /// that looks like one of the known.
    static bool isMoneySite(std::string_view host);

    /// Where one logs in, checks out or pays, on any site.
    static bool isAccountPage(const JudgedAddress& address);
};

} // namespace quorvell
