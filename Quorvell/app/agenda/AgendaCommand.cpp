// SPDX-License-Identifier: MIT
#include "Quorvell/app/agenda/AgendaCommand.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/assistant/AgendaAccess.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"
#include "Quorvell/settings/UsersCalendar.h"
#include "Quorvell/tools/agenda/EventAnswers.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <iostream>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr std::chrono::seconds longestWait{20}; ///< For calendars that break off by themselves after eight.

struct Stretch {
    Instant from{};
    Instant to{};
};

/// Today whole, so that what has been is shown too; the week and free time from now on.
Stretch stretchOf(AgendaRequest::Action action, Instant now, const Calendar& calendar)
{
    const LocalDay today = calendar.day(now);
    const auto startOf = [&](LocalDay day) { return calendar.instant(day, std::chrono::hours(0)); };
    if (action == AgendaRequest::Action::today)
        return {startOf(today), startOf(today + std::chrono::days(1))};
    return {action == AgendaRequest::Action::week ? startOf(today) : now, startOf(today + std::chrono::days(7))};
}

std::string text(const Json& object, std::string_view key)
{
    return readString(object, key).value_or("");
}

/// "12:00–13:00  Lunch (Here)", "all day      Holiday", "17:00        Reminder: Call mum, overdue"
std::string lineOf(const Json& item)
{
    constexpr std::size_t width = 13;
    const auto timeOf = [](const std::string& date) { return date.size() > 11 ? date.substr(11) : std::string(); };
    const std::string start = text(item, "start");
    const std::string end = text(item, "end");
    std::string time = timeOf(start);
    std::size_t shownWidth = time.size();
    if (readBool(item, "all_day").value_or(false)) {
        time = start == end ? "all day" : "until " + end.substr(5);
        shownWidth = time.size();
    } else if (!end.empty()) {
        const bool isOtherDay = end.substr(0, 10) != start.substr(0, 10);
        const std::string until = isOtherDay ? end.substr(5) : timeOf(end);
        time += "–" + until;
        shownWidth = timeOf(start).size() + 1 + until.size();
    }
    std::string line = time + std::string(shownWidth < width ? width - shownWidth : 1, ' ');
    line += (text(item, "kind") == "reminder" ? "Reminder: " : "") + printableLine(text(item, "title"));
    if (const std::string place = printableLine(text(item, "place")); !place.empty())
        line += " (" + place + ")";
    return line + (readBool(item, "overdue").value_or(false) ? ", overdue" : "");
}

void printItems(const Json& items, bool asJson, std::ostream& out)
{
    std::string day;
    for (const Json& item : items) {
        if (asJson) {
            out << dumpJson(item) << std::endl;
            continue;
        }
        const std::string start = text(item, "start").substr(0, 10);
        const std::string when = text(item, "when");
        if (start != day)
            out << (day.empty() ? "" : "\n") << when.substr(0, std::min(when.find(" at "), when.find(" to "))) << "\n";
        day = start;
        out << "  " << lineOf(item) << std::endl;
    }
}

struct Options {
    bool asJson = false;
    int minutes = 60;
};

int runCommand(AgendaRequest request, const ProgramEnvironment& environment)
{
    const auto calendar = usersCalendar(environment, std::cerr);
    if (!calendar)
        return exit_code::couldNot;
    if (request.action == AgendaRequest::Action::free)
        request.waking = UserSettings::readTelling(environment, std::cerr).wakingHours;
    ProgramLoop loop;
    const Instant now = loop.scheduler().wallClock();
    const auto agenda = openAgenda(environment, loop.scheduler());
    auto content = readNoteFolder(environment.notebookFolder, now);
    runAgenda(request, *agenda, content ? std::move(content->notes) : std::vector<Note>(), now, *calendar, std::cout,
        std::cerr, ProgramLoop::end);
    // A disk that does not answer keeps even what would break off from doing so.
    const TimerHandle deadline = loop.scheduler().after(longestWait, [] {
        std::cerr << "The calendars have not answered, so nothing is known of them. Try again later." << std::endl;
        ProgramLoop::end(exit_code::couldNot);
    });
    const int outcome = loop.run();
    if (content)
        return outcome;
    std::cerr << unreadableNoteFolder(environment.notebookFolder) << " Its reminders are missing here." << std::endl;
    return exit_code::couldNot;
}

} // namespace

void runAgenda(const AgendaRequest& request, Agenda& agenda, std::vector<Note> notes, Instant now,
    const Calendar& calendar, std::ostream& out, std::ostream& errors, std::function<void(int)> finished)
{
    const Stretch stretch = stretchOf(request.action, now, calendar);
    agenda.read(stretch.from, stretch.to, calendar,
        [request, notes = std::move(notes), stretch, now, calendar, &out, &errors, finished = std::move(finished)](
            const AgendaReading& reading) {
            const EventAnswers answers(now, calendar);
            Json items = Json::array();
            const bool isFreeTime = request.action == AgendaRequest::Action::free;
            if (isFreeTime && reading.isWhole) {
                FreeTime::Wish wish;
                wish.length = std::chrono::minutes(request.minutes);
                wish.waking = request.waking;
                wish.from = stretch.from;
                wish.to = stretch.to;
                for (const FreeTime& free : FreeTime::find(reading.events, wish, calendar))
                    items.push_back(answers.slot(free));
                if (!request.asJson)
                    for (const Json& slot : items)
                        out << text(slot, "when") << std::endl;
            } else if (!isFreeTime) {
                items = *answers.agenda(reading.events, notes, stretch.from, stretch.to).list("items");
            }
            if (request.asJson || !isFreeTime)
                printItems(items, request.asJson, out);
            if (items.empty() && !request.asJson && reading.isWhole)
                out << (isFreeTime ? "There is no such gap from " + request.waking.text() + " in the next seven days."
                                   : std::string("Nothing is planned."))
                    << std::endl;
            for (const std::string& problem : reading.problems)
                errors << printableLine(problem) << std::endl;
            finished(reading.problems.empty() ? exit_code::done : exit_code::couldNot);
        });
}

Command agendaCommand(const ProgramEnvironment& environment)
{
    const auto options = std::make_shared<Options>();
    const auto running = [options, environment](AgendaRequest::Action action) {
        return [options, environment, action] {
            return runCommand({action, options->minutes, options->asJson, {}}, environment);
        };
    };
    Command command("agenda", "Your events and reminders, and when you are free");
    command.flag("--json", options->asJson, "One JSON object a line");
    command.run = running(AgendaRequest::Action::today);
    command.command("today", "Today");
    command.command("week", "Today and the six days after it").run = running(AgendaRequest::Action::week);
    Command& free = command.command("free", "The next gaps that are long enough, within seven days");
    free.number("minutes", options->minutes, 5, 24 * 60, "How long a gap must be");
    free.run = running(AgendaRequest::Action::free);
    return command;
}

} // namespace quorvell
