// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindStoring.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/reminders/RemindRequest.h"
#include "Quorvell/app/reminders/RemindText.h"
#include "Quorvell/app/reminders/WhichTime.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/tools/reminders/ReminderAnswers.h"
#include "Quorvell/tools/reminders/ReminderArguments.h"
#include "Quorvell/tools/reminders/ReminderNote.h"
#include "QuorvellCore/text/Characters.h"

#include <QEventLoop>
#include <nlohmann/json.hpp>

#include <iostream>
#include <optional>
#include <string>

namespace quorvell {

namespace {

/// Waits until the note is durable, or why it is not.
NotebookVerdict store(Notebook& notebook, Note note)
{
    QEventLoop loop;
    std::optional<NotebookVerdict> verdict;
    notebook.add(std::move(note), [&](const NotebookVerdict& given) {
        verdict = given;
        loop.quit();
    });
    if (!verdict)
        loop.exec();
    return verdict.value_or(NotebookVerdict{false, "The notebook gave no answer. Try again."});
}

/// One run of the command.
struct RemindStoring {
    Notebook& notebook;
    Instant now;
    const Calendar& calendar;
    RemindOutput output;
    WhichTime whichTime; ///< Empty where nobody can be asked.

    /// True when it is stored.
    bool set(const std::string& phrase) const
    {
        const ReminderRequest request = remindRequest(phrase, now, calendar, whichTime);
        if (characterCount(request.task) > ReminderArguments::longestTask)
            return complain("Nothing is set: a reminder has at most " + std::to_string(ReminderArguments::longestTask)
                + " characters. Say it in one sentence; \"quorvell notes add\" keeps longer texts.");
        if (request.verdict != ReminderRequest::Verdict::ready)
            return complain(remindText(request, now, calendar));
        const Note note = reminderNote(request, freshNoteID(), NoteAuthor::person, NoteOrigin::person, now);
        const NotebookVerdict verdict = store(notebook, note);
        if (!verdict.isStored)
            return complain(verdict.problem);
        tell(request, note);
        return true;
    }

private:
    void tell(const ReminderRequest& request, const Note& note) const
    {
        if (output == RemindOutput::json)
            std::cout << dumpJson(ReminderAnswers(now, calendar).set(note, request.hasTime).json()) << std::endl;
        else
            std::cout << "A reminder is set.\n" << remindText(request, now, calendar) << std::endl;
    }

    bool complain(const std::string& problem) const
    {
        if (output == RemindOutput::json)
            std::cout << dumpJson({{"status", "not_set"}, {"problem", problem}}) << std::endl;
        else
            std::cerr << problem << std::endl;
        return false;
    }
};

} // namespace

int storeReminders(const ProgramEnvironment& environment, RemindPhrases& phrases, Instant now, const Calendar& calendar,
    RemindOutput output)
{
    ProgramLoop loop;
    const OpenedNotebook opened = openNotebook(environment, loop.scheduler());
    if (!opened.notebook) {
        std::cerr << opened.problem << std::endl;
        return exit_code::couldNot;
    }
    RemindStoring storing{*opened.notebook, now, calendar, output, nullptr};
    if (environment.isInputTerminal && environment.isOutputTerminal && output == RemindOutput::text)
        storing.whichTime = [&](const auto& choices) {
            return askWhichTime(choices, now, calendar, std::cin, std::cout);
        };
    int result = exit_code::done;
    while (const auto phrase = phrases.next())
        result = storing.set(*phrase) ? result : exit_code::couldNot;
    return result;
}

} // namespace quorvell
