// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventActs.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventDeed.h"
#include "Understanding/skills/calendar/reading/EventWay.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <deque>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Aim = EventSearch::Aim;

const std::string owner = "(?:my|the|our|a|an|this|that)";

int minutesIn(const std::string& length)
{
    constexpr int minutesOfDay = 24 * 60;
    if (const auto days = TimeWords::daysIn(length))
        return *days * minutesOfDay;
    const auto read = SpokenLength::read(length);
    return read && read->rest.empty() ? read->minutes : 0;
}

/// What is to come ahead of an event, in their words.
struct Notice {
    std::string ahead{}; ///< "an hour"; empty for when it begins.
    std::string event{};
    std::string deed{}; ///< Empty where the reminder is of the event itself.
};

/// "Remind me to charge the camera an hour before the party", or the other way round.
std::optional<Notice> noticeOfDeed(const std::string& plain, const std::string& length, const RuleSurroundings& around)
{
    static const std::string before = " (?:before|ahead of|prior to|in advance of) ";
    static const Pattern behind(
        "^(?:and |also |please |can you |could you )*(?:remind|notify|alert|nudge|ping) (?:me |us )to (.+?),? " + length
        + before + "(.+)$");
    static const Pattern first("^" + length + before
        + "(.+?),? (?:please )?(?:can you |could you )?(?:remind|nudge|ping) (?:me |us )to (.+)$");
    if (const auto match = behind.find(plain); match && !TimeWords::isTime(match->texts[2], around))
        return Notice{match->texts[1], match->texts[2], match->texts[0]};
    const auto match = first.find(plain);
    return match ? std::optional(Notice{match->texts[0], match->texts[1], match->texts[2]}) : std::nullopt;
}

/// "Notify me an hour before my appointment at the garage", "set a 2 day notification before the party".
std::optional<Notice> noticeIn(const std::string& plain, const RuleSurroundings& around)
{
    static const std::string length =
        "((?:an?|one|two|three|four|five|six|ten|fifteen|twenty|thirty|forty|half an|a half|"
        "\\d{1,3}) ?(?:minute|min|hour|hr|day|week)s?(?: and a half)?)";
    static const Pattern wish(
        "^(?:and |also |please |can you |could you |i want you to |i need you to )*(?:remind|notify|alert|"
        "tell|ping|warn|message|nudge|buzz) (?:me |us )(?:of (?:it|that) |about (?:it|that) )?"
        + length + " (?:before|ahead of|prior to|in advance of|earlier than)(?: (.+))?$");
    static const Pattern thing(
        "^(?:and |also |please |can you |could you )*(?:(?:set|add|create|give me|make|put|i want|i need) "
        ")?(?:(?:an?|me an?|the) )?(?:"
        + length + " (?:reminder|notification|alert|warning|notice)|(?:reminder|notification|alert|warning|notice) "
        + length + ") (?:before|ahead of|prior to|in advance of)(?: (.+))?$");
    static const Pattern begins(
        "^(?:please |can you |could you )*(?:remind|notify|alert|tell) me (?:when|at the (?:time|start|"
        "beginning) of|at|right before|just before|before) (?:(?:my|the|our) )(.*\\b(?:"
        + CalendarWords::noun
        + "))(?: (?:is going to take place|starts|begins|is about to start|is starting|takes place|"
          "happens|is on))?$");
    static const Pattern about(
        "^(?:and |also |please |can you |could you )*(?:remind|notify|alert|tell|warn) (?:me |us )(?:about|of|for) "
        "(?:(?:my|the|our) )?(.+) "
        + length + " (?:before|ahead|prior|in advance|beforehand)(?: (?:it|that|it starts|it begins|of it|to it))?$");
    if (const auto noted = about.find(plain))
        return Notice{noted->texts[1], noted->texts[0]};
    if (auto notice = noticeOfDeed(plain, length, around))
        return notice;
    if (const auto match = wish.find(plain))
        return Notice{match->texts[0], match->texts[1]};
    if (const auto noticed = thing.find(plain))
        return Notice{noticed->texts[0].empty() ? noticed->texts[1] : noticed->texts[0], noticed->texts[2]};
    const auto begun = begins.find(plain);
    return begun ? std::optional(Notice{.event = begun->texts[0]}) : std::nullopt;
}

/// The event of a notice; of "the party to charge the camera" what cannot be the name of one stands behind it.
std::optional<EventSearch> eventOf(const Notice& notice, const RuleSurroundings& around)
{
    auto search = CalendarWords::search(notice.event, around);
    if (search) {
        search->value = notice.deed;
        return search;
    }
    const auto parted = EventDeed::apart({.aim = Aim::remind, .name = notice.event, .value = notice.deed});
    search = parted ? CalendarWords::search(parted->name, around) : std::nullopt;
    if (search)
        search->value = parted->value;
    return search;
}

Found reminding(const std::string& plain, const std::string& core, const RuleSurroundings& around)
{
    static const Pattern pronoun("^(?:it|that|this|hand|then|(?:it|that|this) (?:starts|begins))?$");
    static const Pattern clause("^(?:i|we|he|she|they|you|going|leaving|bed|sleep)\\b"); // Nothing of a calendar.
    const auto notice = noticeIn(plain, around);
    if (!notice)
        return std::nullopt;
    EventSearch search{.value = notice->deed};
    if (!notice->deed.empty() && clause.find(notice->event)) {
        search.value = CalendarWords::asSaid(notice->deed, core);
        return Request{.answer = [search](RequestMemory memory, const RuleSurroundings&) {
            return EventDeed::askTime(search, "I can't tell when that is.", std::move(memory));
        }};
    }
    if (!pronoun.find(notice->event)) {
        auto named = eventOf(*notice, around);
        if (!named)
            return std::nullopt;
        search = *std::move(named);
        search.isAll = false;
    }
    const int minutes = notice->ahead.empty() ? 0 : minutesIn(notice->ahead);
    if (!notice->ahead.empty() && minutes == 0)
        return std::nullopt;
    search.aim = Aim::remind;
    search.minutes = minutes;
    return EventLookup::request(std::move(search), core);
}

/// "Rename the sales meeting to budget talk", "change the location of the dentist to Main Street 7". `core` keeps the
/// user's own spelling of the new words.
Found describing(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const std::deque<EventWay> ways = [] {
        const std::string polite = "^(?:please |can you |could you )*";
        std::deque<EventWay> all;
        all.emplace_back(polite + "(?:rename|retitle)(?: " + owner + ")? (.+?)(?: (?:to|as|into) (.+))?$", Aim::rename);
        all.emplace_back(
            polite + "(?:change|set|edit|update) the (?:name|title) of(?: " + owner + ")? (.+?)(?: (?:to|into) (.+))?$",
            Aim::rename);
        all.emplace_back(polite + "(?:change|set|edit|update) the (?:location|place|address|venue) (?:of|for)(?: "
                + owner + ")? (.+?)(?: (?:to|into) (.+))?$",
            Aim::place);
        all.emplace_back(
            polite + "(?:change|set|edit|update) " + owner + " (.+?) (?:location|place|venue)(?: (?:to|into) (.+))?$",
            Aim::place);
        return all;
    }();
    if (CalendarWords::isOfOthers(plain))
        return std::nullopt;
    for (const auto& [form, aim] : ways) {
        const auto match = form.find(plain);
        if (!match)
            continue;
        auto search = CalendarWords::search(match->texts[0], around);
        if (!search)
            return std::nullopt;
        search->aim = aim;
        search->isAll = false;
        const std::size_t count = RequestWords(match->texts[1]).size();
        const RequestWords words(core);
        if (count > 0 && words.size() >= count) // As they spelled it.
            search->value = withUpperCaseFirst(trimmed(words.said(words.size() - count, words.size()), " .,;!?\"“”"));
        return EventLookup::request(*std::move(search), core);
    }
    return std::nullopt;
}

/// "Make my dentist appointment two hours long"
Found lengthening(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern wish("^(?:please |can you |could you )*(?:make|set|extend|shorten|change) " + owner
        + " (.+?) (?:to )?(?:be |last |take |run )?(?:for )?((?:an?|one|two|three|four|half an|\\d{1,3})\\b ?"
          "(?:and a half )?(?:minutes?|mins?|hours?|hrs?)(?: and (?:a half|(?:\\d{1,2}|twenty|thirty) minutes))?)(?: "
          "long)?$");
    static const Pattern told(
        "^(?:(?:my|the|our) )?(.+?) (?:is going to|will|should) (?:be|last|take) "
        "((?:an?|one|two|three|four|half an|\\d{1,3})\\b ?(?:and a half )?(?:minutes?|mins?|hours?|hrs?)) long$");
    static const Pattern other("\\b(?:timers?|alarms?|reminders?|lists?|notes?|it|that|this|later|earlier)\\b");
    auto match = wish.find(plain);
    if (!match)
        match = told.find(plain);
    const int minutes = match && !other.find(plain) ? minutesIn(match->texts[1]) : 0;
    auto search = minutes > 0 ? CalendarWords::search(match->texts[0], around) : std::nullopt;
    if (!search || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = Aim::length;
    search->minutes = minutes;
    search->isAll = false;
    return EventLookup::request(*std::move(search), core);
}

/// "Add the address Main Street 5 to the dentist", "the staff meeting has been moved to room 12".
Found placing(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    static const Pattern added(
        "^(?:please |can you |could you )*(?:add|set|put) (?:the )?(?:location|place|address|venue) (.+) "
        "(?:to|for|of) (?:(?:my|the|our) )?(.+)$");
    static const Pattern room(
        "^(?:(?:my|the|our) )?(.+?) (?:has been |have been |was |is |is now |got )(?:moved |relocated )?(?:to|in|at) "
        "((?:room|building|office|hall|floor|conference room|lecture hall) ?[a-z0-9]{1,5})$");
    const auto first = added.find(plain);
    const auto second = first ? std::nullopt : room.find(plain);
    if ((!first && !second) || CalendarWords::isOfOthers(plain))
        return std::nullopt;
    auto search = CalendarWords::search(first ? first->texts[1] : second->texts[0], around);
    if (!search || (search->name.empty() && search->noun.empty()))
        return std::nullopt;
    search->aim = Aim::place;
    search->isAll = false;
    search->value = withUpperCaseFirst(CalendarWords::asSaid(first ? first->texts[0] : second->texts[1], core));
    return EventLookup::request(*std::move(search), core);
}

/// "Make the yoga class repeat every week": the rule of a series stays as it was put in.
Found repeating(const std::string& plain)
{
    static const Pattern form("^(?:please |can you |could you )*(?:(?:make|set|have|let) " + owner
        + " .+? (?:to )?(?:repeat|recur|come back|be repeated|recurring|repeating)\\b.*|repeat " + owner
        + " .+ (?:weekly|daily|monthly|yearly|every .+|each .+))$");
    static const Pattern other("\\b(?:reminders?|alarms?|timers?|lists?|notes?|songs?)\\b");
    if (!form.find(plain) || other.find(plain))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep{AgendaRules::ruleIsFixed, std::move(memory)};
    }};
}

} // namespace

Found EventActs::read(const std::string& core, const std::string& plain, const RuleSurroundings& around)
{
    if (auto request = reminding(plain, core, around))
        return request;
    if (auto request = repeating(plain))
        return request;
    if (auto request = lengthening(core, plain, around))
        return request;
    if (auto request = placing(core, plain, around))
        return request;
    return describing(core, plain, around);
}

} // namespace quorvell
