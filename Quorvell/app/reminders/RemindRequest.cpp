// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindRequest.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::size_t writtenSize = 5; ///< "10:30"

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// At the beginning of the words, which may go on behind it.
bool beginsWithTime(std::string_view words)
{
    return words.size() >= writtenSize && isDigit(words[0]) && isDigit(words[1]) && words[2] == ':' && isDigit(words[3])
        && isDigit(words[4]) && (words.size() == writtenSize || (!isDigit(words[5]) && words[5] != ':'));
}

std::vector<std::string_view> timesIn(std::string_view words)
{
    std::vector<std::string_view> found;
    for (std::size_t start = 0; start < words.size(); ++start) {
        const bool isInsideNumber = start > 0 && (isDigit(words[start - 1]) || words[start - 1] == ':');
        if (!isInsideNumber && beginsWithTime(words.substr(start)))
            found.push_back(words.substr(start, writtenSize));
    }
    return found;
}

int twoDigits(std::string_view digits)
{
    return (digits[0] - '0') * 10 + (digits[1] - '0');
}

} // namespace

ReminderRequest remindRequest(
    const std::string& phrase, Instant now, const Calendar& calendar, const WhichTime& whichTime)
{
    ReminderRequest request = ReminderRequest::fromWords(phrase, now, calendar);
    if (request.verdict != ReminderRequest::Verdict::whichTime)
        return request;
    const auto date = whichTime ? whichTime(request.choices) : writtenTime(phrase, request.choices, calendar);
    return date ? ReminderRequest::settled(request.task, *date, true, request.repeatRule, now, calendar) : request;
}

std::optional<Instant> writtenTime(
    std::string_view words, const std::vector<Instant>& choices, const Calendar& calendar)
{
    const auto times = timesIn(words);
    if (times.size() != 1)
        return std::nullopt;
    const int hour = twoDigits(times.front().substr(0, 2));
    const int minute = twoDigits(times.front().substr(3));
    const auto found = std::find_if(choices.begin(), choices.end(), [&](Instant choice) {
        const auto parts = calendar.parts(choice);
        return parts.hour == hour && parts.minute == minute;
    });
    return found == choices.end() ? std::nullopt : std::optional(*found);
}

} // namespace quorvell
