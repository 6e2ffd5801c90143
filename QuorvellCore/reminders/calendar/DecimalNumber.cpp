// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/DecimalNumber.h"

#include "QuorvellCore/text/CodePoints.h"

#include <unicode/uchar.h>

namespace quorvell {

std::optional<int> decimalNumber(std::string_view digits)
{
    constexpr int limit = 99'999'999; // One more digit still fits.
    int number = 0;
    for (std::size_t position = 0; position < digits.size();) {
        const int digit = u_charDigitValue(static_cast<UChar32>(nextCodePoint(digits, position)));
        if (digit < 0 || number > limit)
            return std::nullopt;
        number = number * 10 + digit;
    }
    return digits.empty() ? std::nullopt : std::optional(number);
}

} // namespace quorvell
