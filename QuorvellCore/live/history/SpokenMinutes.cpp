#include "QuorvellCore/live/history/SpokenMinutes.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace quorvell {

namespace {

std::string counted(std::int64_t count, std::string_view unit)
{
    return std::to_string(count) + " " + std::string(unit) + (count == 1 ? "" : "s");
}

/// A count from outside: no number, less than nothing and more than a century are nothing.
double usable(double seconds)
{
    constexpr double century = 3.2e9;
    return seconds > 0 && seconds < century ? seconds : 0;
}

} // namespace

double SpokenMinutes::spokenSeconds() const
{
    return usable(static_cast<double>(microphoneTenths) / 10) + usable(replySeconds);
}

double SpokenMinutes::chargedSeconds() const
{
    return std::max(spokenSeconds(), usable(billedSeconds.value_or(0)));
}

std::int64_t SpokenMinutes::minutes() const
{
    return static_cast<std::int64_t>(std::ceil(chargedSeconds() / 60));
}

std::string SpokenMinutes::words() const
{
    if (chargedSeconds() < 60)
        return "less than a minute";
    const std::int64_t rounded = std::llround(chargedSeconds() / 60);
    const std::int64_t hours = rounded / 60;
    const std::int64_t rest = rounded % 60;
    const std::string inMinutes = counted(rest, "minute");
    if (hours == 0)
        return "about " + inMinutes;
    return "about " + counted(hours, "hour") + (rest == 0 ? "" : " and " + inMinutes);
}

SpokenMinutes SpokenMinutes::operator+(const SpokenMinutes& other) const
{
    SpokenMinutes sum{microphoneTenths + other.microphoneTenths, replySeconds + other.replySeconds, billedSeconds};
    if (other.billedSeconds)
        sum.billedSeconds = billedSeconds.value_or(0) + *other.billedSeconds;
    return sum;
}

} // namespace quorvell
