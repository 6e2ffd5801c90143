// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventShaping.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventNotice.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"

#include <functional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

const std::string shapingPolite = "^(?:please |can you |could you |would you |will you |kindly |just )*";
const std::string shapingOwner = "(?:(?:my|the|our|that|this) )?";
const std::string shapedLength =
    "((?:an?|one|two|three|four|five|ten|fifteen|twenty|thirty|forty|half an|\\d{1,3})\\b ?(?:and a half )?"
    "(?:minutes?|mins?|hours?|hrs?)(?: and (?:a half|(?:\\d{1,2}|twenty|thirty) minutes))?)";

/// Of an event that the words name; nothing where they name none.
Found shaping(const std::string& subject, EventSearch wished, const std::string& core, const RuleSurroundings& around)
{
    auto search = EventTitle::namesOccasion(subject) ? CalendarWords::search(subject, around) : std::nullopt;
    if (!search || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = wished.aim;
    search->minutes = wished.minutes;
    search->isRelative = wished.isRelative;
    search->value = std::move(wished.value);
    search->isAll = false;
    return EventLookup::request(*std::move(search), core);
}

/// "Make my dentist appointment two hours long", "shorten dinner with John to an hour".
Found lengthening(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern wish(shapingPolite
        + "(?:(?:make|set|extend|shorten|change) (?:my|the|our|a|an|this|that) "
          "|(?:extend|shorten|lengthen|prolong) "
          ")(.+?) (?:to )?(?:be |last |take |run )?(?:for )?"
        + shapedLength + "(?: long)?$");
    static const Pattern told(
        "^" + shapingOwner + "(.+?) (?:is going to|will|should) (?:be|last|take) " + shapedLength + "(?: long)?$");
    static const Pattern other("\\b(?:timers?|alarms?|reminders?|lists?|notes?|it|that|this|later|earlier|by)\\b");
    auto match = wish.find(plain);
    if (!match)
        match = told.find(plain);
    const int minutes = match && !other.find(plain) ? EventNotice::minutesIn(match->texts[1]) : 0;
    if (minutes == 0)
        return std::nullopt;
    auto search = CalendarWords::search(match->texts[0], around);
    if (!search || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = Aim::length;
    search->minutes = minutes;
    search->isAll = false;
    return EventLookup::request(*std::move(search), core);
}

/// "Add 30 minutes to the staff meeting", "make the call 15 minutes shorter".
Found stretching(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern more(shapingPolite + "(?:add|give) (?:another |an extra |extra )?" + shapedLength
        + " (?:more |extra )?to " + shapingOwner + "(.+)$");
    static const Pattern by(shapingPolite + "(?:extend|lengthen|prolong|(shorten|cut|trim|reduce)|make) " + shapingOwner
        + "(.+?) (?:longer |(shorter ))?by " + shapedLength + "$");
    static const Pattern made(
        shapingPolite + "make " + shapingOwner + "(.+?) " + shapedLength + " (?:longer|(shorter))$");
    static const Pattern cut(
        shapingPolite + "(?:cut|take|trim) " + shapedLength + " (?:off|from) " + shapingOwner + "(.+)$");
    std::string subject;
    int minutes = 0;
    if (const auto match = more.find(plain)) {
        minutes = EventNotice::minutesIn(match->texts[0]);
        subject = match->texts[1];
    } else if (const auto less = cut.find(plain)) {
        minutes = -EventNotice::minutesIn(less->texts[0]);
        subject = less->texts[1];
    } else if (const auto moved = by.find(plain)) {
        minutes = EventNotice::minutesIn(moved->texts[3]);
        minutes = moved->texts[0].empty() && moved->texts[2].empty() ? minutes : -minutes;
        subject = moved->texts[1];
    } else if (const auto longer = made.find(plain)) {
        minutes = EventNotice::minutesIn(longer->texts[1]);
        minutes = longer->texts[2].empty() ? minutes : -minutes;
        subject = longer->texts[0];
    }
    return minutes == 0 ? std::nullopt
                        : shaping(subject, {.aim = Aim::length, .minutes = minutes, .isRelative = true}, core, around);
}

/// "Extend yoga class to 11": until when.
Found extending(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern form(shapingPolite + "(?:(?:extend|lengthen|prolong|shorten|make|let) " + shapingOwner
        + "(.+?) (?:to|(?:end |last |go |run |go on )?(?:at|until|till)) |end " + shapingOwner
        + "(.+?) (?:at|by) )((?:\\d{1,2}(?::\\d{2})?(?: ?[ap]\\.?m)?|noon))$");
    static const Pattern ends("\\b(?:extend|lengthen|prolong|shorten|end|last|until|till)\\b");
    const auto match = ends.find(plain) ? form.find(plain) : std::nullopt;
    if (!match)
        return std::nullopt;
    const std::string& subject = match->texts[0].empty() ? match->texts[1] : match->texts[0];
    return shaping(subject, {.aim = Aim::length, .value = match->texts[2]}, core, around);
}

/// "Copy the yoga class to sunday", "schedule yoga same time next week".
Found copying(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern copies(shapingPolite + "(?:copy|duplicate|repeat|clone) " + shapingOwner
        + "(.+?) (?:(?:to|for|on|onto) )?((?:the )?(?:next|following|coming|this) (?:week|\\w+day)|tomorrow|today|"
          "\\w+day|(?:the )?\\d{1,2}(?:st|nd|rd|th)(?: of \\w+)?|\\w+ \\d{1,2}(?:st|nd|rd|th)?)"
          "(?: (?:too|also|as well|again|at the same time))*$");
    static const Pattern same(shapingPolite + "(?:schedule|book|add|put|set(?: up)?|arrange|plan) "
        + "(?:(?:an?|my|the|our|another) )?(.+?) (?:(?:for|at|on) )?(?:the )?same (?:time|hour) (?:on |for )?(.+)$");
    static const Pattern rule("\\b(?:every|each)\\b|days$");
    for (const Pattern& form : {std::cref(copies), std::cref(same)})
        if (const auto match = form.find(plain); match && !rule.find(plain))
            return shaping(match->texts[0], {.aim = Aim::copy, .value = match->texts[1]}, core, around);
    return std::nullopt;
}

/// "Add the address Main Street 5 to the dentist", "the staff meeting has been moved to room 12".
Found placing(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const std::string location = "(?:location|place|address|venue)";
    static const Pattern added(
        shapingPolite + "(?:add|set|put) (?:the )?" + location + " (.+) (?:to|for|of) " + shapingOwner + "(.+)$");
    static const Pattern room("^" + shapingOwner
        + "(.+?) (?:has been |have been |was |is |is now |got )(?:moved |relocated )?(?:to|in|at) "
          "((?:room|building|office|hall|floor|conference room|lecture hall) ?[a-z0-9]{1,5})$");
    static const Pattern later(shapingPolite + "(?:add|set|put|enter|give) (?:an? |the )?" + location
        + " (?:to|for|of|on) " + shapingOwner
        + "(.+?)(?:[,:;-]? (?:it is|which is|its|as|it will be|is)(?: at| in)? (.+))?$");
    static const Pattern signs("^(.+?)[:;,] *(.+)$");
    if (CalendarWords::isOfOthers(plain))
        return std::nullopt;
    const auto told = later.find(plain);
    const auto first = told ? std::nullopt : added.find(plain);
    const auto second = told || first ? std::nullopt : room.find(plain);
    if (!told && !first && !second)
        return std::nullopt;
    std::string subject = told ? told->texts[0] : first ? first->texts[1] : second->texts[0];
    std::string place = told ? told->texts[1] : first ? first->texts[0] : second->texts[1];
    const auto colon = signs.find(core);
    if (told && place.empty() && colon) { // "To the lunch: Luigi's"
        place = CalendarWords::of(colon->texts[1]).plain;
        if (const std::size_t found = subject.rfind(" " + place); found != std::string::npos)
            subject.erase(found);
    }
    auto search = CalendarWords::search(subject, around);
    if (!search || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = Aim::place;
    search->isAll = false;
    search->value = withUpperCaseFirst(CalendarWords::asSaid(place, core));
    return EventLookup::request(*std::move(search), core);
}

} // namespace

Found EventShaping::read(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    for (const auto reader : {stretching, extending, lengthening, copying, placing})
        if (auto request = reader(core, plain, around))
            return request;
    return std::nullopt;
}

} // namespace quorvell
