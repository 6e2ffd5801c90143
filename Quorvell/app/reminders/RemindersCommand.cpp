// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindersCommand.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/reminders/RemindRequest.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/reminding/ReminderSchedule.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UsersCalendar.h"
#include "Quorvell/tools/reminders/ReminderAnswers.h"
#include "Quorvell/tools/reminders/ReminderChanges.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <memory>
#include <vector>

namespace quorvell {

namespace {

std::string lineOf(const Note& note, const ReminderAnswers& answers)
{
    const Json entry = answers.entry(note);
    std::string line =
        printableLine(note.id) + "  " + printableLine(note.title) + "  (" + readString(entry, "when").value_or("");
    if (const auto repeat = readString(entry, "repeat_words"))
        line += ", " + *repeat;
    return line + (readBool(entry, "overdue").value_or(false) ? ", overdue)" : ")");
}

/// One run of the command.
class RemindersRun {
public:
    RemindersRun(const RemindersRequest& request, Notebook& notebook, Instant now, const Calendar& calendar,
        std::ostream& out, std::ostream& errors, WhichTime whichTime)
        : m_request(request)
        , m_notebook(notebook)
        , m_now(now)
        , m_calendar(calendar)
        , m_answers(now, calendar)
        , m_out(out)
        , m_errors(errors)
        , m_whichTime(std::move(whichTime))
    {
    }

    int list() const
    {
        const auto pending = pendingReminders(m_notebook.notes(), ReminderAudience::user);
        if (pending.empty() && !m_request.asJson)
            m_out << "Nothing is pending. \"quorvell remind\" sets a reminder." << std::endl;
        for (const Note& note : pending)
            m_out << (m_request.asJson ? dumpJson(m_answers.entry(note)) : lineOf(note, m_answers)) << std::endl;
        return exit_code::done;
    }

    /// The one reminder that is meant; none when it has been told why.
    std::optional<Note> meant() const
    {
        const auto pending = pendingReminders(m_notebook.notes(), ReminderAudience::user);
        // Without a name it would be what is due.
        const bool isNamed = !trimmed(m_request.id).empty();
        auto found = isNamed ? meantReminders(pending, m_request.id, "", m_now) : std::vector<Note>();
        if (found.empty() && isNamed)
            found = meantReminders(pending, "", m_request.id, m_now);
        if (found.size() == 1)
            return found.front();
        m_errors << (found.empty() ? "No pending reminder has this id. \"quorvell reminders\" lists them."
                                   : "Several reminders fit. Give more of the id:")
                 << std::endl;
        for (const Note& note : found)
            m_errors << lineOf(note, m_answers) << std::endl;
        return std::nullopt;
    }

    /// The change that is asked for, or nothing when it has been told why not.
    std::function<void(Note&)> change(const Note& own) const
    {
        if (m_request.action == RemindersRequest::Action::done)
            return [now = m_now, calendar = m_calendar, isForGood = m_request.isForGood](Note& note) {
                if (isForGood)
                    note.repeatRule.reset();
                ReminderSchedule::finish(note, now, calendar);
            };
        const ReminderRequest until = putOffRequest(m_request.when, m_now, m_calendar, own.remindAt.value_or(m_now));
        const bool canAsk = until.verdict == ReminderRequest::Verdict::whichTime && m_whichTime;
        const auto date = until.verdict == ReminderRequest::Verdict::ready ? std::optional(until.date)
            : canAsk                                                       ? m_whichTime(until.choices)
                     : writtenTime(m_request.when, until.choices, m_calendar);
        if (date)
            return [date](Note& note) { ReminderState::later(note, *date); };
        if (canAsk) {
            m_errors << "Nothing was changed." << std::endl;
            return nullptr;
        }
        m_errors << "\"" << m_request.when
                 << "\" is not one time to come. Say it like \"in an hour\", \"this evening\" "
                 << "or \"tomorrow at 5 pm\"." << std::endl;
        return nullptr;
    }

    void tell(const Note& note) const
    {
        const bool isDone = m_request.action == RemindersRequest::Action::done;
        const ToolResult answer = isDone ? m_answers.done(note) : m_answers.deferred(note);
        if (m_request.asJson) {
            m_out << dumpJson(answer.json()) << std::endl;
            return;
        }
        const auto when = answer.string(isDone ? "next" : "when");
        m_out << printableLine(note.title) << (isDone ? ": done." : ": put off.")
              << (when ? " Next " + *when + "." : "") << std::endl;
    }

private:
    const RemindersRequest& m_request;
    Notebook& m_notebook;
    Instant m_now;
    Calendar m_calendar;
    ReminderAnswers m_answers;
    std::ostream& m_out;
    std::ostream& m_errors;
    WhichTime m_whichTime;
};

struct RemindersOptions {
    bool asJson = false;
    bool isForGood = false;
    std::string id;
    std::string when;
};

int runCommand(const RemindersRequest& request, const ProgramEnvironment& environment)
{
    const auto calendar = usersCalendar(environment, std::cerr);
    if (!calendar)
        return exit_code::couldNot;
    ProgramLoop loop;
    const OpenedNotebook opened = openNotebook(environment, loop.scheduler());
    if (!opened.notebook) {
        std::cerr << opened.problem << std::endl;
        return exit_code::couldNot;
    }
    const auto now = loop.scheduler().wallClock();
    WhichTime whichTime;
    if (environment.isInputTerminal && environment.isOutputTerminal)
        whichTime = [&](const auto& choices) { return askWhichTime(choices, now, *calendar, std::cin, std::cout); };
    loop.scheduler().post([&] {
        runReminders(request, *opened.notebook, now, *calendar, std::cout, std::cerr, whichTime, ProgramLoop::end);
    });
    return loop.run();
}

} // namespace

void runReminders(const RemindersRequest& request, Notebook& notebook, Instant now, const Calendar& calendar,
    std::ostream& out, std::ostream& errors, const WhichTime& whichTime, std::function<void(int)> finished)
{
    const auto run = std::make_shared<RemindersRun>(request, notebook, now, calendar, out, errors, whichTime);
    if (request.action == RemindersRequest::Action::list)
        return finished(run->list());
    const auto note = run->meant();
    const auto change = note ? run->change(*note) : nullptr;
    if (!change)
        return finished(exit_code::couldNot);
    notebook.update(
        note->id, change, [run, &notebook, &errors, id = note->id, finished](const NotebookVerdict& verdict) {
            const auto stored = notebook.note(id);
            if (!verdict.isStored || !stored) {
                errors << (verdict.isStored ? "The reminder is gone." : verdict.problem) << std::endl;
                return finished(exit_code::couldNot);
            }
            run->tell(*stored);
            finished(exit_code::done);
        });
}

Command remindersCommand(const ProgramEnvironment& environment)
{
    const auto options = std::make_shared<RemindersOptions>();
    const auto running = [options, environment](RemindersRequest::Action action) {
        return [options, environment, action] {
            return runCommand({action, options->id, options->when, options->asJson, options->isForGood}, environment);
        };
    };
    Command command("reminders", "List what you will be reminded of, tick off, put off");
    command.flag("--json", options->asJson, "One JSON object a line");
    command.run = running(RemindersRequest::Action::list);
    command.command("list", "All that are pending, by their times");
    Command& finish = command.command("done", "Tick one off");
    finish.text("id", options->id, "Its id, the beginning of it, or words of the task").isRequired();
    finish.flag("--for-good", options->isForGood, "End one that repeats; without this it goes on after that time");
    finish.run = running(RemindersRequest::Action::done);
    Command& later = command.command("later", "Put one off");
    later.text("id", options->id, "Its id, the beginning of it, or words of the task").isRequired();
    later.words("when", options->when, "Until when: in an hour, this evening, tomorrow at 5 pm").isRequired();
    later.run = running(RemindersRequest::Action::later);
    return command;
}

} // namespace quorvell
