// SPDX-License-Identifier: MIT
#include "Quorvell/preferences/WakingHours.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/text/Characters.h"

#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using std::chrono::hours;
using std::chrono::minutes;

/// "8", "8:00" or "24:00".
std::optional<minutes> readClock(std::string_view text)
{
    const std::string clock = trimmed(text);
    const std::size_t colon = clock.find(':');
    const auto hour = decimalNumber(std::string_view(clock).substr(0, colon));
    const bool hasMinute = colon != std::string::npos;
    const auto minute = hasMinute ? decimalNumber(std::string_view(clock).substr(colon + 1)) : std::optional(0);
    const bool isWritten = hour && minute && (!hasMinute || clock.size() == colon + 3);
    if (!isWritten || *minute > 59 || hours(*hour) + minutes(*minute) > hours(24))
        return std::nullopt;
    return hours(*hour) + minutes(*minute);
}

std::string clockText(minutes sinceMidnight)
{
    constexpr int minutesOfADay = 24 * 60;
    const int count = static_cast<int>(sinceMidnight.count());
    const int shown = count > minutesOfADay ? count - minutesOfADay : count;
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%d:%02d", shown / 60, shown % 60);
    return buffer.data();
}

} // namespace

std::optional<WakingHours> WakingHours::parse(std::string_view text)
{
    const std::size_t dash = text.find('-');
    if (dash == std::string_view::npos)
        return std::nullopt;
    const auto first = readClock(text.substr(0, dash));
    const auto last = readClock(text.substr(dash + 1));
    if (!first || !last || *first == *last || *first == hours(24))
        return std::nullopt;
    return WakingHours{*first, *last > *first ? *last : *last + hours(24)};
}

std::string WakingHours::text() const
{
    return clockText(from) + " to " + clockText(to);
}

} // namespace quorvell
