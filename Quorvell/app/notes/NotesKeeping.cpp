// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesKeeping.h"

#include "Quorvell/app/notes/WithNotebook.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/WaitFor.h"
#include "Quorvell/notebook/FreshNoteID.h"
#include "Quorvell/notebook/NoteTitle.h"
#include "Quorvell/tools/notebook/PrivateFacts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <utility>

namespace quorvell {

namespace {

class NotesKeeping {
public:
    NotesKeeping(FullNotebook& notebook, const NotesRequest& request, const NotesListing& listing, std::ostream& out,
        std::ostream& errors)
        : m_notebook(notebook)
        , m_request(request)
        , m_listing(listing)
        , m_out(out)
        , m_errors(errors)
    {
    }

    int add()
    {
        const std::string text = repairUtf8(m_request.words);
        Note note{.id = freshNoteID(), .title = noteTitleFrom(text), .created = m_listing.now};
        if (note.title.empty())
            return fail("There are no words to keep. Give them after \"add\".");
        if (note.title != text)
            note.body = text;
        const std::string id = note.id;
        return tell(id, "Kept.",
            waitFor<NotebookVerdict>([&](NotebookCallback told) { m_notebook.add(std::move(note), std::move(told)); }));
    }

    int remember()
    {
        const std::string fact = onOneLine(repairUtf8(m_request.words));
        if (fact.empty())
            return fail("There are no words to keep. Give them after \"remember\".");
        if (!privateFactProblem(fact).empty())
            return fail("Nothing was kept: passwords, codes and private numbers do not belong in a notebook. Keep "
                        "them in a password manager.");
        const std::string id = freshNoteID();
        return tell(
            id, "Kept. The assistant knows it from now on.", waitFor<NotebookVerdict>([&](NotebookCallback told) {
                m_notebook.remember(fact, NoteAuthor::person, id, m_listing.now, std::move(told));
            }));
    }

    int facts()
    {
        const std::vector<Note> kept = m_notebook.keptFacts();
        const std::vector<Note> suggested = m_notebook.suggestions();
        for (const auto* some : {&kept, &suggested})
            for (const Note& fact : *some)
                m_out << (m_request.asJson
                        ? dumpJson(NotesListing::json(fact, m_notebook.fileURL(fact.id).value_or("")))
                        : m_listing.line(fact))
                      << "\n";
        if (m_request.asJson)
            return exit_code::done;
        if (kept.empty() && suggested.empty())
            m_out << "The notebook holds no facts about you. \"quorvell notes remember ...\" keeps one.\n";
        if (!suggested.empty())
            m_out << "The assistant does not see what is not confirmed. \"quorvell notes confirm ID\" confirms it.\n";
        return exit_code::done;
    }

    int forgetFacts()
    {
        const std::size_t count = m_notebook.keptFacts().size() + m_notebook.suggestions().size();
        if (!m_request.isSure)
            return fail("This removes every fact about you, " + std::to_string(count)
                + " just now, with all earlier versions, and nothing brings them back. Add --yes to do it.");
        const auto verdict =
            waitFor<NotebookVerdict>([&](NotebookCallback told) { m_notebook.forgetAll(std::move(told)); });
        if (!verdict.isStored)
            return fail(verdict.problem);
        if (m_request.asJson)
            m_out << "{\"status\":\"forgotten\"}\n";
        else
            m_out << "Every fact about you is gone.\n";
        return exit_code::done;
    }

private:
    int fail(const std::string& problem)
    {
        m_errors << problem << "\n";
        return exit_code::couldNot;
    }

    int tell(const std::string& id, const char* sentence, const NotebookVerdict& verdict)
    {
        if (!verdict.isStored)
            return fail(verdict.problem);
        if (m_request.asJson)
            m_out << dumpJson({{"status", "kept"}, {"id", id}}) << "\n";
        else
            m_out << sentence << " Its id is " << id << ".\n";
        return exit_code::done;
    }

    FullNotebook& m_notebook;
    const NotesRequest& m_request;
    const NotesListing& m_listing;
    std::ostream& m_out;
    std::ostream& m_errors;
};

} // namespace

int keepNotes(const NotesRequest& request, const NotesListing& listing, const ProgramEnvironment& environment,
    std::ostream& out, std::ostream& errors)
{
    return withNotebook(environment, errors, [&](FullNotebook& notebook) {
        NotesKeeping keeping(notebook, request, listing, out, errors);
        if (request.action == NotesRequest::Action::add)
            return keeping.add();
        if (request.action == NotesRequest::Action::remember)
            return keeping.remember();
        if (request.action == NotesRequest::Action::forgetFacts)
            return keeping.forgetFacts();
        return keeping.facts();
    });
}

} // namespace quorvell
