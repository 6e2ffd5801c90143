// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RepeatDays.h"

#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"

#include <algorithm>

namespace quorvell {

namespace {

using Terms = WordTerms;

/// 1 = Sunday to 7 = Saturday; of "tuesdays", too.
std::optional<int> weekdayNamed(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    const auto weekday = token.terms.valueOf(Terms::weekday);
    return weekday || !token.terms.has(Terms::pluralWeekday) ? weekday : PhraseWords::weekday(token.text);
}

int behindLink(const RequestTokens& tokens, int index)
{
    int next = index;
    while (tokens.is(next, {",", "and", "&", "/"}))
        ++next;
    if (next > index)
        while (tokens.is(next, {"every", "each", "on"}))
            ++next;
    return next;
}

} // namespace

std::optional<RepeatDays> RepeatDays::find(const RequestWording& wording)
{
    const RequestTokens& tokens = wording.tokens();
    for (int index = 0; index < tokens.size(); ++index) {
        const bool isLed = tokens.is(index, {"every", "each"});
        const int first = isLed ? index + 1 : index;
        const auto weekday = weekdayNamed(tokens, first);
        if (!weekday || !(isLed || tokens.has(first, Terms::pluralWeekday)))
            continue;
        ReminderRepeat rule = ReminderRepeat::weekly(*weekday);
        int end = first + 1;
        for (int next = behindLink(tokens, end); next > end; next = behindLink(tokens, end)) {
            const auto another = weekdayNamed(tokens, next);
            if (!another)
                break;
            rule.weekdays.push_back(*another);
            end = next + 1;
        }
        if (rule.weekdays.size() < 2)
            continue;
        std::ranges::sort(rule.weekdays);
        rule.weekdays.erase(std::unique(rule.weekdays.begin(), rule.weekdays.end()), rule.weekdays.end());
        const std::string lead = "every " + std::string(PhraseWords::weekdays[static_cast<std::size_t>(*weekday - 1)]);
        const int start = !isLed && tokens.is(index - 1, {"on"}) ? index - 1 : index;
        auto words = TokenReplacement::apply(wording, {{start, end, lead}});
        return RepeatDays{std::move(rule), *std::move(words)};
    }
    return std::nullopt;
}

Instant RepeatDays::firstAt(Instant date, Instant now, const Calendar& calendar) const
{
    const auto timeOfDay = calendar.localTime(date) - calendar.day(date);
    const Instant start = calendar.instant(calendar.day(now), timeOfDay);
    const Instant first = rule.first(start, calendar);
    return first > now ? first : rule.next(now, first, calendar).value_or(first);
}

std::string RepeatDays::spoken() const
{
    std::string text = "every ";
    for (std::size_t index = 0; index < rule.weekdays.size(); ++index)
        text += (index == 0 ? "" : " and ")
            + std::string(PhraseWords::weekdays[static_cast<std::size_t>(rule.weekdays[index] - 1)]);
    return text;
}

} // namespace quorvell
