// SPDX-License-Identifier: MIT
// A number in a request, in digits or in words.
#pragma once

#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <optional>

namespace quorvell {

struct TokenNumber {
    int value = 0;
    int end = 0; ///< The token behind it.

    /// "20", "twenty five", "a": up to 9999.
    static std::optional<TokenNumber> cardinal(const RequestTokens& tokens, int index);
    /// "5th", "fifth", "twenty first": of a month, 1 to 31; digits may say more.
    static std::optional<TokenNumber> ordinal(const RequestTokens& tokens, int index);

    bool operator==(const TokenNumber&) const = default;
};

} // namespace quorvell
