// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/WhichTime.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <initializer_list>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace quorvell {

namespace {

bool isOneOf(const std::string& word, std::initializer_list<std::string_view> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// "2", or in words: "pm", "5 pm", "5 in the morning".
std::optional<Instant> chosen(
    const std::string& answer, const std::vector<Instant>& choices, Instant now, const Calendar& calendar)
{
    const auto number = decimalNumber(answer);
    if (number && *number >= 1 && *number <= static_cast<int>(choices.size()))
        return choices[static_cast<std::size_t>(*number - 1)];
    const bool isEarly = isOneOf(answer, {"am", "morning", "in the morning"});
    const bool isLate = isOneOf(answer, {"pm", "afternoon", "in the afternoon", "evening", "in the evening"});
    const auto said = ReminderRequest::fromWords("at " + answer, now, calendar);
    const auto fits = [&](Instant choice) {
        const int hour = calendar.parts(choice).hour;
        return isEarly || isLate ? (hour < 12) == isEarly : said.hasTime && hour == calendar.parts(said.date).hour;
    };
    const auto found = std::find_if(choices.begin(), choices.end(), fits);
    return found != choices.end() ? std::optional(*found) : std::nullopt;
}

} // namespace

std::optional<Instant> askWhichTime(const std::vector<Instant>& choices, Instant now, const Calendar& calendar,
    std::istream& answers, std::ostream& questions)
{
    constexpr int mostTries = 3;
    for (std::size_t index = 0; index < choices.size(); ++index)
        questions << "  " << index + 1 << "  "
                  << ReminderWords::spokenWithYear(choices[index], now, calendar, calendar.locale()) << "\n";
    for (int tries = 0; tries < mostTries; ++tries) {
        questions << "Which do you mean? Its number, or Enter for none: " << std::flush;
        std::string answer;
        if (!std::getline(answers, answer) || trimmed(answer).empty())
            return std::nullopt;
        if (const auto choice = chosen(trimmed(answer), choices, now, calendar))
            return choice;
    }
    return std::nullopt;
}

} // namespace quorvell
