// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/ReminderRequest.h"

#include "QuorvellCore/reminders/DaySearch.h"
#include "QuorvellCore/reminders/PhrasePatterns.h"
#include "QuorvellCore/reminders/PhraseWords.h"
#include "QuorvellCore/reminders/SpokenTimes.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>

namespace quorvell {

namespace {

using Verdict = ReminderRequest::Verdict;

std::string withoutMatch(const Pattern& pattern, std::string text)
{
    const auto match = pattern.find(text);
    return match ? text.erase(match->range.start, match->range.end - match->range.start) : text;
}

/// Undoes what cutting the time words leaves: "the to water the plants" of "the day after tomorrow to water the
/// plants", "lunch @" of "lunch @5pm", and a "remind me to" that stood behind a time and a comma.
std::string tidiedTask(const std::string& task, std::string_view words)
{
    static const Pattern articleBeforeTo(R"(^the\s+(?=to\s))", Pattern::Case::insensitive);
    static const Pattern article(R"(^the\s+)", Pattern::Case::insensitive);
    static const Pattern preposition(R"(^(?:to|about|that)\s+)", Pattern::Case::insensitive);
    static const Pattern atSign(R"(\s*@\s*$|^\s*@\s+)");
    const bool lostItsNoun = lowerCased(words).find("the day after tomorrow") != std::string::npos;
    std::string tidy = withoutMatch(atSign, withoutMatch(PhrasePatterns::all().leadIn, task + ' '));
    const std::string withoutArticle = withoutMatch(lostItsNoun ? article : articleBeforeTo, tidy);
    if (withoutArticle != tidy)
        tidy = withoutMatch(PhrasePatterns::all().leadIn, withoutMatch(preposition, withoutArticle));
    return withUpperCaseFirst(trimmed(tidy, ",.;:-!"));
}

/// Where a task still names a day or a time that was passed over, so that the rest must not be taken for the whole:
/// "31 april at 5 pm" is not today at 5 pm.
class PassedOverWords {
public:
    PassedOverWords(std::string_view task, bool hasTime, LocalDay today)
    {
        const LowerCasedText lower(task);
        findImpossibleDate(lower.text(), today);
        find(otherDay(), lower.text());
        if (!hasTime)
            find(impossibleTime(), lower.text());
        if (m_range)
            m_range = TextRange{lower.inputPosition(m_range->start), lower.inputEndPosition(m_range->end)};
    }

    const std::optional<TextRange>& range() const { return m_range; }

private:
    /// Only one day is understood of "every monday and wednesday", and of "every other monday"; none of "yesterday at
    /// 5 pm".
    static const Pattern& otherDay()
    {
        static const Pattern pattern(R"(^(?:and|or|until|till)\s+(?:on\s+)?)"
                                     R"((?:sunday|monday|tuesday|wednesday|thursday|friday|saturday|tomorrow)s?\b)"
                                     R"(|^yesterday\b(?!['’]))"
                                     R"(|^(?:every|each)\s+(?:other|second|third|fourth|two|three|four|six|\d+)\b)"
                                     R"(|\b(?:every|each)\s+(?:other|second|third|fourth)$)");
        return pattern;
    }

    static const Pattern& impossibleTime()
    {
        static const Pattern pattern(R"((?:^|\b(?:at|by)\s+)\d{1,2}(?::\d{2}\b|\s*[ap]\.?m\b\.?))");
        return pattern;
    }

    /// Only real months count here: 40 marshmallows are no date.
    void findImpossibleDate(std::string_view task, LocalDay today)
    {
        const auto match = PhrasePatterns::all().dayAndMonth.find(task);
        if (!match)
            return;
        const bool isDayFirst = match->groups[0].has_value();
        const auto day = PhraseWords::amount(match->texts[isDayFirst ? 0 : 3]).value_or(0);
        const auto month = PhraseWords::month(match->texts[isDayFirst ? 1 : 2]).value_or(1);
        const TextRange monthStart = *match->groups[isDayFirst ? 1 : 2];
        const std::string_view rest = task.substr(monthStart.start);
        const std::string_view word = rest.substr(0, rest.find_first_not_of("abcdefghijklmnopqrstuvwxyz"));
        const bool isMonth =
            word == "sept" || PhraseWords::months[static_cast<std::size_t>(month - 1)].starts_with(word);
        if (isMonth && !nextDate(month, day, today))
            m_range = match->range;
    }

    void find(const Pattern& pattern, std::string_view task)
    {
        const auto match = m_range ? std::nullopt : pattern.find(task);
        if (match)
            m_range = match->range;
    }

    std::optional<TextRange> m_range;
};

} // namespace

ReminderRequest ReminderRequest::fromWords(std::string_view words, Instant now, const Calendar& calendar)
{
    const std::string text = withWrittenTimes(repairUtf8(words));
    const auto phrase = ReminderPhrase::parse(text, now, calendar);
    ReminderRequest request;
    request.task = tidiedTask(phrase ? phrase->task : text, text);
    const bool hasTime = phrase && phrase->hasTime;
    if (const auto range = PassedOverWords(request.task, hasTime, calendar.day(now)).range()) {
        static const Pattern preposition(R"(^\s*to\s+)", Pattern::Case::insensitive);
        const std::string rest = request.task.erase(range->start, range->end - range->start);
        request.task = tidiedTask(withoutMatch(preposition, rest), text);
        return request;
    }
    if (!phrase)
        return request;

    std::vector<Instant> choices = phrase->alternatives;
    choices.insert(choices.begin(), phrase->date);
    std::erase_if(choices, [&](Instant choice) { return choice <= now; });
    if (choices.size() > 1) {
        request.verdict = Verdict::whichTime;
        request.date = choices.front();
        request.hasTime = true;
        request.choices = std::move(choices);
        request.repeatRule = phrase->repeatRule;
        return request;
    }
    const Instant date = choices.empty() ? phrase->date : choices.front();
    return settled(request.task, date, phrase->hasTime, phrase->repeatRule, now, calendar);
}

ReminderRequest ReminderRequest::settled(std::string_view task, Instant date, bool hasTime,
    std::optional<ReminderRepeat> repeatRule, Instant now, const Calendar& calendar)
{
    ReminderRequest request{Verdict::ready, std::string(task), date, hasTime, {}, std::move(repeatRule)};
    if (date < now && request.repeatRule)
        request.date = request.repeatRule->next(now, date, calendar).value_or(date);
    if (request.date < now)
        request.verdict = Verdict::pastTime;
    else if (request.task.empty())
        request.verdict = Verdict::needsTask;
    return request;
}

} // namespace quorvell
