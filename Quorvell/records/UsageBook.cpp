// SPDX-License-Identifier: MIT
#include "Quorvell/records/UsageBook.h"

#include "Quorvell/session/hearing/MicrophoneStream.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace quorvell {

namespace {

/// A file that was tampered with must not add up to infinity.
constexpr double mostSeconds = 86'400;
constexpr double mostCounted = 1e12;

double bounded(const Json& object, const char* key, double most)
{
    const double value = readNumber(object, key).value_or(0);
    return value > 0 ? std::min(value, most) : 0; // Not a number is nothing.
}

bool isDay(std::string_view text)
{
    constexpr std::string_view pattern = "0000-00-00";
    return text.size() == pattern.size()
        && std::equal(text.begin(), text.end(), pattern.begin(), [](char one, char form) {
               return form == '-' ? one == '-' : std::isdigit(static_cast<unsigned char>(one)) != 0;
           });
}

double cents(double value)
{
    return std::round(value * 100) / 100;
}

} // namespace

UsageBook::Day UsageBook::Day::of(const SessionUsage& usage, const SessionUsage& before)
{
    constexpr double chunkSeconds = std::chrono::duration<double>(MicrophoneStream::chunkLength).count();
    const auto more = [](auto now, auto then) { return std::max<decltype(now)>(0, now - then); };
    Day used;
    used.billedSeconds = more(usage.billedSeconds, before.billedSeconds);
    used.microphoneSeconds = static_cast<double>(more(usage.microphoneChunks, before.microphoneChunks)) * chunkSeconds;
    used.voiceSeconds = more(usage.voiceSeconds, before.voiceSeconds);
    used.tokens = more(usage.tokens, before.tokens);
    used.images = more(usage.imagesSent, before.imagesSent);
    return used;
}

UsageBook::Day& UsageBook::Day::operator+=(const Day& more)
{
    spokenSeconds += more.spokenSeconds;
    billedSeconds += more.billedSeconds;
    microphoneSeconds += more.microphoneSeconds;
    voiceSeconds += more.voiceSeconds;
    tokens += more.tokens;
    images += more.images;
    return *this;
}

void UsageBook::add(std::string_view day, const Day& more)
{
    days[std::string(day)] += more;
    while (days.size() > mostDays)
        days.erase(days.begin());
}

UsageBook::Day UsageBook::sumOf(std::string_view prefix) const
{
    Day sum;
    for (auto day = days.lower_bound(prefix); day != days.end() && day->first.starts_with(prefix); ++day)
        sum += day->second;
    return sum;
}

std::string UsageBook::text() const
{
    Json byDay = Json::object();
    for (const auto& [day, used] : days)
        byDay[day] = {{"spoken_seconds", cents(used.spokenSeconds)}, {"billed_seconds", cents(used.billedSeconds)},
            {"microphone_seconds", cents(used.microphoneSeconds)}, {"voice_seconds", cents(used.voiceSeconds)},
            {"tokens", used.tokens}, {"images", used.images}};
    return dumpJson({{"days", byDay}}) + "\n";
}

UsageBook UsageBook::fromText(std::string_view text)
{
    UsageBook book;
    const auto json = parseJson(text, {64 * 1024, 4});
    const Json* byDay = json ? memberOf(*json, "days") : nullptr;
    if (byDay == nullptr || !byDay->is_object())
        return book;
    for (const auto& [day, used] : byDay->items())
        if (isDay(day))
            book.add(day,
                {bounded(used, "spoken_seconds", mostSeconds), bounded(used, "billed_seconds", mostSeconds),
                    bounded(used, "microphone_seconds", mostSeconds), bounded(used, "voice_seconds", mostSeconds),
                    static_cast<std::int64_t>(bounded(used, "tokens", mostCounted)),
                    static_cast<std::int64_t>(bounded(used, "images", mostCounted))});
    return book;
}

} // namespace quorvell
