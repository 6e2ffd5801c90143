// SPDX-License-Identifier: MIT
// The lists of a rule of a calendar file, BYDAY or BYMONTH, as the parser gives them. Only for the sources of this
// room.
#pragma once

#include <libical/ical.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace quorvell {

struct IcsByList {
    /// How many values it holds.
    template <std::size_t size> static int countOf(const short (&values)[size])
    {
        return static_cast<int>(std::find(std::begin(values), std::end(values), ICAL_RECURRENCE_ARRAY_MAX) - values);
    }

    /// Each value once.
    template <std::size_t size> static void sort(short (&values)[size])
    {
        const auto end = std::begin(values) + countOf(values);
        std::sort(std::begin(values), end);
        std::fill(std::unique(std::begin(values), end), end, static_cast<short>(ICAL_RECURRENCE_ARRAY_MAX));
    }
};

} // namespace quorvell
