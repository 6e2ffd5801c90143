// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmsMeant.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/skills/alarms/AlarmHours.h"
#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmSeries.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"
#include "Understanding/words/WordDistance.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <tuple>

namespace quorvell {

namespace {

constexpr int minutesOfHour = 60;

/// "tomorrow", "on Friday the 27th of November", "this week".
std::string dayWords(const SpokenDays& days, const LocalTime& around)
{
    static const Pattern near("^(?:today|tomorrow|tonight|this|in|on|at|between|next|the)\\b", Pattern::caseless);
    return near.find(days.words) || !days.isOneDay() || !days.from.allDay
        ? days.words
        : SpokenWhen::on(SpokenWhen::dateSeenFrom(days.from, around));
}

/// Words that choose none of them.
bool isEveryOne(const std::string& words)
{
    static const Pattern every(
        "\\b(?:both|all|every|each|alarms?|timers?|ones?|of them|them|been|me|myself|schedules?"
        "|more than one|at least one|several|multiple|scheduled|existing|saved|current(?:ly)?|active)\\b",
        Pattern::caseless);
    return RequestText::isIdle(every.replaceAll(words, ""));
}

/// One slip of the keyboard in a word, two in a long one, and one or several of a thing are the same.
bool isSameWord(const std::string& wanted, const std::string& word)
{
    constexpr std::size_t shortest = 4;
    constexpr std::size_t longWord = 8;
    if (wanted == word || wanted + "s" == word || wanted == word + "s")
        return true;
    return std::min(wanted.size(), word.size()) >= shortest
        && WordDistance::between(wanted, word) <= (wanted.size() >= longWord ? 2U : 1U);
}

bool hasName(const AlarmItem& item, const std::string& words)
{
    const RequestWords title(TextMatch::normalized(item.thing.title));
    const RequestWords wanted(TextMatch::normalized(words));
    const auto isInTitle = [&](const std::string& word) {
        for (std::size_t place = 0; place < title.size(); ++place)
            if (isSameWord(word, std::string(title.at(place))))
                return true;
        return false;
    };
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        const std::string word(wanted.at(index));
        if (!RequestText::isIdle(word) && !isInTitle(word))
            return false;
    }
    return true;
}

/// A name has letters, and not many words; else nobody knows what was said.
bool mayBeName(const std::string& words)
{
    static const Pattern name("^(?!(?:day|date|time|name|title)$)(?!.*(?:\\b(?:xx|am|pm)\\b|[:?/"
                              "\\[\\]<>]))\\p{L}[\\p{L}'’-]{2,}(?: \\S+){0,3}$",
        Pattern::caseless);
    return name.find(words).has_value();
}

/// Whether it must ring again and again, and on which kind of days; `said` for a reply.
const Pattern* takeRule(std::string& words, std::string& said)
{
    static const Pattern form(
        "\\b(?:on |the )?(?:(weekdays?|every weekday)|(weekends?)|(daily|every ?day|all days)"
        "|(repeat(?:s|ing|ed)?|recur(?:s|ring)?|regular|again and again)|(one[- ]?time|one[- ]?off|single|non[- "
        "]?(?:repeating|recurring)|that (?:do not|don['’]?t|does not) repeat))\\b",
        Pattern::caseless);
    static const Pattern weekdays("weekday");
    static const Pattern weekends("weekend|Saturday|Sunday|every day|daily");
    static const Pattern daily("every day|daily");
    static const Pattern any(".");
    static const Pattern none("^$");
    // "This weekend" is one of them: days, and no rule.
    static const Pattern one("\\b(?:this|next|the coming|coming) (?:weekend|weekday)\\b", Pattern::caseless);
    const auto match = one.find(words) ? std::nullopt : form.find(words);
    if (!match)
        return nullptr;
    words = trimmed(words.substr(0, match->range.start) + " " + words.substr(match->range.end));
    const std::tuple<const Pattern*, const char*> rules[] = {{&weekdays, "on weekdays"}, {&weekends, "at weekends"},
        {&daily, "every day"}, {&any, "that repeats"}, {&none, "that rings only once"}};
    for (std::size_t index = 0; index < std::size(rules); ++index) {
        if (!match->groups[index])
            continue;
        said = std::get<1>(rules[index]);
        return std::get<0>(rules[index]);
    }
    return nullptr;
}

/// "After friday", "until friday"; nothing for an hour.
std::optional<SpokenDays> takeOpenDays(std::string& words, const LocalTime& around)
{
    static const Pattern form("\\b(?:(after|from|since)|(before)|(until|till)|up to) (.+)$", Pattern::caseless);
    constexpr int minutesOfDay = 24 * minutesOfHour;
    constexpr int longest = 400; ///< Days ahead that an alarm is looked for.
    const auto match = form.find(words);
    const auto day = match ? SpokenDays::read(match->texts[3], around) : std::nullopt;
    if (!day || !day->from.allDay)
        return std::nullopt;
    const DateParts today = DateParts::fromDay(around.now, around.calendar);
    const std::string name = Pattern("^on ").replaceAll(dayWords(*day, around), "");
    words = trimmed(words.substr(0, match->range.start));
    if (match->groups[0]) {
        const std::string link = lowerCased(match->texts[0]);
        const DateParts first = link == "after" ? day->to.adding(minutesOfDay) : day->from;
        return SpokenDays{first, today.adding(longest * minutesOfDay), link + " " + name};
    }
    if (match->groups[1])
        return SpokenDays{today, day->from.adding(-minutesOfDay), "before " + name};
    // "Until wednesday" it rests, and wakes whoever counts on wednesday; "until the end of the week" has no such day.
    const bool isDayOfReturn = match->groups[2] && day->isOneDay() && today < day->from;
    return SpokenDays{today, isDayOfReturn ? day->from.adding(-minutesOfDay) : day->to, "until " + name};
}

/// "The last timer" is the one that was set last, "the last alarm" the latest of the day.
std::vector<AlarmItem> setLast(const std::vector<AlarmItem>& items, const std::string& words)
{
    static const Pattern last("^(?:the )?(?:last|latest|newest|most recent)(?: one)?$", Pattern::caseless);
    static const Pattern set(
        "^(?:the )?(?:(?:one |ones )?(?:that |which )?(?:(?:i|you|we) )?(?:have )?just (?:now )?"
        "(?:set|made|added|created)|(?:last|latest|newest|most recent)(?: one)? (?:that )?(?:i|you) (?:just )?"
        "(?:set|made|started|added|created)|newest|most recent)(?: one)?$",
        Pattern::caseless);
    const bool areTimers = std::ranges::all_of(items, &AlarmItem::isTimer);
    const auto newest = std::ranges::find_if(items, &AlarmItem::wasSetLast);
    const bool isMeant = set.find(words) || (areTimers && last.find(words));
    return isMeant && newest != items.end() ? std::vector{*newest} : std::vector<AlarmItem>();
}

enum class End { earliest, latest, earliestHour, latestHour };

/// "The earliest one tomorrow"; alone it is a place in the list.
std::optional<End> takeEnd(std::string& words)
{
    static const Pattern form("^(?:the |my )?(?:(early|earlier|soonest|first)|(earliest)|(latest)|late|later|last)(?: "
                              "(?:ones?|of|on|for|in))*"
                              "(?: (?=\\S)|$)",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    words = words.substr(match->range.end);
    return match->groups[0] ? End::earliest
        : match->groups[1]  ? End::earliestHour
        : match->groups[2]  ? End::latestHour
                            : End::latest;
}

/// "All except the 7 am one": the words behind it, taken away.
std::string takeException(std::string& words)
{
    static const Pattern form("\\b(?:except|excluding|besides|apart from|other than|but(?: not)?|not)(?: for)?(?: the| "
                              "my)? (.+?)(?: ones?| alarms?)?$",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return {};
    words = trimmed(words.substr(0, match->range.start));
    return match->texts[0];
}

AlarmsMeant allBut(
    const std::vector<AlarmItem>& items, const std::string& which, const std::string& spared, const LocalTime& around)
{
    AlarmsMeant meant = AlarmsMeant::among(items, which, around);
    const AlarmsMeant kept = AlarmsMeant::among(items, spared, around);
    meant.isNarrowed = true;
    meant.isUnderstood = meant.isUnderstood && kept.isNarrowed && !kept.items.empty();
    if (!meant.isUnderstood)
        meant.items.clear();
    std::erase_if(
        meant.items, [&](const AlarmItem& item) { return std::ranges::find(kept.items, item) != kept.items.end(); });
    meant.words = "besides that";
    return meant;
}

/// "My morning alarm" rings in the morning of any day.
bool isPartOnly(const std::string& words)
{
    static const Pattern part("\\b(?:mornings?|afternoons?|evenings?|nights?)\\b", Pattern::caseless);
    static const Pattern day(
        "\\b(?:this|to(?:day|morrow|night)|\\w+day|next|week|weekend|in \\d)\\b|\\d(?:st|nd|rd|th)", Pattern::caseless);
    return part.find(words) && !day.find(words);
}

void add(std::string& text, const std::string& words)
{
    text += (text.empty() || words.empty() ? "" : " ") + words;
}

/// "Tomorrows", "630", "seven" at the end and the like, as the readers below know them.
std::string plainWords(const std::string& which)
{
    static const Pattern ofDay(
        "(?<=day|row|tonight|week)['’]s\\b|(?<=\\btomorrow|\\btoday|\\btonight)s\\b", Pattern::caseless);
    static const Pattern edges(
        "^(?:(?:that|which) (?:rings?|goes? off|sounds?|is|are)|just|only|even|the one|the ones|for|set "
        "for)\\b\\s*|\\s*\\b(?:only|just|please|off|back|anymore|any more|as well)$",
        Pattern::caseless);
    static const Pattern number(
        "^(?:one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve)\\b", Pattern::caseless);
    static const Pattern run("^(?:[01]?\\d|2[0-3])(?=[0-5]\\d(?:$| ?[ap]m| hours| hrs| ))", Pattern::caseless);
    static const Pattern once("\\bone[- ]?(?:time|off)\\b", Pattern::caseless); // Not an hour.
    std::string words = once.replaceAll(edges.replaceAll(ofDay.replaceAll(which, ""), ""), "single");
    if (const auto hour = run.find(words)) // "The 630 alarm".
        words.insert(hour->range.end, ":");
    static const Pattern at("^at ");
    return number.find(words) ? at.replaceAll(SpokenPhrase::withDigits("at " + words), "")
                              : SpokenPhrase::withDigits(words);
}

/// "7 or 7:30": the second of two hours of which either will do.
std::optional<AlarmHours> takeOtherClock(std::string& words)
{
    static const Pattern form("^\\s*(?:or|and)\\s+(?:the |my )?(?=(?:at |for )?\\d)", Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    words = words.substr(match->range.end);
    return AlarmHours::takeClock(words);
}

/// "The earliest" and "the latest" are so by the hour of the day, however many days it is until then.
AlarmItem atEnd(const std::vector<AlarmItem>& items, End end)
{
    const auto minute = [](const AlarmItem& item) {
        return item.thing.start ? item.thing.start->hour * minutesOfHour + item.thing.start->minute : -1;
    };
    switch (end) {
    case End::earliest:
        return items.front();
    case End::earliestHour:
        return *std::ranges::min_element(items, {}, minute);
    case End::latestHour:
        return *std::ranges::max_element(items, {}, minute);
    case End::latest:
        break;
    }
    return items.back();
}

/// "Wednesday and thursday": the day behind the first where it is the next one.
void takeDayAfter(std::string& words, SpokenDays& days, const LocalTime& around)
{
    static const Pattern form("^\\s*(?:and|,|&)\\s*(?:on )?(.+)$", Pattern::caseless);
    const auto match = form.find(words);
    std::string others;
    const auto second = match ? SpokenDays::find(match->texts[0], around, others) : std::nullopt;
    constexpr int day = 24 * minutesOfHour;
    if (!second || second->from.wholeDay() != days.to.wholeDay().adding(day).wholeDay())
        return;
    words = others;
    days.to = second->to;
    days.words += " and " + dayWords(*second, around);
}

} // namespace

AlarmsMeant AlarmsMeant::among(const std::vector<AlarmItem>& items, std::string_view which, const LocalTime& around)
{
    AlarmsMeant meant{.items = items};
    std::string words = plainWords(trimmed(which, " ,.?!"));
    static const Pattern count("^(?:two|three|four|five)$", Pattern::caseless); // Of as many; in digits it is an hour.
    if (count.find(trimmed(which)) && AlarmSeries::countIn(trimmed(which)) == static_cast<int>(items.size()))
        return meant;
    if (const std::string spared = takeException(words); !spared.empty())
        return allBut(items, words, spared, around);
    if (isEveryOne(words) && words != "next" && words != "first")
        return meant;
    meant.isNarrowed = true;
    meant.words = "like that";
    static const Pattern next("^(?:the )?(?:next|coming|first)(?: one)?$", Pattern::caseless);
    if (auto newest = setLast(items, words); !newest.empty()) {
        meant.items = std::move(newest);
        return meant;
    }
    const auto place = next.find(words) ? std::optional(ListPlace{0}) : ListPlace::read(words);
    if (place) {
        const auto index = place->among(items.size());
        meant.items = items.empty() || !index ? std::vector<AlarmItem>() : std::vector{items[*index]};
        return meant;
    }
    const auto end = takeEnd(words);
    if (end && words.empty() && !items.empty()) {
        meant.items = {atEnd(items, *end)};
        return meant;
    }
    std::string ruleWords;
    const Pattern* rule = takeRule(words, ruleWords);
    const auto stretch = AlarmHours::takeStretch(words);
    auto days = takeOpenDays(words, around);
    std::string others;
    if (!days && !isPartOnly(words) && (days = SpokenDays::find(words, around, others))) {
        words = others;
        days->words = dayWords(*days, around);
        takeDayAfter(words, *days, around);
    }
    const auto clock = AlarmHours::takeClock(words);
    const auto otherClock = clock ? takeOtherClock(words) : std::nullopt;
    const auto part = AlarmHours::takePart(words);
    const bool isNamed = !isEveryOne(words);
    std::erase_if(meant.items, [&](const AlarmItem& item) {
        const int minute = item.thing.start ? item.thing.start->hour * minutesOfHour + item.thing.start->minute : -1;
        const auto isOutside = [&](const std::optional<AlarmHours>& hours) { return hours && !hours->hold(minute); };
        return (rule && !rule->find(item.often)) || isOutside(stretch)
            || (isOutside(clock) && (!otherClock || isOutside(otherClock))) || isOutside(part)
            || (days && !item.ringsOn(*days, around)) || (isNamed && !hasName(item, words));
    });
    if (end && meant.items.size() > 1)
        meant.items = {atEnd(meant.items, *end)};
    meant.isUnderstood = !isNamed || !meant.items.empty() || mayBeName(words);
    meant.words.clear();
    for (const auto* hours : {&stretch, &clock, &part})
        add(meant.words, *hours ? (*hours)->words : "");
    add(meant.words, days ? days->words : "");
    add(meant.words, ruleWords);
    add(meant.words, isNamed ? "for \"" + AlarmLine::withoutEdges(words) + "\"" : "");
    meant.days = days;
    return meant;
}

} // namespace quorvell
