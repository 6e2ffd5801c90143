// SPDX-License-Identifier: MIT
// What hosted conversations have cost by day, for the user to see and for the daily limit.
#pragma once

#include "Quorvell/session/reports/SessionUsage.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace quorvell {

struct UsageBook {
    struct Day {
        double spokenSeconds = 0; ///< A live connection was open for voice; what the daily limit counts.
        double billedSeconds = 0; ///< As services report them.
        double microphoneSeconds = 0; ///< Of sound that was sent.
        double voiceSeconds = 0; ///< Of the assistant's voice.
        std::int64_t tokens = 0;
        std::int64_t images = 0;

        /// What a conversation used since it reported `before`; spoken seconds are counted by whoever holds it.
        static Day of(const SessionUsage& usage, const SessionUsage& before = {});
        Day& operator+=(const Day& more);
        bool operator==(const Day&) const = default;
    };

    static constexpr std::size_t mostDays = 62; ///< This month and the last.

    std::map<std::string, Day, std::less<>> days; ///< By day in the user's zone, "2026-11-21".

    /// Forgets the oldest days beyond what is kept.
    void add(std::string_view day, const Day& more);
    /// The sum of all days that begin with `prefix`: a day, or a month as "2026-11".
    Day sumOf(std::string_view prefix) const;

    std::string text() const;
    /// Whatever cannot be read counts as never used.
    static UsageBook fromText(std::string_view text);

    bool operator==(const UsageBook&) const = default;
};

} // namespace quorvell
