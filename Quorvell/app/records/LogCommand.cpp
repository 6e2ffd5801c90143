// SPDX-License-Identifier: MIT
#include "Quorvell/app/records/LogCommand.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/records/EventLogFile.h"
#include "Quorvell/records/LogTimeline.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UsersCalendar.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <string>

namespace quorvell {

namespace {

struct Options {
    std::string id;
    bool isList = false;
    bool isLast = false; ///< The usual choice; may be said.
    bool asJson = false;
};

void printList(const LogTimeline& timeline, const Calendar& calendar, bool asJson)
{
    for (const LogConversation& conversation : timeline.conversations) {
        const auto& entries = conversation.entries;
        if (!asJson)
            std::cout << LogTimeline::heading(conversation, calendar) << "\n";
        else
            std::cout << dumpJson(
                {{"id", conversation.id}, {"begun", isoText(entries.front().at)}, {"ended", isoText(entries.back().at)},
                    {"events", entries.size()}, {"problems", LogTimeline::problemsIn(conversation)}})
                      << "\n";
    }
}

void printConversation(const LogConversation& conversation, const Calendar& calendar, bool asJson)
{
    if (asJson) {
        for (const LogEntry& entry : conversation.entries)
            std::cout << entry.raw << "\n";
        return;
    }
    std::cout << LogTimeline::heading(conversation, calendar) << "\n";
    for (const std::string& line : LogTimeline::lines(conversation, calendar))
        std::cout << line << "\n";
}

int complain(const std::string& sentence)
{
    std::cerr << sentence << std::endl;
    return exit_code::couldNot;
}

int runLog(const ProgramEnvironment& environment, const Options& options)
{
    const auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (!calendar)
        return complain(environment.unknownTimeZone());
    const LogTimeline timeline = LogTimeline::of(EventLogFile::readAll(environment.stateFolder));
    if (timeline.unreadable > 0)
        std::cerr << timeline.unreadable
                  << (timeline.unreadable == 1 ? " line of the log could not be read and is left out."
                                               : " lines of the log could not be read and are left out.")
                  << std::endl;
    if (timeline.conversations.empty())
        return complain("The log in " + environment.stateFolder + " is empty: no conversation was held yet.");
    if (options.isList) {
        printList(timeline, *calendar, options.asJson);
        return 0;
    }
    const LogConversation* chosen = options.id.empty() ? &timeline.conversations.back() : timeline.find(options.id);
    if (chosen == nullptr)
        return complain("There is no conversation \"" + options.id
            + "\", or more than one begins so. `quorvell log --list` shows them.");
    printConversation(*chosen, *calendar, options.asJson);
    return 0;
}

} // namespace

Command logCommand(const ProgramEnvironment& environment)
{
    Command command("log", "Show what happened in a conversation, without what was said");
    const auto options = std::make_shared<Options>();
    command.text("id", options->id, "Which conversation, as --list names it (default: the last one)");
    command.flag("--list", options->isList, "List the conversations that the log still holds");
    command.flag("--last", options->isLast, "The last conversation, which is also what is shown without a choice")
        .excludes("--list");
    command.flag("--json", options->asJson, "Print the events as they are kept, one JSON object a line");
    command.run = [environment, options] { return runLog(environment, *options); };
    return command;
}

} // namespace quorvell
