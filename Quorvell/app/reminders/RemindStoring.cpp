// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindStoring.h"

#include "Quorvell/app/program/ProgramLoop.h"
#include "Quorvell/app/reminders/RemindText.h"
#include "Quorvell/app/reminders/WhichTime.h"
#include "Quorvell/handover/NotebookAccess.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/tools/ReminderNote.h"

#include <QEventLoop>

#include <iostream>
#include <optional>
#include <string>

namespace quorvell {

namespace {

constexpr int done = 0;
constexpr int couldNot = 1;

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

/// True when it is stored.
bool setReminder(
    Notebook& notebook, const std::string& phrase, Instant now, const Calendar& calendar, const WhichTime& whichTime)
{
    auto request = ReminderRequest::fromWords(phrase, now, calendar);
    if (request.verdict == ReminderRequest::Verdict::whichTime && whichTime)
        if (const auto date = whichTime(request.choices))
            request = ReminderRequest::settled(request.task, *date, true, request.repeatRule, now, calendar);
    const std::string text = remindText(request, now, calendar);
    if (request.verdict != ReminderRequest::Verdict::ready) {
        std::cerr << text << std::endl;
        return false;
    }
    const NotebookVerdict verdict =
        store(notebook, reminderNote(request, freshNoteID(), NoteAuthor::person, NoteOrigin::person, now));
    if (verdict.isStored)
        std::cout << "A reminder is set.\n" << text << std::endl;
    else
        std::cerr << verdict.problem << std::endl;
    return verdict.isStored;
}

} // namespace

int storeReminders(const ProgramEnvironment& environment, RemindPhrases& phrases, Instant now, const Calendar& calendar)
{
    ProgramLoop loop;
    const OpenedNotebook opened = openNotebook(environment, loop.scheduler());
    if (!opened.notebook) {
        std::cerr << opened.problem << std::endl;
        return couldNot;
    }
    WhichTime whichTime;
    if (environment.isInputTerminal && environment.isOutputTerminal)
        whichTime = [&](const auto& choices) { return askWhichTime(choices, now, calendar, std::cin, std::cout); };
    int result = done;
    while (const auto phrase = phrases.next()) {
        if (!setReminder(*opened.notebook, *phrase, now, calendar, whichTime))
            result = couldNot;
    }
    return result;
}

} // namespace quorvell
