// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/PlainReplies.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/SpokenWhen.h"

namespace quorvell {

std::string PlainReplies::greeting(std::string_view name)
{
    return "Hello" + (name.empty() ? "" : " " + std::string(name)) + ". What can I do for you?";
}

std::string PlainReplies::notOffered(std::string_view what)
{
    return "I cannot " + std::string(what) + " in this conversation.";
}

std::string PlainReplies::day(Instant now, const Calendar& calendar)
{
    return SpokenWhen::date(DateParts::fromDay(now, calendar));
}

} // namespace quorvell
