// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindCommand.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/reminders/RemindPhrases.h"
#include "Quorvell/app/reminders/RemindRequest.h"
#include "Quorvell/app/reminders/RemindStoring.h"
#include "Quorvell/app/reminders/RemindText.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UsersCalendar.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/request/ReminderRequestJson.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

namespace {

struct RemindOptions {
    std::string phrase;
    bool isDryRun = false;
    bool asJson = false;
    std::string now;
    std::string zone;
};

/// An instant, or without "Z" or an offset what the clock of the calendar's zone shows.
std::optional<Instant> readNow(const std::string& text, const Calendar& calendar)
{
    if (text.empty())
        return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    if (const auto instant = parseIsoText(text))
        return instant;
    const auto parts = DateParts::parse(text);
    return parts ? parts->instant(calendar) : std::nullopt;
}

/// Nothing for a zone that was asked for and is not known. Where the computer's own is unknown, UTC has to do.
std::optional<Calendar> calendarFor(const RemindOptions& options, const ProgramEnvironment& environment)
{
    if (!options.zone.empty())
        return calendarIn(options.zone, environment.locale);
    const auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (calendar)
        return calendar;
    std::cerr << "The time zone of this computer is not known; times are in UTC. Name it with --zone Europe/Berlin."
              << std::endl;
    return Calendar::create("UTC", environment.locale);
}

/// Needs no event loop, no bus and no notebook. At a terminal the hour would be asked for.
int runDryRun(const RemindOptions& options, RemindPhrases& phrases, Instant now, const Calendar& calendar,
    const WhichTime& whichTime)
{
    int result = exit_code::done;
    while (const auto phrase = phrases.next()) {
        const auto request = remindRequest(*phrase, now, calendar, whichTime);
        if (options.asJson) {
            std::cout << dumpJson(requestJson(request, calendar)) << std::endl;
            continue;
        }
        const bool isUnderstood = request.verdict == ReminderRequest::Verdict::ready;
        (isUnderstood ? std::cout : std::cerr) << remindText(request, now, calendar) << std::endl;
        result = isUnderstood ? result : exit_code::couldNot;
    }
    return result;
}

int run(const RemindOptions& options, const ProgramEnvironment& environment)
{
    const auto calendar = calendarFor(options, environment);
    if (!calendar) {
        std::cerr << "\"" << options.zone
                  << "\" is not a time zone that is known here. Give one such as --zone Europe/Berlin." << std::endl;
        return exit_code::wrongUsage;
    }
    const auto now = readNow(options.now, *calendar);
    if (!now) {
        std::cerr << "\"" << options.now << "\" is not a time. Write it like 2026-11-21T09:30:00Z." << std::endl;
        return exit_code::wrongUsage;
    }
    RemindPhrases phrases(options.phrase, std::cin);
    const auto output = options.asJson ? RemindOutput::json : RemindOutput::text;
    if (!options.isDryRun)
        return storeReminders(environment, phrases, *now, *calendar, output);
    WhichTime unasked;
    if (environment.isInputTerminal && environment.isOutputTerminal)
        unasked = [](const auto&) { return std::nullopt; };
    return runDryRun(options, phrases, *now, *calendar, unasked);
}

} // namespace

Command remindCommand(const ProgramEnvironment& environment)
{
    Command command("remind", "Set a reminder from a phrase such as \"tomorrow at 5 pm call mum\"");
    const auto options = std::make_shared<RemindOptions>();
    command.words("phrase", options->phrase, "What to be reminded of and when; - reads phrases from standard input")
        .isRequired();
    command.flag("--dry-run", options->isDryRun, "Show what is understood and store nothing");
    command.flag("--json", options->asJson,
        "One JSON object a phrase: what is set, with its id; with --dry-run what would be set or asked");
    command.text("--now", options->now, "The moment to count from, as 2026-11-21T09:30:00Z (default: now)")
        .needs("--dry-run");
    command.text("--zone", options->zone, "The time zone to think in, as Europe/Berlin (default: yours)");
    command.run = [environment, options] { return run(*options, environment); };
    return command;
}

} // namespace quorvell
