// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesChanging.h"

#include "Quorvell/app/notes/NoteEditor.h"
#include "Quorvell/app/notes/WithNotebook.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/WaitFor.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <system_error>
#include <utility>

namespace quorvell {

namespace {

/// A file that says no dates gets those of its reading, which tell nothing. An editor leaves the dates as they are, so
/// everything else is what a change shows in.
bool isOtherwiseSame(Note note, const Note& base)
{
    for (NoteTurn& turn : note.thread)
        if (turn.date == note.created)
            turn.date = base.created;
    note.created = base.created;
    note.updated = base.updated;
    return note == base;
}

/// One change of one note, told as it ends.
class NotesChanging {
public:
    NotesChanging(FullNotebook& notebook, const NotesRequest& request, std::ostream& out, std::ostream& errors)
        : m_notebook(notebook)
        , m_request(request)
        , m_out(out)
        , m_errors(errors)
    {
    }

    /// `edited` is based on `base`. What somebody else changed meanwhile goes into the history.
    int edit(const Note& base, const Note& edited)
    {
        const auto isConflict = std::make_shared<bool>(false);
        const auto change = [base, edited, isConflict](Note& note) {
            *isConflict = !isOtherwiseSame(note, base);
            note = edited;
        };
        const NotebookVerdict verdict =
            verdictOf([&](NotebookCallback told) { m_notebook.edit(base.id, change, std::move(told)); });
        return tell(base.id, "changed", verdict,
            *isConflict ? "The note is changed. Somebody else had changed it in the meantime; their version is in its "
                          "history."
                        : "The note is changed.");
    }

    int restore(const Note& note)
    {
        const auto versions = waitFor<std::vector<NoteVersion>>(
            [&](FullNotebook::HistoryCallback told) { m_notebook.history(note.id, std::move(told)); });
        const auto index = static_cast<std::size_t>(m_request.number - 1);
        if (index >= versions.size()) {
            m_errors << "There is no version " << m_request.number << ". \"quorvell notes history " << note.id
                     << "\" lists them.\n";
            return exit_code::couldNot;
        }
        const NotebookVerdict verdict = verdictOf(
            [&](NotebookCallback told) { m_notebook.restoreVersion(note.id, versions[index], std::move(told)); });
        return tell(
            note.id, "restored", verdict, "The note is as it was then; what it held until now is in its history.");
    }

    int confirm(const Note& note)
    {
        if (note.kind != NoteKind::aboutMe) {
            m_errors << "Only facts about you are confirmed; this is another kind of note.\n";
            return exit_code::couldNot;
        }
        const NotebookVerdict verdict = verdictOf([&](NotebookCallback told) {
            m_notebook.edit(
                note.id, [](Note& fact) { fact.confirmed = true; }, std::move(told));
        });
        return tell(note.id, "confirmed", verdict, "Confirmed. The assistant knows it from now on.");
    }

    int tick(const Note& note)
    {
        const auto index = static_cast<std::size_t>(m_request.number - 1);
        const auto step = static_cast<std::int64_t>(index);
        const bool isHowTo = note.kind == NoteKind::howTo;
        if (isHowTo ? index >= note.steps.size() : !withToggledTask(note.body, index)) {
            m_errors << "The note has no " << (isHowTo ? "step " : "task ") << m_request.number
                     << ". Steps are those of a how-to, tasks are lines of a note such as \"- [ ] Milk\".\n";
            return exit_code::couldNot;
        }
        const bool isTicked = std::find(note.checked.begin(), note.checked.end(), step) != note.checked.end();
        const NotebookVerdict verdict = verdictOf([&](NotebookCallback told) {
            if (isHowTo)
                m_notebook.setChecked(note.id, step, !isTicked, std::move(told));
            else
                m_notebook.toggleTask(note.id, index, std::move(told));
        });
        return tell(note.id, "changed", verdict, "The tick is changed.");
    }

    int picture(const Note& note)
    {
        if (m_request.picture.empty())
            return tellPicture(note);
        const auto picture = readFile(m_request.picture, largestPicture);
        if (!picture) {
            m_errors << m_request.picture << " cannot be read, or it is larger than 32 MiB. Give another file.\n";
            return exit_code::couldNot;
        }
        const NotebookVerdict verdict =
            verdictOf([&](NotebookCallback told) { m_notebook.savePicture(note.id, *picture, std::move(told)); });
        return tell(note.id, "changed", verdict, "The picture is kept with the note.");
    }

    int delete_(const Note& note)
    {
        const NotebookVerdict verdict =
            verdictOf([&](NotebookCallback told) { m_notebook.delete_(note.id, std::move(told)); });
        return tell(note.id, "deleted", verdict, "Deleted. The file is in the trash where there is one.");
    }

private:
    static constexpr std::size_t largestPicture = 32 * 1024 * 1024; ///< Bytes; as much as the owner takes.

    int tellPicture(const Note& note)
    {
        const auto path = m_notebook.pictureURL(note);
        if (!path) {
            m_errors << "The note has no picture. \"quorvell notes picture " << note.id << " FILE\" keeps one.\n";
            return exit_code::couldNot;
        }
        m_out << (m_request.asJson ? dumpJson({{"id", note.id}, {"picture", *path}}) : *path) << "\n";
        return exit_code::done;
    }

    static NotebookVerdict verdictOf(const std::function<void(NotebookCallback)>& begin)
    {
        return waitFor<NotebookVerdict>(begin);
    }

    int tell(const std::string& id, const char* status, const NotebookVerdict& verdict, const char* sentence)
    {
        if (!verdict.isStored)
            m_errors << verdict.problem << "\n";
        else if (m_request.asJson)
            m_out << dumpJson({{"status", status}, {"id", id}}) << "\n";
        else
            m_out << sentence << "\n";
        return verdict.isStored ? exit_code::done : exit_code::couldNot;
    }

    FullNotebook& m_notebook;
    const NotesRequest& m_request;
    std::ostream& m_out;
    std::ostream& m_errors;
};

std::string temporaryFolder(const ProgramEnvironment& environment)
{
    std::error_code failure;
    const auto usual = std::filesystem::temp_directory_path(failure);
    if (!environment.runtimeFolder.empty())
        return environment.runtimeFolder;
    return failure ? "/tmp" : usual.string();
}

} // namespace

int changeNote(const NotesRequest& request, const Note& note, const ProgramEnvironment& environment, std::ostream& out,
    std::ostream& errors)
{
    EditedNote edited;
    if (request.action == NotesRequest::Action::edit) {
        edited = editNote(note, environment.editor.value_or("editor"), temporaryFolder(environment));
        if (!edited.problem.empty()) {
            errors << edited.problem << "\n";
            return exit_code::couldNot;
        }
        if (!edited.note) {
            out << (request.asJson ? dumpJson({{"status", "unchanged"}, {"id", note.id}}) : "Nothing was changed.")
                << "\n";
            return exit_code::done;
        }
    }
    return withNotebook(environment, errors, [&](FullNotebook& notebook) {
        NotesChanging changing(notebook, request, out, errors);
        switch (request.action) {
        case NotesRequest::Action::edit:
            return changing.edit(note, *edited.note);
        case NotesRequest::Action::restore:
            return changing.restore(note);
        case NotesRequest::Action::confirm:
            return changing.confirm(note);
        case NotesRequest::Action::tick:
            return changing.tick(note);
        case NotesRequest::Action::picture:
            return changing.picture(note);
        case NotesRequest::Action::delete_:
            return changing.delete_(note);
        case NotesRequest::Action::list:
        case NotesRequest::Action::find:
        case NotesRequest::Action::show:
        case NotesRequest::Action::facts:
        case NotesRequest::Action::history:
        case NotesRequest::Action::export_:
        case NotesRequest::Action::add:
        case NotesRequest::Action::remember:
        case NotesRequest::Action::forgetFacts:
        case NotesRequest::Action::move:
            break;
        }
        return exit_code::couldNot;
    });
}

} // namespace quorvell
