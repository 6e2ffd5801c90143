// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/phrase/PhraseReading.h"
#include "QuorvellCore/reminders/phrase/PhraseTask.h"
#include "QuorvellCore/reminders/request/NotTimes.h"
#include "QuorvellCore/reminders/request/PassedOverTimes.h"
#include "QuorvellCore/reminders/request/RepeatDays.h"
#include "QuorvellCore/reminders/request/RequestCorrection.h"
#include "QuorvellCore/reminders/request/RequestTask.h"
#include "QuorvellCore/reminders/request/RestatedWords.h"
#include "QuorvellCore/reminders/request/SaidDates.h"
#include "QuorvellCore/reminders/request/WrittenRequest.h"
#include "QuorvellCore/reminders/wording/RequestTokens.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Verdict = ReminderRequest::Verdict;

/// "Every year on this date": the date of today.
std::string withThisDate(std::string words, Instant now, const Calendar& calendar)
{
    static const Pattern thisDate(R"(\bon (?:this|the same) (?:date|day)\b)", Pattern::Case::insensitive);
    static const Pattern rule(R"(\b(?:every|each|weekly|monthly|yearly|annually)\b)", Pattern::Case::insensitive);
    constexpr std::size_t longest = 400; // Bytes; longer requests are hardly said.
    const bool mayMatch = words.size() <= longest && asciiLowerCased(words).find("on th") != std::string::npos;
    const auto match = mayMatch ? thisDate.find(words) : std::nullopt;
    if (!match || !rule.find(words))
        return words;
    const std::string day = "on " + DateParts::fromDay(now, calendar).text();
    return words.replace(match->range.start, match->range.end - match->range.start, day);
}

/// The words of a request, as far as they were read.
class RequestReading {
public:
    RequestReading(RequestWording& wording, Instant now, const Calendar& calendar)
        : m_wording(wording)
    {
        RequestTokens& tokens = wording.tokens();
        markNotTimes(tokens);
        const SaidDates said = SaidDates::find(tokens, calendar.day(now));
        m_phrase = PhraseReading::of(wording.lower().text(), hints(said), now, calendar);
        if (m_phrase)
            tokens.markTimes(mergedRanges(m_phrase->findings.ranges));
        m_passedOver = passedOverTimes(tokens, m_phrase ? m_phrase->findings : PhraseFindings());
        if (said.isContradiction)
            passOver(About::day, said.words);
        if (m_phrase)
            findDisagreements(calendar);
    }

    const std::optional<PhraseReading>& phrase() const { return m_phrase; }
    bool isWhole() const { return m_passedOver.empty(); }

    /// What is left without the words of times, understood or not.
    std::string task() const
    {
        std::vector<TextRange> ranges;
        for (const PassedOverTime& time : m_passedOver)
            if (!time.isOfTask)
                ranges.push_back(time.words);
        if (m_phrase)
            ranges.insert(ranges.end(), m_phrase->findings.ranges.begin(), m_phrase->findings.ranges.end());
        for (TextRange& range : ranges)
            range = m_wording.asWritten(range);
        return ranges.empty() ? m_wording.text() : phraseTask(m_wording.text(), mergedRanges(std::move(ranges)));
    }

    /// Those that were passed over, or do not agree, as they were written.
    std::string unclearWords() const
    {
        constexpr std::size_t most = 60; // Characters that one can still follow in a question.
        std::vector<TextRange> ranges;
        for (const PassedOverTime& time : m_passedOver)
            ranges.push_back(m_wording.asWritten(time.words));
        return firstCharacters(trimmed(wordsAt(m_wording.text(), mergedRanges(std::move(ranges))), ".,;:!?()"), most);
    }

    UnderstoodTime understood(const Calendar& calendar) const
    {
        return m_phrase ? UnderstoodTime::of(*m_phrase, m_passedOver, calendar) : UnderstoodTime();
    }

private:
    using About = PassedOverTime::About;

    void passOver(About about, const std::vector<TextRange>& words)
    {
        for (const TextRange& range : words)
            m_passedOver.push_back({about, range, false});
    }

    /// "Tomorrow morning at 11 pm", "tonight at 7 am"; and "every month", which names no day of it.
    void findDisagreements(const Calendar& calendar)
    {
        const PhraseFindings& findings = m_phrase->findings;
        if (findings.clock && findings.part && !isOfPart(calendar.parts(m_phrase->date.date).hour, *findings.part))
            passOver(About::clock, findings.ranges);
        const bool isOfNoDay = findings.repeat
            && (findings.repeat == PhraseRepeat::weeklyOnDate || findings.repeat == PhraseRepeat::monthlyOnDate
                || findings.repeat == PhraseRepeat::yearly);
        if (isOfNoDay && !findings.day && !findings.instant)
            passOver(About::day, {TextRange{0, 0}}); // No words were passed over: one is missing.
    }

    /// Generously: people say "this evening at 5" and "tonight at 3 am".
    static bool isOfPart(int hour, DayPart part)
    {
        switch (part) {
        case DayPart::morning:
            return hour < 12;
        case DayPart::afternoon:
            return hour >= 12 && hour < 20;
        case DayPart::evening:
            return hour >= 16 || hour == 0;
        case DayPart::night:
            return hour >= 16 || hour < 6;
        }
        return true;
    }

    PhraseHints hints(const SaidDates& said) const
    {
        PhraseHints hints;
        const RequestTokens& tokens = m_wording.tokens();
        for (int index = 0; index < tokens.size(); ++index)
            if (!tokens.isOpen(index))
                hints.notTimes.push_back(tokens.token(index).range);
        if (said.day) {
            hints.day = said.day;
            hints.dayWords = said.words;
        }
        return hints;
    }

    const RequestWording& m_wording;
    std::optional<PhraseReading> m_phrase;
    std::vector<PassedOverTime> m_passedOver;
};

/// "Tomorrow at midnight" begins that day for some and ends it for others.
bool isEitherMidnight(const PhraseFindings& findings)
{
    return findings.clock && findings.clock->form == PhraseClock::Form::midnight && findings.day
        && findings.day->source != PhraseDay::Source::tonight && !findings.repeat;
}

/// A length of time from now is as good as a day.
bool isDayNamed(const PhraseFindings& findings)
{
    return findings.day || findings.instant || findings.repeat;
}

/// Nobody reads a request of a megabyte.
bool isTooLong(std::string_view text)
{
    return text.size() > ReminderPhrase::maximumBytes;
}

/// Words with what was read of them.
class ReadWords {
public:
    ReadWords(std::string_view words, Instant now, const Calendar& calendar)
        : m_wording(std::in_place, writtenRequest(words, now, calendar))
        , m_days(RepeatDays::find(*m_wording))
    {
        if (m_days)
            m_wording.emplace(m_days->words);
        m_reading.emplace(*m_wording, now, calendar);
    }

    const RequestReading& reading() const { return *m_reading; }
    const std::optional<RepeatDays>& days() const { return m_days; }
    UnderstoodTime understood(const Calendar& calendar) const
    {
        UnderstoodTime clear = m_reading->understood(calendar);
        if (m_days && !clear.rule.empty())
            clear.rule = m_days->spoken();
        return clear;
    }
    std::string task() const { return tidiedTask(m_reading->task(), m_wording->lower().text()); }

private:
    std::optional<RequestWording> m_wording;
    std::optional<RepeatDays> m_days;
    std::optional<RequestReading> m_reading;
};

/// The instants that the words may mean and that are still to come.
std::vector<Instant> choicesOf(const ReadWords& read, Instant now, const Calendar& calendar)
{
    const PhraseReading& phrase = *read.reading().phrase();
    std::vector<Instant> choices = phrase.date.alternatives;
    choices.insert(choices.begin(), phrase.date.date);
    if (read.days()) {
        for (Instant& choice : choices)
            choice = read.days()->firstAt(choice, now, calendar);
        std::ranges::sort(choices);
    }
    if (isEitherMidnight(phrase.findings))
        choices.push_back(calendar.addingDays(phrase.date.date, std::chrono::days(1)));
    std::erase_if(choices, [&](Instant choice) { return choice <= now; });
    return choices;
}

/// The time that is meant in the end, in words; nothing where it is not clear what the second one takes the place of.
std::optional<std::string> correctedTime(
    const ReadWords& before, const ReadWords& after, std::string time, const Calendar& calendar)
{
    const auto& old = before.reading().phrase();
    const auto& fresh = after.reading().phrase();
    if (!old || !fresh || !after.reading().isWhole())
        return std::nullopt;
    const UnderstoodTime kept = before.understood(calendar);
    const UnderstoodTime named = after.understood(calendar);
    const bool isLength = fresh->findings.instant.has_value();
    const bool namesDay = !named.day.empty() || !named.rule.empty() || isLength;
    if (!kept.rule.empty() && namesDay && named.rule.empty()) // One time of it, or another rule?
        return std::nullopt;
    const bool namesAll = isLength || (namesDay && !named.clock.empty());
    if (!before.reading().isWhole() && !namesAll) // What was doubtful may be what stays.
        return std::nullopt;
    if (named.clock.empty() && !isLength)
        time += " " + kept.clock;
    if (!namesDay)
        time += !kept.rule.empty() ? " " + kept.rule : kept.day.empty() ? "" : " on " + kept.day;
    return time;
}

struct CorrectedWords {
    std::string task;
    std::string time;
};

/// "Call mum tomorrow at 5 pm, no wait, 6 pm, no, 7": what was not put right stays.
std::optional<CorrectedWords> correctedWords(std::string_view words, Instant now, const Calendar& calendar)
{
    const auto correction = RequestCorrection::find(words);
    if (!correction)
        return std::nullopt;
    const auto earlier = correctedWords(correction->before, now, calendar);
    const ReadWords before(earlier ? earlier->time : correction->before, now, calendar);
    const ReadWords after(correction->after, now, calendar);
    const std::string task = earlier ? earlier->task : before.task();
    const auto time = correctedTime(before, after, correction->after, calendar);
    if (!time || (!task.empty() && !after.task().empty()))
        return std::nullopt;
    return CorrectedWords{task.empty() ? after.task() : task, *time};
}

std::optional<ReminderRequest> corrected(std::string_view words, Instant now, const Calendar& calendar)
{
    const auto meant = correctedWords(words, now, calendar);
    if (!meant)
        return std::nullopt;
    ReminderRequest request = ReminderRequest::fromWords(meant->time, now, calendar);
    if (request.verdict == Verdict::ready || request.verdict == Verdict::needsTask)
        return ReminderRequest::settled(meant->task, request.date, request.hasTime, request.repeatRule, now, calendar);
    request.task = meant->task;
    return request;
}

/// Of a day that has two readings, `first` by the one and `second` by the other: both are choices, in the order of
/// time.
ReminderRequest ofEitherDay(ReminderRequest first, const ReminderRequest& second)
{
    std::vector<Instant> choices;
    bool isClear = true;
    for (const ReminderRequest* one : {&std::as_const(first), &second}) {
        isClear = isClear && one->verdict != Verdict::needsTime && one->verdict != Verdict::pastTime;
        if (one->choices.empty())
            choices.push_back(one->date);
        choices.insert(choices.end(), one->choices.begin(), one->choices.end());
    }
    first.isEitherDay = true;
    first.verdict = isClear ? Verdict::whichTime : Verdict::needsTime;
    if (!isClear) { // Something else of the time has to be asked first.
        first.understood.day.clear();
        return first;
    }
    std::ranges::sort(choices);
    first.date = choices.front();
    first.choices = std::move(choices);
    return first;
}

/// "On 4/12", "every tuesday at five starting from december", "not to eat after 8 pm".
std::optional<ReminderRequest> restated(std::string_view words, Instant now, const Calendar& calendar)
{
    const auto other = RestatedWords::find(words, now, calendar);
    if (!other)
        return std::nullopt;
    ReminderRequest request = ReminderRequest::fromWords(other->words, other->seenFrom, calendar);
    if (!other->elseWords.empty())
        return ofEitherDay(std::move(request), ReminderRequest::fromWords(other->elseWords, now, calendar));
    if (other->comesBack ? !request.repeatRule : request.verdict != Verdict::ready)
        return std::nullopt;
    request.task += other->endOfTask;
    return request;
}

/// "Tonight", said late in the evening: not over, but no hour was named that is still to come.
bool isLateTonight(const PhraseFindings& findings, Instant moment, Instant now, const Calendar& calendar)
{
    const bool isOnlyPart = findings.part && !findings.clock && !findings.instant && !findings.offsetDays;
    const bool isEvening = isOnlyPart && (*findings.part == DayPart::night || *findings.part == DayPart::evening);
    return isEvening && moment <= now && calendar.isSameDay(moment, now);
}

} // namespace

ReminderRequest ReminderRequest::fromWords(std::string_view words, Instant now, const Calendar& calendar)
{
    ReminderRequest request;
    if (isTooLong(words))
        return request;
    for (const auto reader : {corrected, restated})
        if (auto meant = reader(words, now, calendar))
            return *std::move(meant);
    const ReadWords read(withThisDate(std::string(words), now, calendar), now, calendar);
    const RequestReading& reading = read.reading();
    request.task = read.task();
    request.namesDay = reading.phrase() && isDayNamed(reading.phrase()->findings);
    if (!reading.phrase() || !reading.isWhole()) {
        request.unclear = reading.unclearWords();
        request.understood = read.understood(calendar);
        return request;
    }

    const PhraseDate& date = reading.phrase()->date;
    const auto rule = read.days() ? std::optional(read.days()->rule) : date.repeatRule;
    std::vector<Instant> choices = choicesOf(read, now, calendar);
    if (choices.size() > 1) {
        request.verdict = Verdict::whichTime;
        request.date = choices.front();
        request.hasTime = true;
        request.choices = std::move(choices);
        request.repeatRule = rule;
        return request;
    }
    const Instant moment = choices.empty() ? date.date : choices.front();
    const bool isRestOfToday = moment <= now && !date.hasTime && !date.repeatRule && calendar.isSameDay(moment, now);
    if (isRestOfToday
        || (!rule
            && isLateTonight(
                reading.phrase()->findings, moment, now, calendar))) { // Nobody said the hour that is past.
        request.understood = read.understood(calendar);
        return request;
    }
    ReminderRequest ready = settled(request.task, moment, date.hasTime, rule, now, calendar);
    ready.namesDay = request.namesDay;
    return ready;
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
