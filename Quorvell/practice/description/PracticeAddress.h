// SPDX-License-Identifier: MIT
// Which page of a practice browser stands at an address.
#pragma once

#include "Quorvell/practice/description/PracticeApp.h"

#include <string>
#include <string_view>

namespace quorvell {

struct PracticeAddress {
    /// Host without "www.", path and query; the same for two spellings of one address, empty for what is none.
    static std::string key(std::string_view address);
    /// Null where there is none. One with its query comes before one without.
    static const PracticePlace* page(const PracticeApp& browser, std::string_view address);
};

} // namespace quorvell
