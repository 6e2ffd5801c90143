// SPDX-License-Identifier: MIT
#include "LiveService/replies/PlainReplies.h"

#include "LiveService/replies/SpokenWhen.h"
#include "QuorvellCore/reminders/DateParts.h"

namespace quorvell {

std::string PlainReplies::greeting(std::string_view name)
{
    return "Hello" + (name.empty() ? "" : " " + std::string(name)) + ". What can I do for you?";
}

std::string PlainReplies::abilities(const Tools& tools)
{
    const bool keeps = tools.contains("keep_note");
    const bool finds = tools.contains("find_in_notebook");
    const bool reads = finds && tools.contains("read_note");
    std::string notes;
    if (keeps)
        notes = reads ? "save, find and read your notes" : finds ? "save and find your notes" : "save notes";
    else if (finds)
        notes = reads ? "find and read your notes" : "find your notes";
    std::string things = tools.contains("set_reminder") ? "set reminders" : "";
    if (tools.contains("whats_on") && tools.contains("add_event"))
        things += things.empty() ? "keep your calendar"
            : notes.empty()      ? " and keep your calendar"
                                 : ", keep your calendar";
    if (things.empty() && notes.empty())
        return "I have no tools in this conversation.";
    return "I can " + things + (things.empty() || notes.empty() ? "" : ", and I can ") + notes + ".";
}

std::string PlainReplies::help(const Tools& tools)
{
    const bool reminds = tools.contains("set_reminder");
    return abilities(tools) + (reminds ? " For example: remind me tomorrow at 5 PM to call the dentist." : "");
}

std::string PlainReplies::cannot(const Tools& tools)
{
    std::string can = abilities(tools);
    return "That needs an online model. " + (can.starts_with("I can") ? "On this computer, " + can : can);
}

std::string PlainReplies::notOffered(std::string_view what)
{
    return "I cannot " + std::string(what) + " in this conversation.";
}

std::string PlainReplies::day(Instant now, const Calendar& calendar)
{
    return SpokenWhen::fromDate(DateParts::fromDay(now, calendar).text());
}

} // namespace quorvell
