// SPDX-License-Identifier: MIT
// The patterns of questions read the words in lower case, without signs, contractions taken apart.
#include "Understanding/requests/TalkedOfRules.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/requests/TalkedOf.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestText.h"

#include <array>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;
using Kind = TalkedOf::Kind;

const std::string asking = "^(?:(?:and|so|but|oh|ok|okay|wait|sorry|hm+) )*";

std::string told(const TalkedOf& talked)
{
    const std::string when = SpokenWhen::on(SpokenWhen::date(*talked.start));
    const std::string title =
        talked.kind == Kind::alarm && (talked.title.empty() || talked.title == "Alarm") ? "The alarm" : talked.title;
    return title.empty() ? "That is " + when + "." : title + (talked.repeats ? ", next " : ", ") + when + ".";
}

std::chrono::weekday weekdayOf(const DateParts& day)
{
    return std::chrono::weekday(std::chrono::sys_days(std::chrono::year(day.year)
        / std::chrono::month(static_cast<unsigned>(day.month)) / std::chrono::day(static_cast<unsigned>(day.day))));
}

/// Whether it is then; nothing for words that are no day and no part of one.
std::optional<bool> isThen(const std::string& words, const TalkedOf& talked, const RuleSurroundings& around)
{
    constexpr std::array<std::string_view, 7> names{
        "sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};
    const unsigned weekday = weekdayOf(*talked.start).c_encoding();
    constexpr unsigned saturday = 6;
    const bool isFree = weekday == 0 || weekday == saturday;
    if (words == "weekend" || words == "the weekend")
        return isFree;
    if (words == "weekday" || words == "workday" || words == "work day")
        return !isFree;
    for (unsigned index = 0; index < names.size(); ++index)
        if (words == names.at(index))
            return weekday == index;
    static const Pattern part("^(?:in the |at )?(morning|afternoon|evening|night)$");
    if (const auto match = part.find(words)) {
        constexpr int noon = 12;
        constexpr int evening = 17;
        if (!talked.hasHour())
            return std::nullopt;
        const int hour = talked.start->hour;
        return match->texts[0] == "morning"  ? hour < noon
            : match->texts[0] == "afternoon" ? hour >= noon && hour <= evening
                                             : hour >= evening;
    }
    const auto days = SpokenDays::read(words, around);
    return days ? std::optional(days->hold(*days == SpokenDays() ? *talked.start : talked.start->wholeDay()))
                : std::nullopt;
}

/// "Is that a monday?", "in the evening, right?"
Step whether(const std::string& phrase, const TalkedOf& talked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern asks(
        asking + "(?:is|was|will) (?:it|that|this)(?: be)?(?: then| still| really)?(?: on| for)? ?(?:an? )?(\\S.*)$");
    static const Pattern tagged(
        asking + "(?:that is |it is |that )?(?:on )?(\\S.*?) (?:right|correct|yes|yeah|is it not|is not it)$");
    auto match = asks.find(phrase);
    if (!match)
        match = tagged.find(phrase);
    const auto isSo = match ? isThen(match->texts[0], talked, around) : std::nullopt;
    if (!isSo)
        return std::nullopt;
    return RuleStep{(*isSo ? "Yes. " : "No. ") + told(talked), std::move(memory)};
}

Step when(const std::string& phrase, const TalkedOf& talked, RequestMemory memory)
{
    static const Pattern day(asking
        + "(?:(?:what|which) (?:day|date|weekday)(?: of the week)? (?:is|was|will) (?:it|that|this)(?: be)?(?: on| "
          "again| then)?|(?:what|which) (?:day|date)(?: is it| was it)? (?:on|for)|on (?:what|which) day(?: is it| is "
          "that)?|when(?: again)?|today or tomorrow|tomorrow or today)$");
    static const Pattern time(asking
        + "(?:(?:at )?what time(?: is that| was that| is it (?:on|at|for|set for)| again| then)?|at what time)$");
    static const Pattern thing(asking + "when (?:is|was) (?:it|that|this)(?: again| then| set for)?$");
    const bool isAsked = day.find(phrase)
        || (talked.kind != Kind::day && ((talked.hasHour() && time.find(phrase)) || thing.find(phrase)));
    return isAsked ? Step(RuleStep{told(talked), std::move(memory)}) : std::nullopt;
}

/// The time of an addition: "and saturday at 9", "sunday too", "friday only, sorry". Empty for anything else.
std::string timeAdded(const std::string& words, const RuleSurroundings& around)
{
    static const Pattern lead("^(?:(?:and|also|plus|on|for)[,]? )+(?=\\S)", Pattern::caseless);
    static const Pattern tail(
        "[,]?(?: (?:too|as well|also|only|sorry|yes|please|obviously|of course|then))+[.!]*$", Pattern::caseless);
    const std::string time = trimmed(tail.replaceAll(lead.replaceAll(words, ""), ""), " ,.!");
    static const Pattern bareHour("^\\d{1,2}(?:[:.]\\d{2})?(?: ?[ap]\\.?m\\.?)?(?: |$)", Pattern::caseless);
    if (time.empty() || time.find('?') != std::string::npos)
        return {};
    const std::string whole = bareHour.find(time) ? "at " + time : time;
    return TimeWords::isTime(whole, around) || SpokenDays::read(time, around) ? whole : "";
}

std::string oneMore(const std::string& time, const TalkedOf& talked, const RuleSurroundings& around)
{
    const auto moment = SpokenMoment::read(time, around);
    const bool hasHour = moment && !moment->date.allDay;
    const bool hasDay = moment && moment->namesDay;
    const std::string when = time + (hasHour || !talked.hasHour() ? "" : " " + talked.hour());
    if (talked.kind == Kind::alarm)
        return "another one for " + when;
    if (talked.kind == Kind::event)
        return "put " + talked.title + " into my calendar " + when + (hasDay ? "" : " " + talked.day());
    return {};
}

} // namespace

std::optional<RuleStep> TalkedOfRules::answer(
    const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t longest = 60; ///< Bytes.
    const TalkedOf talked = TalkedOf::of(memory);
    const bool isPassing = !memory.passing.skill.empty() && memory.passing.turn + 1 == memory.turn;
    if (talked.kind == Kind::none || isPassing || core.size() > longest)
        return std::nullopt;
    const std::string phrase = RequestText::phrase(core);
    if (auto step = whether(phrase, talked, memory, around))
        return step;
    if (auto step = when(phrase, talked, memory))
        return step;
    static const Pattern too("\\b(?:too|as well|also)[.!]*$", Pattern::caseless);
    const std::string time = talked.kind == Kind::reminder && too.find(core) ? timeAdded(core, around) : "";
    if (time.empty() || !around.offers("set_reminder"))
        return std::nullopt;
    const SpokenMove to = SpokenMove::read(time, *talked.start, SpokenMove::FarHour::isUsual, around);
    if (to.choices.size() != 1)
        return std::nullopt;
    RuleStep step{ReminderCalls{around}.setAt(talked.title, to.choices.front(), ""), memory};
    step.memory.wish = {};
    return step;
}

std::string TalkedOfRules::another(
    const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t longest = 60; ///< Bytes.
    static const Pattern adds("^(?:and|also|plus)\\b|\\b(?:too|as well|also)[.!]*$", Pattern::caseless);
    static const Pattern dresses("\\b(?:only|sorry|yes|obviously|of course)[.!]*$", Pattern::caseless);
    const bool isAddition = adds.find(words).has_value();
    if (words.size() > longest || (!isAddition && !dresses.find(words)))
        return {};
    const std::string time = timeAdded(words, around);
    if (time.empty() || !isAddition)
        return time;
    const TalkedOf talked = TalkedOf::of(memory);
    // "And friday?" asks on where days were asked about; "and at 11" may put the hour right.
    const auto moment = SpokenMoment::read(time, around);
    const bool isFurther = talked.kind == Kind::alarm || (moment && moment->namesDay);
    return isFurther ? oneMore(time, talked, around) : "";
}

} // namespace quorvell
