#include "Quorvell/app/RemindStoring.h"

#include "Quorvell/app/NotebookAccess.h"
#include "Quorvell/app/ProgramEnvironment.h"
#include "Quorvell/app/QtScheduler.h"
#include "Quorvell/app/RemindText.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/tools/ReminderNote.h"

#include <QCoreApplication>
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
bool setReminder(Notebook& notebook, const std::string& phrase, Instant now, const Calendar& calendar)
{
    const auto request = ReminderRequest::fromWords(phrase, now, calendar);
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
    int argumentCount = 1;
    std::string name = "quorvell";
    char* arguments[] = {name.data(), nullptr};
    QCoreApplication application(argumentCount, arguments);
    QtScheduler scheduler;
    const OpenedNotebook opened = openNotebook(environment, scheduler);
    if (!opened.notebook) {
        std::cerr << opened.problem << std::endl;
        return couldNot;
    }
    int result = done;
    while (const auto phrase = phrases.next()) {
        if (!setReminder(*opened.notebook, *phrase, now, calendar))
            result = couldNot;
    }
    return result;
}

} // namespace quorvell
