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

/// Where the next weekday of a list stands, behind "and" or, typed in haste, behind nothing: "every monday wednesday".
std::optional<int> anotherDay(const RequestTokens& tokens, int index)
{
    const int next = behindLink(tokens, index);
    const bool isPlain = tokens.has(next, Terms::weekday) && !tokens.has(next, Terms::wordToo);
    return weekdayNamed(tokens, next) && (next > index || isPlain) ? std::optional(next) : std::nullopt;
}

/// "every weekday", "daily": which days of the week, and the token behind it.
std::optional<std::pair<std::vector<int>, int>> severalDaysAt(const RequestTokens& tokens, int index)
{
    const int first = tokens.is(index, {"every", "each", "on", "all"}) ? index + 1 : index;
    if (tokens.is(first, {"weekday", "weekdays"}))
        return std::pair(std::vector{2, 3, 4, 5, 6}, first + 1);
    const bool isEveryDay =
        tokens.is(index, {"daily", "everyday"}) || (first > index && tokens.is(first, {"day", "days"}));
    return isEveryDay ? std::optional(std::pair(std::vector{1, 2, 3, 4, 5, 6, 7}, first + 1)) : std::nullopt;
}

/// "except on friday and saturday", "but not at the weekend": what is taken from `days`, and the token behind it.
std::optional<int> takeExceptions(const RequestTokens& tokens, int index, std::vector<int>& days)
{
    const bool isTwoWords = (tokens.is(index, {"but"}) && tokens.is(index + 1, {"not"}))
        || (tokens.is(index, {"apart"}) && tokens.is(index + 1, {"from"}))
        || (tokens.is(index, {"other"}) && tokens.is(index + 1, {"than"}));
    if (!isTwoWords && !tokens.is(index, {"except", "excluding", "besides"}))
        return std::nullopt;
    int next = index + (isTwoWords ? 2 : 1);
    while (tokens.is(next, {"on", "for", "at", "the"}))
        ++next;
    if (tokens.is(next, {"weekend", "weekends"})) {
        std::erase_if(days, [](int day) { return day == 1 || day == 7; });
        return next + 1;
    }
    std::optional<int> end;
    for (auto day = weekdayNamed(tokens, next) ? std::optional(next) : std::nullopt; day;
         day = anotherDay(tokens, *end)) {
        std::erase(days, *weekdayNamed(tokens, *day));
        end = *day + 1;
    }
    return end;
}

/// "Every weekday except friday", "daily but not on sundays".
std::optional<RepeatDays> withExceptions(const RequestWording& wording)
{
    const RequestTokens& tokens = wording.tokens();
    for (int index = 0; index < tokens.size(); ++index) {
        auto several = severalDaysAt(tokens, index);
        const int behind = several && tokens.is(several->second, {","}) ? several->second + 1
            : several                                                   ? several->second
                                                                        : 0;
        const auto end = several ? takeExceptions(tokens, behind, several->first) : std::nullopt;
        if (!end || several->first.empty())
            continue;
        const ReminderRepeat rule{ReminderRepeat::Kind::weekly, several->first, 0};
        const std::string lead =
            "every " + std::string(PhraseWords::weekdays[static_cast<std::size_t>(rule.weekdays.front() - 1)]);
        return RepeatDays{rule, *TokenReplacement::apply(wording, {{index, *end, lead}})};
    }
    return std::nullopt;
}

} // namespace

std::optional<RepeatDays> RepeatDays::find(const RequestWording& wording)
{
    if (auto days = withExceptions(wording))
        return days;
    const RequestTokens& tokens = wording.tokens();
    for (int index = 0; index < tokens.size(); ++index) {
        const bool isLed = tokens.is(index, {"every", "each"});
        const int first = isLed ? index + 1 : index;
        const auto weekday = weekdayNamed(tokens, first);
        if (!weekday || !(isLed || tokens.has(first, Terms::pluralWeekday)))
            continue;
        ReminderRepeat rule = ReminderRepeat::weekly(*weekday);
        int end = first + 1;
        for (auto another = anotherDay(tokens, end); another; another = anotherDay(tokens, end)) {
            rule.weekdays.push_back(*weekdayNamed(tokens, *another));
            end = *another + 1;
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
