// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/CalendarWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/reading/DaysAround.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/skills/calendar/reading/TimeOrder.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <vector>

namespace quorvell {

const std::string CalendarWords::calendar = "(?:calendar|schedule|agenda|diary|planner|timetable|itinerary)s?";
const std::string CalendarWords::occasion(
    "(?:part(?:y|ies)|dinners?|lunch|lunches|breakfast|brunch|concert|wedding|interview|haircut|lessons?|class|classes|"
    "training|dentist|doctor|vet|game|trip|date|yoga|pilates|gym|standups?|calls?|sessions?|practice|rehearsal|"
    "workshop|"
    "seminar|flight|drinks|coffee|visit|checkup|reunion|exam|lecture)");
const std::string CalendarWords::noun =
    "(?:(?:event|meeting|appointment|engagement|commitment|booking|reservation|conference)s?|"
    "activit(?:y|ies)|calendar entr(?:y|ies))";

namespace {

using Words = std::vector<std::string>;

struct Spelling {
    Spelling(const char* pattern, std::string_view word)
        : typed(pattern)
        , meant(word)
    {
    }

    Pattern typed;
    std::string_view meant;
};

/// Where a letter slipped, in the few words that everything depends on.
const std::deque<Spelling>& spellings()
{
    static const std::deque<Spelling> rows = [] {
        std::deque<Spelling> all;
        const auto add = [&](const char* typed, std::string_view meant) { all.emplace_back(typed, meant); };
        add("\\b(?:calender|calander|calandar|calendr|callendar|calenders|calander|calendat|calandr|claendar)\\b",
            "calendar");
        add("\\b(?:shedule|schedual|scedule|shcedule|scheduel|schdule|schedul|shedual)\\b", "schedule");
        add("\\b(?:meetting|meating|metting|meetin|meting|mtg)(?=s?\\b)", "meeting");
        add("\\b(?:appointmnet|appointement|apointment|appoinment|appointmnt|appiontment|appt)(?=s?\\b)",
            "appointment");
        add("\\b(?:evnt|envent|evnet|evetn)(?=s?\\b)", "event");
        add("(?<=\\b(?:today|tomorrow|week|weekend|month|evening|morning|afternoon|(?:mon|tues|wednes|thurs|fri|satur|"
            "sun)day))s(?= (?:\\w+ "
            "){0,2}"
            "(?:events?|meetings?|appointments?|schedule|calendar|agenda|plans?|diary|dinner|lunch|breakfast|class|"
            "call|party|"
            "yoga|gym)\\b)",
            "");
        add("\\bthe (?:day|date) of (?=today|tomorrow)", "");
        add("\\bnxt\\b", "next");
        add("\\b(?:wat|wot|wht)\\b", "what");
        add("\\bwen\\b", "when");
        add("\\b(?:wats|whats|wots)\\b", "what is");
        add("\\bw/? (?=[a-z])", "with ");
        add("\\bcal\\b", "calendar");
        add("\\bon my plate\\b", "on my calendar");
        add("\\bmy program(?:me)?\\b", "my schedule");
        add("\\br\\b", "are");
        add("\\bu\\b", "you");
        add("\\b(?:tmrw|tmr|tmw|tomoro|tommorow|tommorrow|tomorow)\\b", "tomorrow");
        add("\\bcancle\\b", "cancel");
        add("\\b(?:what|which) program(?:me)?s?\\b", "what events");
        add("(?<=\\bany )functions?(?= (?:is|are|on|in|at|today|tomorrow|this|there)\\b)", "event");
        add("\\b(?:any ?more|any longer)$", "anymore");
        return all;
    }();
    return rows;
}

Words typedWords(const std::string& text)
{
    const RequestWords words(text);
    Words parts;
    for (std::size_t index = 0; index < words.size(); ++index)
        parts.push_back(words.said(index, index + 1));
    return parts;
}

std::string joined(const Words& words, std::size_t first, std::size_t end)
{
    std::string text;
    for (std::size_t index = first; index < end; ++index)
        text += (text.empty() ? "" : " ") + words[index];
    return text;
}

bool isName(const std::string& word)
{
    return !EventName::isIdle(word) && !EventName::isNoun(word);
}

/// The words from the first to the last that name something, or the noun alone.
void readName(const std::string& others, EventSearch& search)
{
    const Words words = typedWords(others);
    const auto isPart = [](const std::string& word) { return !EventName::isIdle(word); };
    for (const std::string& word : words)
        if (EventName::isNoun(word) && search.noun.empty())
            search.noun = word;
    if (std::ranges::none_of(words, isName))
        return;
    const auto first = std::ranges::find_if(words, isPart);
    auto last = words.end();
    while (last != first && !isPart(*(last - 1)))
        --last;
    search.name =
        joined(words, static_cast<std::size_t>(first - words.begin()), static_cast<std::size_t>(last - words.begin()));
}

void readDays(std::string& words, EventSearch& search, const RuleSurroundings& around)
{
    std::string others;
    search.days = DaysAround::takePast(words, around);
    if (search.days)
        return;
    if (auto moment = SpokenDays::findMoment(words, around, others)) {
        const auto named = SpokenMoment::read(words, around);
        if (named && !named->namesDay)
            search.hour = moment->from;
        search.days = std::move(moment);
        words = others;
        return;
    }
    search.days = DaysAround::takeBounded(words, around);
    if (search.days)
        return;
    if (auto days = SpokenDays::find(words, around, others)) {
        search.days = std::move(days);
        words = others;
    }
}

/// "Parents evening", "movie night": the part of the day belongs to the name. It is written as no word of time while
/// the days are read.
struct NamedPart {
    std::string_view said;
    std::string_view masked;
};
constexpr std::array namedParts{NamedPart{"evening", "qevq"}, NamedPart{"night", "qnigq"},
    NamedPart{"morning", "qmorq"}, NamedPart{"afternoon", "qaftq"}};

std::string withPartsMasked(std::string subject)
{
    static const Pattern named(
        "\\b(?!(?:the|this|that|these|my|our|your|whole|entire|every|each|any|all|next|last|today|todays|tomorrow|"
        "tomorrows|yesterday|(?:mon|tues|wednes|thurs|fri|satur|sun)days?|day|early|late|later|one|same|some|"
        "for|from|with|until|till|before|after|during|over|through|about|and|are|was|free|busy|have|has|got|planned|"
        "scheduled|happening|going|doing|coming|anything|something|nothing|everything|things?|stuff|events?|meetings?|"
        "appointments?|plans?|there|else|other|good|work|calendar|schedule|agenda|diary|\\d\\w*)\\b)"
        "[a-z][a-z'’]{2,} (?:(?=evening\\b)|(?=night\\b)|(?=morning\\b)|(?=afternoon\\b))");
    const auto match = named.find(subject);
    if (!match)
        return subject;
    for (const auto& [said, masked] : namedParts)
        if (subject.compare(match->range.end, said.size(), said) == 0)
            return subject.replace(match->range.end, said.size(), masked);
    return subject;
}

std::string withPartsShown(std::string name)
{
    for (const auto& [said, masked] : namedParts)
        if (const std::size_t found = name.find(masked); found != std::string::npos)
            name.replace(found, masked.size(), said);
    return name;
}

/// "After the staff meeting on wednesday": bounded by an event and no hour.
void takeAnchor(std::string& subject, EventSearch& search, const RuleSurroundings& around)
{
    static const Pattern bounded(
        "(?<!\\bday )\\b(?:right |just |soon |straight |directly )?(after|before|following) "
        "((?:my |the |our )[a-z'’ -]+?|[a-z'’-]+|[a-z'’-]+ with [a-z'’ -]+?)"
        "(?= (?:on|at|in|for|of|from|today|tomorrow|tonight|this|next|(?:mon|tues|wednes|thurs|"
        "fri|satur|sun)day)\\b|$)");
    static const Pattern noEvent(
        "^(?:(?:the|my|our|next|last|week|weekend|month|year|day|days|event|events|that|this|it|"
        "them|these|work|school|bed|bedtime|dark|now|all|then|hours|office|"
        "a|an|few|christmas|easter|holidays?) ?)+$|^party$");
    const auto match = bounded.find(subject);
    std::string others;
    if (!match || noEvent.find(match->texts[1]) || SpokenDays::find(match->texts[1], around, others)
        || CalendarWords::holdsTimeWords(match->texts[1]) || CalendarWords::holdsTimeWords("at " + match->texts[1]))
        return;
    search.anchor = match->texts[1];
    search.isAfterAnchor = match->texts[0] != "before";
    subject = trimmed(subject.substr(0, match->range.start) + subject.substr(match->range.end));
}

/// "Everything but the dentist"
void takeExcept(std::string& subject, EventSearch& search)
{
    static const Pattern except(
        " (?:except|excluding|apart from|other than|but not|but|besides|without)(?: for)? (?:the |my |our )?(.+)$");
    const auto match = except.find(subject);
    if (!match)
        return;
    search.except = match->texts[0];
    subject = subject.substr(0, match->range.start);
}

/// "Everything except yoga this week": the days are those of everything.
void readDaysOfExcept(EventSearch& search, const RuleSurroundings& around)
{
    std::string others;
    if (search.except.empty() || search.days)
        return;
    search.days = SpokenDays::find(search.except, around, others);
    if (search.days)
        search.except = others;
}

/// "The second event on wednesday": no date.
void takePlace(std::string& subject, EventSearch& search)
{
    static const Pattern counted(
        "\\b(first|1st|second|2nd|third|3rd) (?=(?:thing|one|event|meeting|appointment|class|call|"
        "session|item|entry|engagement|activity)\\b)");
    const auto match = counted.find(subject);
    if (!match)
        return;
    const char digit = match->texts[0].front();
    search.place = digit == 'f' || digit == '1' ? 1 : digit == 's' || digit == '2' ? 2 : 3;
    subject = subject.substr(0, match->range.start) + subject.substr(match->range.end);
}

bool speaksOfTime(const std::string& words, const RuleSurroundings& around)
{
    return typedWords(SpokenMoment::wordsBeside(words, around)).size() < typedWords(words).size();
}

} // namespace

bool CalendarWords::holdsTimeWords(std::string_view name)
{
    static const Pattern time(
        "\\b(?:months?|weeks?|(?<!new )years?|weekends?|january|february|april|june|july|august|september|october|"
        "november|december|(?:in|of|for|until|since) (?:may|march)|(?:mon|tues|wednes|thurs|fri|satur|"
        "sun)days?|today|tomorrow|tonight|yesterday|noon|midnight"
        "|(?:at|after|before|between|from|until|till|by|around|past) (?:\\d|one|two|three|four|five|six|"
        "seven|eight|nine|ten|eleven|twelve)|\\d{1,2} ?[ap]m|\\d{1,2}:\\d\\d|\\d{1,2}(?:st|nd|rd|th))\\b");
    return time.find(name).has_value();
}

bool CalendarWords::namesPartOfDay(const std::string& plain)
{
    return withPartsMasked(plain) != plain;
}

CalendarWords CalendarWords::of(std::string_view core)
{
    const RequestWords words(core);
    CalendarWords said;
    for (std::size_t index = 0; index < words.size(); ++index)
        said.plain += (said.plain.empty() ? "" : " ") + std::string(words.at(index));
    for (const auto& [typed, meant] : spellings())
        said.plain = typed.replaceAll(said.plain, meant);
    said.plain = trimmed(said.plain);
    return said;
}

SpokenDays CalendarWords::asMeant(SpokenDays days, const RuleSurroundings& around)
{
    constexpr int sunday = 1;
    constexpr int evening = 18;
    constexpr int daysOfWeek = 7;
    const CalendarParts now = around.calendar.parts(around.now);
    static const Pattern week("^(?:in |for |of |on )?(?:this|the|my) week$", Pattern::caseless);
    static const Pattern weekend("^(?:at |on |for |over |in )?(?:this|the|my) weekend$", Pattern::caseless);
    const bool isWeek = week.find(days.words).has_value();
    if (now.weekday != sunday || (!isWeek && (now.hour < evening || !weekend.find(days.words))))
        return days;
    const auto dayAfter = [&](int count) {
        return DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(count)), around.calendar);
    };
    return isWeek ? SpokenDays{dayAfter(0), dayAfter(daysOfWeek), "from today to next Sunday"}
                  : SpokenDays{dayAfter(daysOfWeek - 1), dayAfter(daysOfWeek), "next weekend"};
}

bool CalendarWords::isOfOthers(std::string_view plain)
{
    static const Pattern other(
        "\\blists\\b|\\blist\\b(?! (?:(?:me|us|out|down) "
        ")?(?:all|my|the|our|every|everything|any|upcoming|what|todays?|"
        "tomorrows?|of (?:all |the |my )*(?:upcoming )?(?:events|meetings|appointments)|(?:future )?(?:events|meetings|"
        "appointments))\\b)"
        "|\\b(?:to|on) (?:my|the|our) (?:tasks|to[ -]?dos?|chores|errands)\\b"
        "|\\b(?:notes?|notebook|reminders?|alarms?|timers?|e-?mails?|messages?|files?|photos?|"
        "songs?|tabs?|windows?|free|available|availability|openings?|open (?:slots?|time)|slots?|"
        "gaps?|spare|squeeze|fit|calories|time zone|weather|news)\\b");
    return other.find(plain).has_value();
}

std::string CalendarWords::asSaid(const std::string& name, std::string_view core)
{
    const RequestWords words(core);
    std::string said;
    for (const std::string& word : typedWords(name)) {
        std::string found = word;
        for (std::size_t index = 1; index < words.size(); ++index) // The first of all begins with a capital anyway.
            if (words.at(index) == word)
                found = trimmed(words.said(index, index + 1), ".,;:!?\"");
        said += (said.empty() ? "" : " ") + found;
    }
    return said;
}

std::optional<EventSearch> CalendarWords::search(std::string subject, const RuleSurroundings& around)
{
    static const Pattern place(
        "\\b(?:(?:saved|noted|marked|listed|entered|put) )?(?:in|on|from|of|off|out of|to|into|at|"
        "within)(?: my| the| our| your)?(?: (?:work|family|personal|own|google|phone|online))? "
        + calendar + "\\b|\\b" + calendar + "(?= " + noun + ")");
    static const Pattern each(
        "\\b(?:all|every|everything|each|any|entire|whole)\\b|\\b(?:event|meeting|appointment|thing|"
        "engagement|commitment|booking|plan|conference)s\\b|\\bactivities\\b|\\bentries\\b");
    static const Pattern next(
        "\\b(?:next|upcoming|soonest|following|first)\\b(?! (?:week|month|year|weekend|few|couple|"
        "\\d|two|three|four|five|(?:mon|tues|wednes|thurs|fri|satur|sun)day)|\\s*(?:days|of))");
    constexpr std::size_t longestName = 6; ///< Words; more is a story, and no name.
    EventSearch search;
    // "My 2 pm appointment"
    static const Pattern bareHour(
        "(?<!\\bat )(?<!\\bto )(?<!\\band )(?<!\\bfrom )(?<!\\bafter )(?<!\\bbefore )(?<!\\bby )"
        "(?<!\\buntil )(?<!\\bbetween )(?<!\\baround )(?<!\\bfor )(?<!\\babout )(?<![\\d:])\\b"
        "(?=\\d{1,2}(?::\\d{2})? ?[ap]\\.?m\\b)");
    subject = TimeOrder::of(std::move(subject));
    takeExcept(subject, search);
    takePlace(subject, search);
    takeAnchor(subject, search, around);
    subject = trimmed(place.replaceAll(SpokenPhrase::withDigits(subject), " "));
    static const Pattern one("(?<=[ap]m) ones?\\b"); // "The 10 am one"
    subject = one.replaceAll(bareHour.replaceAll(subject, "at "), "");
    search.isAll = each.find(subject).has_value();
    subject = withPartsMasked(std::move(subject));
    readDays(subject, search, around);
    readDaysOfExcept(search, around);
    search.isNext = !search.isAll && (next.find(subject) || (search.place == 1 && !search.days));
    search.isUnclear = speaksOfTime(subject, around) || holdsTimeWords(lowerCased(subject));
    if (search.isUnclear)
        subject = SpokenMoment::wordsBeside(subject, around);
    readName(lowerCased(subject), search);
    search.name = withPartsShown(std::move(search.name));
    static const Pattern last("\\b(?:last|latest|final)\\b");
    search.isLast = search.days && !search.isAll && last.find(subject);
    if (typedWords(search.name).size() > longestName)
        return std::nullopt;
    return search;
}

} // namespace quorvell
