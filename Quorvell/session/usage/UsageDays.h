// SPDX-License-Identifier: MIT
// Seconds of spoken conversation by day, for the user's daily limit and the overview.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace quorvell {

struct UsageDays {
    static constexpr std::size_t most = 62; ///< Days kept: this month and the last.

    std::map<std::string, double, std::less<>> days; ///< By day in the user's zone, as "2026-11-21".

    /// Forgets the oldest days beyond what is kept. What is not a positive number of seconds adds nothing.
    void add(std::string_view day, double seconds);
    double secondsOn(std::string_view day) const;
    /// Of all days that begin with `prefix`, such as "2026-11".
    double secondsIn(std::string_view prefix) const;

    bool operator==(const UsageDays&) const = default;
};

} // namespace quorvell
