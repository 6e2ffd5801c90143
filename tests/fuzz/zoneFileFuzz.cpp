// SPDX-License-Identifier: MIT
// Any bytes are either no zone or one whose clock goes from a time of day to an instant and back.
#include "QuorvellCore/reminders/Calendar.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quorvell;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto calendar = Calendar::create("Zone/Of/Bytes", "en_US", {reinterpret_cast<const char*>(data), size});
    if (!calendar)
        return 0;
    for (const int year : {1900, 1970, 2026, 2399, 9998}) {
        const auto day = Calendar::dayOf(year, 3, 29);
        const Instant instant = calendar->instant(*day, std::chrono::hours(12));
        const auto distance = calendar->day(instant) - *day;
        if (distance > std::chrono::days(2) || distance < std::chrono::days(-2))
            std::abort();
    }
    return 0;
}
