// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/EventNotice.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/TimeWords.h"

#include <functional>

namespace quorvell {

namespace {

using Notice = std::optional<EventNotice>;

const std::string noticePolite =
    "^(?:(?:and|also|please|kindly|just|can you|could you|would you|will you|i want you to|i need you to|i would like "
    "you to|quorvell) )*";
const std::string noticeLength =
    "((?:an?|the|one|two|three|four|five|six|ten|fifteen|twenty|thirty|forty|forty five|half an|a half|"
    "\\d{1,3}) ?(?:minute|min|hour|hr|day|week)s?(?: and a half)?)";
const std::string noticeBefore = " (?:before|ahead of|prior to|in advance of|earlier than) ";
const std::string reminding = "(?:remind|notify|alert|ping|warn|message|nudge|buzz|inform) (?:me|us)";
/// Ways to ask for one that tell nothing of the calendar by themselves.
const std::string telling =
    "(?:tell (?:me|us)|let (?:me|us) know|give (?:me|us) (?:an? )?(?:heads up|shout|nudge|"
    "warning|notice|notification|alert|reminder|call)|(?:(?:i want|i need|i would like) )?(?:to be|"
    "being|be) (?:notified|reminded|alerted|told|warned|informed)|i need reminding)";
const std::string anyWish = "(?:" + reminding + "|" + telling + ")";
const std::string noticeNoun = "(?:reminders?|notifications?|alerts?|warning|notice|heads up)";
const std::string someNotice =
    "(?:(?:set(?: up)?|add|create|put|make|schedule|send me|give me|i want|i need|get me|turn on|switch on|enable|"
    "activate|include) )?(?:(?:an?|my|the|your|new) )*"
    + noticeNoun;
const std::string noticeOwner = "(?:(?:my|the|our|that|this|for|of|about) )*";

/// "Remind me to charge the camera an hour before the party", or the other way round.
Notice noticeOfDeed(const std::string& plain, const LocalTime& around)
{
    static const Pattern behind(noticePolite + reminding + " to (.+?),? " + noticeLength + noticeBefore + "(.+)$");
    static const Pattern first(
        "^" + noticeLength + noticeBefore + "(.+?),? (?:please )?(?:can you |could you )?" + reminding + " to (.+)$");
    static const Pattern unled(noticePolite + reminding + " to (.+?) before ((?:my|the|our) .+)$");
    if (const auto match = behind.find(plain); match && !TimeWords::isTime(match->texts[2], around))
        return EventNotice{.ahead = match->texts[1], .event = match->texts[2], .deed = match->texts[0]};
    if (const auto match = first.find(plain))
        return EventNotice{.ahead = match->texts[0], .event = match->texts[1], .deed = match->texts[2]};
    const auto match = unled.find(plain);
    const bool isEvent =
        match && EventTitle::namesOccasion(match->texts[1]) && !CalendarWords::holdsTimeWords(match->texts[1]);
    return isEvent ? Notice(EventNotice{.event = match->texts[1], .deed = match->texts[0], .isUsualLead = true})
                   : std::nullopt;
}

/// "Notify me an hour before my appointment at the garage", "set a 2 day notification before the party".
Notice noticeAhead(const std::string& plain)
{
    static const Pattern wish(noticePolite + anyWish + " (?:(?:of|about) (?:it|that) )?" + noticeLength
        + " (?:before|ahead of|prior to|in advance of|earlier than)(?: (.+))?$");
    static const Pattern thing(noticePolite
        + "(?:(?:set|add|create|give me|make|put|i want|i need|send me) )?(?:(?:an?|me an?|the) )?(?:" + noticeLength
        + " (?:reminder|notification|alert|warning|notice)|(?:reminder|notification|alert|warning|notice) (?:for )?"
        + noticeLength + ") (?:before|ahead of|prior to|in advance of)(?: (.+))?$");
    static const Pattern behind(noticePolite + "(?:" + anyWish + "|" + someNotice + ") (?:(?:about|of|for|to|on) )?"
        + noticeOwner + "(.+?),? " + noticeLength
        + " (?:before|ahead|prior|in advance|beforehand|earlier|early)(?: (?:it|that|it starts|it begins|of it|to "
          "it|hand))?$");
    static const Pattern noEvent("^(?:to|at|in|by|when|if|tomorrow|today|tonight) ");
    if (const auto match = behind.find(plain); match && !noEvent.find(match->texts[0]))
        return EventNotice{.ahead = match->texts[1], .event = match->texts[0]};
    if (const auto match = wish.find(plain))
        return EventNotice{.ahead = match->texts[0], .event = match->texts[1]};
    const auto match = thing.find(plain);
    return match ? Notice(EventNotice{
               .ahead = match->texts[0].empty() ? match->texts[1] : match->texts[0], .event = match->texts[2]})
                 : std::nullopt;
}

/// "Notify me when the meeting starts", "alert me before the dentist".
Notice noticeOfStart(const std::string& plain)
{
    static const std::string begins =
        " (?:is going to (?:take place|start|begin|happen)|starts|begins|is about to (?:start|begin)|is starting|is "
        "beginning|takes place|happens|is happening|is on)";
    static const Pattern started(
        noticePolite + "(?:" + anyWish + "|" + someNotice + ") when " + noticeOwner + "(.+?)" + begins + "$");
    static const Pattern atStart(noticePolite + "(?:" + anyWish + "|" + someNotice
        + ") (?:(?:right )?at the (?:time|start|beginning)(?: time)? of|at) ((?:my|the|our) .+)$");
    static const Pattern before(noticePolite + "(?:" + anyWish + "|" + someNotice
        + ") (?:(?:right|just|shortly|some ?time|a bit|a little|well) )*before " + noticeOwner + "(.+?)(?:" + begins
        + ")?$");
    for (const Pattern& form : {std::cref(started), std::cref(atStart)})
        if (const auto match = form.find(plain); match && EventTitle::namesOccasion(match->texts[0]))
            return EventNotice{.event = match->texts[0]};
    const auto match = before.find(plain);
    return match && EventTitle::namesOccasion(match->texts[0])
        ? Notice(EventNotice{.event = match->texts[0], .isUsualLead = true})
        : std::nullopt;
}

/// "Remind me of the staff meeting", "set a notification for yoga class": of what may stand in the calendar.
Notice noticeOfEvent(const std::string& plain)
{
    static const Pattern about(noticePolite + "(?:" + reminding
        + " (?:about|of|for|that i have|i have)|(?:do not|never) let me (?:forget|miss)(?: about| i have| that i "
          "have)?|"
        + someNotice + " (?:for|of|about|to|on)) " + "(?:(?:an?|my|the|our|that|this) )*(.+)$");
    static const Pattern many("\\b(?:events|meetings|appointments|upcoming)\\b|^(?:birthday|anniversary)$"
                              "|\\b(?:every|each|daily|weekly|monthly|yearly|later|again|not|to|and|list|notes?)\\b");
    const auto match = about.find(plain);
    if (!match || many.find(match->texts[0]) || !EventTitle::namesOccasion(match->texts[0]))
        return std::nullopt;
    return EventNotice{.event = match->texts[0], .isUsualLead = true, .isLoose = true};
}

} // namespace

std::optional<EventNotice> EventNotice::in(const std::string& plain, const LocalTime& around)
{
    static const Pattern many("^(?:every|each|all|any)\\b"); // One at a time.
    Notice notice = noticeOfDeed(plain, around);
    for (const auto reader : {noticeAhead, noticeOfStart, noticeOfEvent})
        if (!notice)
            notice = reader(plain);
    return notice && many.find(notice->event) ? std::nullopt : notice;
}

int EventNotice::minutesIn(const std::string& length)
{
    constexpr int minutesOfDay = 24 * 60;
    static const Pattern article("^the ", Pattern::caseless);
    const std::string counted = article.replaceAll(length, "a ");
    if (const auto days = TimeWords::daysIn(counted))
        return *days * minutesOfDay;
    const auto read = SpokenLength::read(counted);
    return read && read->rest.empty() ? read->minutes : 0;
}

std::string EventNotice::otherwise(const std::string& core)
{
    static const Pattern wish(
        "^.*?\\b(?:remind|reminders?|notif\\w+|alerts?|ping|warn|nudge|buzz|inform|forget|miss)\\b(?: (?:me|us))?\\s*",
        Pattern::caseless);
    static const Pattern led("^(?:about|of|for|that|to) ", Pattern::caseless);
    const auto match = wish.find(core);
    const std::string rest = match ? trimmed(core.substr(match->range.end)) : core;
    return led.find(rest) ? rest : "about " + rest;
}

} // namespace quorvell
