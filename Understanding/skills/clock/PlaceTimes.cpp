// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/PlaceTimes.h"

#include "QuorvellCore/reckoning/places/PlaceZones.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/ClockTime.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenPhrase.h"

#include <chrono>
#include <cstdlib>
#include <vector>

namespace quorvell {

namespace {

using std::chrono::minutes;

/// A place and its clock.
struct PlaceClock {
    std::string place;
    Calendar calendar;
};

/// How the time of day is asked for, in front of a place.
const std::string theTime = "(?:(?:the |current |exact |actual |local |correct |right |present |precise |latest "
                            ")*(?:time|hour|clock)(?: of (?:the )?day)?"
                            "(?: is it| it is| is| it| be)?|how (?:late|time) is it|how late it is)";

bool isHere(std::string_view place)
{
    static const Pattern here("^(?:here|home|at home|my place|our place|my time|our time|local time|local|my local "
                              "time|mine|ours|my time zone|my zone)$");
    return place.empty() || here.find(place).has_value();
}

std::vector<PlaceClock> clocksIn(
    std::string_view place, const LocalTime& around, PlaceZones::Depth depth = PlaceZones::Depth::all)
{
    if (isHere(place))
        return {{"", around.calendar}};
    std::vector<PlaceClock> clocks;
    for (PlaceZone& zone : PlaceZones::find(place, depth)) {
        if (auto calendar = Calendar::create(zone.zone, around.calendar.locale()))
            clocks.push_back({std::move(zone.place), *std::move(calendar)});
    }
    return clocks;
}

std::string placed(const PlaceClock& clock)
{
    if (clock.place.empty())
        return " here";
    if (clock.place.ends_with("Coast"))
        return " on the " + clock.place;
    return clock.place.ends_with("time") || clock.place.ends_with("Time") || clock.place == "UTC"
        ? ", " + clock.place
        : " in " + clock.place;
}

/// "8 PM in Tokyo", "2 AM on Sunday in Tokyo"
std::string timeAt(Instant moment, const PlaceClock& there, const LocalTime& around)
{
    const auto day = there.calendar.day(moment);
    const bool isOtherDay = day != around.calendar.day(moment);
    return ClockText::clock(moment, there.calendar, around)
        + (isOtherDay ? " on " + ClockText::weekday(std::chrono::sys_days(day.time_since_epoch())) : "")
        + placed(there);
}

std::string timesAt(Instant moment, const std::vector<PlaceClock>& clocks, const LocalTime& around)
{
    std::vector<std::string> parts;
    parts.reserve(clocks.size());
    for (const PlaceClock& clock : clocks)
        parts.push_back(timeAt(moment, clock, around));
    return ClockText::list(parts);
}

minutes offsetOf(const PlaceClock& clock, Instant moment)
{
    return std::chrono::duration_cast<minutes>(
        clock.calendar.localTime(moment).time_since_epoch() - moment.time_since_epoch());
}

/// "5 and a half hours"
std::string apart(minutes length)
{
    constexpr int hour = 60;
    constexpr int halfHour = 30;
    const auto hours = length.count() / hour;
    if (length.count() % hour == halfHour && hours > 0)
        return std::to_string(hours) + " and a half hours";
    return ClockText::length(length);
}

std::string named(const PlaceClock& clock)
{
    return clock.place.empty() ? "your time" : clock.place;
}

std::string compared(const PlaceClock& one, const PlaceClock& other, const LocalTime& around)
{
    const minutes ahead = offsetOf(one, around.now) - offsetOf(other, around.now);
    if (ahead.count() == 0)
        return withUpperCaseFirst(named(one)) + " and " + named(other) + " have the same time.";
    return withUpperCaseFirst(named(one)) + " is " + apart(std::chrono::abs(ahead))
        + (ahead.count() > 0 ? " ahead of " : " behind ") + named(other) + ".";
}

/// The time there when it is `times` in `from`.
std::optional<std::string> convertedTo(
    std::string_view place, std::string_view times, std::string_view from, const LocalTime& around)
{
    const auto clockTimes = ClockTime::read(times);
    // A bare number may count anything: "5 miles in km".
    const auto depth = clockTimes.size() > 1 ? PlaceZones::Depth::ownNames : PlaceZones::Depth::all;
    const auto here = clocksIn(from, around, depth);
    const auto there = here.empty() ? here : clocksIn(place, around, depth);
    if (there.empty() || here.size() != 1 || clockTimes.empty())
        return std::nullopt;
    std::string said;
    for (const minutes time : clockTimes) {
        const Calendar& calendar = here.front().calendar;
        const Instant moment = calendar.instant(calendar.day(around.now), time);
        said += std::string(said.empty() ? "" : ", and ") + ClockText::clock(moment, calendar, around)
            + placed(here.front()) + " is ";
        std::vector<std::string> parts;
        for (const PlaceClock& clock : there) {
            const auto shift = clock.calendar.day(moment) - calendar.day(moment);
            parts.push_back(ClockText::clock(moment, clock.calendar, around)
                + (shift.count() > 0        ? " the next day"
                        : shift.count() < 0 ? " the day before"
                                            : "")
                + placed(clock));
        }
        said += ClockText::list(parts);
    }
    return withUpperCaseFirst(said) + ".";
}

std::optional<std::string> later(const std::string& phrase, const LocalTime& around)
{
    static const Pattern ahead("^(?:the )?time (?:will it be|would it be|is it|it will be) (?:in )?(.+?)(?: from "
                               "now)?$|^(?:it )?(.+? (?:minutes?|hours?)) "
                               "from now$"
                               "|^in (.+?) (?:what|which) (?:time|hour) (?:will|would|is) it(?: be)?$");
    static const Pattern ago("^(?:the )?time was it (.+) ago$");
    const auto match = ahead.find(phrase);
    const auto back = match ? std::nullopt : ago.find(phrase);
    if (!match && !back)
        return std::nullopt;
    const auto length =
        SpokenLength::read(match ? match->texts[0] + match->texts[1] + match->texts[2] : back->texts[0]);
    if (!length || !trimmed(length->rest).empty())
        return std::nullopt;
    const Instant moment = around.now + minutes(match ? length->minutes : -length->minutes);
    const PlaceClock here{"", around.calendar};
    return "It " + std::string(match ? "will be " : "was ") + ClockText::clock(moment, here.calendar, around) + ".";
}

} // namespace

namespace {

/// "paris and in dubai"; empty unless both are known.
std::vector<PlaceClock> clocksInBoth(std::string_view places, const LocalTime& around)
{
    static const Pattern both("^(.+?),? (?:and|or|&)(?: also)?(?: (?:in|at|for))? (.+)$", Pattern::caseless);
    const auto match = both.find(places);
    auto clocks = match ? clocksIn(match->texts[0], around) : std::vector<PlaceClock>();
    const auto others = clocks.empty() ? clocks : clocksIn(match->texts[1], around);
    clocks.insert(clocks.end(), others.begin(), others.end());
    return others.empty() ? others : clocks;
}

/// "Is it 5 yet", "is it morning in Singapore": the time says it.
std::optional<std::string> checked(const std::string& phrase, const LocalTime& around)
{
    static const Pattern hour(
        "^(?:is it|has it gone|has it turned|has it struck|is it gone)(?: (?:already|past|after|gone|before"
        "|nearly|almost|about|still|only|later than))* (?:\\d{1,2}(?: \\d\\d)?|one|two|three|four|five|six|seven"
        "|eight|nine|ten|eleven|twelve|noon|midday|midnight|half past \\w+|quarter (?:to|past) \\w+)"
        "(?: ?o ?clock)?(?: ?[ap] ?m)?(?: in the \\w+| at night)?(?: yet| already| now| pm| am)*$");
    static const Pattern part(
        "^(?:is it|are we in) (?:(?:already|still|the|yet|a) )*(?:am|pm|morning|afternoon|evening|night|night ?time"
        "|day ?time|late|early|day)(?: or (?:the )?(?:am|pm|morning|afternoon|evening|night|day))?(?: (?:yet|already"
        "|now|right now|there|here|time))*(?: in (.+?))?(?: (?:yet|already|now|right now))*$");
    const auto match = part.find(phrase);
    if (match && !match->texts[0].empty())
        return clocksIn(match->texts[0], around).empty() ? std::nullopt
                                                         : std::optional(PlaceTimes::in(match->texts[0], around));
    return match || hour.find(phrase) ? std::optional(PlaceTimes::in("", around)) : std::nullopt;
}

/// "timbuktu" as it is written; a description stays as it is.
std::string asName(std::string_view place)
{
    static const Pattern description("^(?:the|a|an|my|our|his|her|their) ", Pattern::caseless);
    std::string name(place);
    for (std::size_t letter = 0; letter < name.size() && !description.find(place); ++letter) {
        if (letter == 0 || name[letter - 1] == ' ')
            name.replace(letter, name.size() - letter, withUpperCaseFirst(name.substr(letter)));
    }
    return name;
}

} // namespace

std::string PlaceTimes::in(std::string_view place, const LocalTime& around)
{
    static const Pattern zone(" (?:time ?zone|zone|standard time|time)$");
    auto clocks = clocksIn(place, around);
    if (clocks.empty())
        clocks = clocksIn(zone.replaceAll(std::string(place), ""), around);
    if (clocks.empty())
        clocks = clocksInBoth(place, around);
    if (clocks.empty())
        return "I do not know in which time zone " + asName(place) + " is. A bigger city near it may help.";
    if (clocks.size() == 1 && clocks.front().place.empty())
        return "It is " + ClockText::clock(around.now, around.calendar, around) + ".";
    return (clocks.size() == 1 ? "It is " : "There it is ") + timesAt(around.now, clocks, around) + ".";
}

bool PlaceTimes::lacksPlace(const std::string& phrase)
{
    static const Pattern some("^" + theTime
        + " (?:in|at) (?:a|an|another|some|any|the|different|other) (?:other |different |foreign "
          ")?(?:city|cities|town|place|country|countries|time zone|places)$");
    return some.find(phrase).has_value();
}

std::optional<std::string> PlaceTimes::current(const std::string& phrase, const LocalTime& around)
{
    static const Pattern bare(
        "^(?:" + theTime + "|(?:you )?got the time|have the time)(?: (?:today|here|where i am))?$");
    static const Pattern inPlace(
        "^" + theTime + "(?: right now| now)? (?:in|at|for|over in|on|of|here in|inside) (.+)$");
    static const Pattern behind("^" + theTime + " (?!in |at |for |on |of )(.+)$");
    static const Pattern before("^(?:the |current )*(.+?) (?:time|clock)(?: is it| it is| zone time)?$");
    static const Pattern isPlaceAsked("^(?:the )?(?:current |local |exact )*time (?:is it|it is)? ?(?:in|on|at) ");
    // "Time in Chicago is?"
    static const Pattern openEnd("^(.*\\btime\\b.*) is(?: it)?$");
    if (const auto open = openEnd.find(phrase))
        return current(open->texts[0], around);
    if (auto text = later(phrase, around))
        return text;
    static const Pattern clock(
        "^(?:the )?clock(?: (?:say|says|show|shows|read|reads))?$|^(?:do|does) the clock (?:say|show|read)$"
        "|^am i (?:late|early|on time)$");
    if (bare.find(phrase) || clock.find(phrase))
        return in("", around);
    if (auto text = checked(phrase, around))
        return text;
    const auto match = inPlace.find(phrase);
    const std::string place = match ? match->texts[0] : "";
    static const Pattern noPlace("^(?:the "
                                 ")?(?:morning|afternoon|evening|night|day|my|our)\\b|\\d|\\b(?:minutes?|hours?|days?|"
                                 "meeting|party|appointment|event|alarm|reminder)\\b");
    if (match && !noPlace.find(place)) {
        const bool isPlace = isPlaceAsked.find(phrase) || isHere(place) || !PlaceZones::find(place).empty();
        if (isPlace)
            return in(place, around);
    }
    for (const Pattern* form : {&behind, &before}) {
        const auto other = form->find(phrase);
        if (other && !PlaceZones::find(other->texts[0], PlaceZones::Depth::ownNames).empty())
            return in(other->texts[0], around);
    }
    return std::nullopt;
}

std::optional<std::string> PlaceTimes::difference(const std::string& phrase, const LocalTime& around)
{
    static const Pattern between(
        "^(?:the |how big is the |how much is the )*(?:time difference|difference in time|time zone "
        "difference|difference|hours)(?: is there| are there| is it| in hours)? "
        "(?:between|from) (.+?) (?:and|to) (.+)$|^how many hours (?:are |is )?(?:there |it )?(?:between|from) (.+?) "
        "(?:and|to) (.+)$");
    static const Pattern with(
        "^(?:the )?(?:time difference|difference in time) (?:with|to|in|from|for|of) (.+)$"
        "|^how (?:many hours|far|much) (?:ahead|behind|difference)(?: of (?:us|me|here))?(?: in time)? is (.+)$"
        "|^how (?:many hours|far|much) is (.+?) (?:ahead|behind)(?: of)?(?: (?:us|me|here|you))?$"
        "|^is (.+?) (?:ahead of|behind|in front of) (?:us|me|here|my time|our time)(?: in time)?$");
    std::vector<std::string> places;
    for (const Pattern* form : {&between, &with}) {
        if (const auto match = form->find(phrase); match && places.empty())
            std::ranges::copy_if(
                match->texts, std::back_inserter(places), [](const std::string& text) { return !text.empty(); });
    }
    if (places.empty())
        return std::nullopt;
    const auto first = clocksIn(places.front(), around);
    const auto second = clocksIn(places.size() > 1 ? places[1] : std::string(), around);
    if (first.empty() || second.empty())
        return std::nullopt;
    std::string said;
    for (const PlaceClock& one : first) {
        for (const PlaceClock& other : second)
            said += (said.empty() ? "" : " ") + compared(one, other, around);
    }
    return said;
}

std::optional<std::string> PlaceTimes::zone(const std::string& phrase, const LocalTime& around)
{
    static const Pattern own("^(?:(?:the |my |our |your |current |local )*(?:time ?zone|timezone)(?: is it| am i in| "
                             "are we in| are you in| is this| is set| here| is here| are you using| do you use)*)$");
    static const Pattern other(
        "^(?:the )?(?:time ?zone|timezone) (?:is |of |in |for |does )(?:used in )?(.+?)(?: in| on| have| use)?$");
    const auto match = other.find(phrase);
    const bool isOwn = own.find(phrase).has_value();
    if (!isOwn && !match)
        return std::nullopt;
    const auto clocks = clocksIn(isOwn ? std::string() : match->texts[0], around);
    if (clocks.empty())
        return std::nullopt;
    std::string said;
    for (const PlaceClock& clock : clocks) {
        const minutes offset = offsetOf(clock, around.now);
        const std::string from = offset.count() == 0
            ? "the same as UTC"
            : apart(std::chrono::abs(offset)) + (offset.count() > 0 ? " ahead of UTC" : " behind UTC");
        said += (said.empty() ? "" : " ")
            + (clock.place.empty() ? "Your time zone is " : clock.place + " is in the zone ") + clock.calendar.zone()
            + ", " + from + " at the moment.";
    }
    return said;
}

std::optional<std::string> PlaceTimes::converted(std::string_view core, const LocalTime& around)
{
    static const std::string time = "(" + std::string(ClockTime::pattern) + ")";
    static const std::string from = "(?: (?:in |at )?(?:the )?(.+?)(?: time)?)?";
    static const Pattern when("^(?:what is the |what |what will the |the )?time (?:is it|will it be|would it be|is "
                              "that|it is|be)?(?: ?in| ?at)? ?(.+?) "
                              "(?:when|if) (?:it is|it['’]?s|its|it) "
            + time + from + "$",
        Pattern::caseless);
    static const Pattern ifSo("^(?:(?:when|if|so) )?(?:it is|it['’]?s|its) " + time + from
            + ",? (?:then )?what(?: time)?(?: is| will)?(?: it| the time| that)?(?: be)?(?: in| at)? (.+)$",
        Pattern::caseless);
    static const Pattern isWhat("^(?:convert |change )?" + time
            + " (?:in |at )?(.+?)(?: time)? (?:is what time|is what|is when|equals what|to|into|in)(?: in| at)? "
              "(.+?)(?: time)?$",
        Pattern::caseless);
    static const Pattern what(
        "^what(?: time)?(?: is|['’]s) " + time + " (?:in )?(.+?)(?: time)? (?:in|to|for) (.+?)(?: time)?$",
        Pattern::caseless);
    static const Pattern lead("^(?:please |tell me |do you know )+", Pattern::caseless);
    static const Pattern sign("[?!.]+$");
    static const Pattern morning(" (?:o['’]?clock )?in the morning\\b", Pattern::caseless);
    static const Pattern evening(" (?:o['’]?clock )?(?:in the (?:afternoon|evening)|at night)\\b", Pattern::caseless);
    std::string said =
        sign.replaceAll(SpokenPhrase::withDigits(lowerCased(lead.replaceAll(std::string(core), ""))), "");
    said = evening.replaceAll(morning.replaceAll(said, " am"), " pm");
    if (const auto match = when.find(said))
        return convertedTo(match->texts[0], match->texts[1], match->texts[2], around);
    for (const Pattern* form : {&ifSo, &isWhat, &what}) {
        if (const auto match = form->find(said))
            return convertedTo(match->texts[2], match->texts[0], match->texts[1], around);
    }
    return std::nullopt;
}

} // namespace quorvell
