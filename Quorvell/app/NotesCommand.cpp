#include "Quorvell/app/NotesCommand.h"

#include "Quorvell/app/NotesListing.h"
#include "Quorvell/app/ProgramEnvironment.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/tools/NoteSearch.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

namespace quorvell {

namespace {

constexpr int done = 0;
constexpr int couldNot = 1;

/// One run of the command over the folder as it was read.
class NotesRun {
public:
    NotesRun(const NotesRequest& request, const ProgramEnvironment& environment, const NoteFolderContent& content,
        NotesListing listing, std::ostream& out, std::ostream& errors)
        : m_request(request)
        , m_folder(environment.notebookFolder)
        , m_content(content)
        , m_listing(std::move(listing))
        , m_out(out)
        , m_errors(errors)
    {
    }

    int run() const
    {
        switch (m_request.action) {
        case NotesRequest::Action::list:
            return list();
        case NotesRequest::Action::find:
            return find();
        case NotesRequest::Action::show:
            return show();
        }
        return couldNot;
    }

private:
    int list() const
    {
        if (m_content.notes.empty() && !m_request.asJson)
            m_out << "There are no notes in " << m_folder << " yet.\n";
        for (const Note& note : m_content.notes)
            printLine(note);
        return done;
    }

    int find() const
    {
        const auto found = searchNotes(m_content.notes, m_request.words, [](const Note&) { return true; });
        if (found.empty() && !m_request.asJson)
            m_out << "No note holds all of these words. Try fewer words, or only their beginnings.\n";
        for (const Note* note : found)
            printLine(*note);
        return done;
    }

    int show() const
    {
        const auto candidates = withId();
        if (candidates.size() == 1) {
            printWhole(*candidates.front());
            return done;
        }
        if (candidates.empty())
            m_errors << "No note has an id that begins like this. \"quorvell notes\" lists them.\n";
        else
            m_errors << "Several notes have an id that begins like this. Give more of it:\n";
        for (const Note* note : candidates)
            m_errors << m_listing.line(*note) << "\n";
        return couldNot;
    }

    /// The note with exactly this id, else all whose ids begin with it.
    std::vector<const Note*> withId() const
    {
        std::vector<const Note*> found;
        for (const Note& note : m_content.notes) {
            if (note.id == m_request.words)
                return {&note};
            if (note.id.starts_with(m_request.words))
                found.push_back(&note);
        }
        return found;
    }

    void printLine(const Note& note) const
    {
        if (m_request.asJson)
            m_out << dumpJson(NotesListing::json(note, pathOf(note))) << "\n";
        else
            m_out << m_listing.line(note) << "\n";
    }

    void printWhole(const Note& note) const
    {
        if (m_request.asJson)
            m_out << dumpJson(NotesListing::jsonWithText(note, pathOf(note))) << "\n";
        else
            m_out << m_listing.page(note, pathOf(note));
    }

    std::string pathOf(const Note& note) const
    {
        const auto found = m_content.fileNames.find(note.id);
        return found == m_content.fileNames.end() ? m_folder : m_folder + "/" + found->second;
    }

    const NotesRequest& m_request;
    const std::string& m_folder;
    const NoteFolderContent& m_content;
    NotesListing m_listing;
    std::ostream& m_out;
    std::ostream& m_errors;
};

/// A folder that was never made is an empty notebook.
std::optional<NoteFolderContent> readNotebook(const std::string& folder, Instant now)
{
    std::error_code failure;
    if (!std::filesystem::exists(folder, failure) && !failure)
        return NoteFolderContent{};
    return readNoteFolder(folder, now);
}

struct Options {
    bool asJson = false;
    std::vector<std::string> words;
    std::string id;
};

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

NotesRequest requestOf(const CLI::App& command, const Options& options)
{
    if (command.got_subcommand("find"))
        return {NotesRequest::Action::find, joined(options.words), options.asJson};
    if (command.got_subcommand("show"))
        return {NotesRequest::Action::show, options.id, options.asJson};
    return {NotesRequest::Action::list, "", options.asJson};
}

} // namespace

int runNotes(const NotesRequest& request, const ProgramEnvironment& environment, Instant now, std::ostream& out,
    std::ostream& errors)
{
    auto calendar = Calendar::create(environment.timeZone, environment.locale);
    if (!calendar) {
        errors << "The time zone \"" << environment.timeZone
               << "\" is not known. Set TZ to a name such as Europe/Berlin.\n";
        return couldNot;
    }
    const auto content = readNotebook(environment.notebookFolder, now);
    if (!content) {
        errors << "The notebook in " << environment.notebookFolder
               << " cannot be read. See that it is a folder that you may read.\n";
        return couldNot;
    }
    const auto output = environment.isOutputTerminal ? NotesListing::Output::terminal : NotesListing::Output::other;
    return NotesRun(request, environment, *content, {*std::move(calendar), now, output}, out, errors).run();
}

std::function<int()> addNotesCommand(CLI::App& program, const ProgramEnvironment& environment)
{
    const auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand("notes", "List, find and show the notes of the notebook");
    command->require_subcommand(0, 1);
    command->add_flag("--json", options->asJson, "One JSON object a line");
    command->add_subcommand("list", "All notes, the newest first")->fallthrough();
    CLI::App* find = command->add_subcommand("find", "Notes that hold all of the words, or words that begin so");
    find->add_option("words", options->words, "What to look for")->required();
    find->fallthrough();
    CLI::App* show = command->add_subcommand("show", "One note with its text");
    show->add_option("id", options->id, "Its id or the beginning of it")->required();
    show->fallthrough();
    return [command, options, environment] {
        const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
        return runNotes(requestOf(*command, *options), environment, now, std::cout, std::cerr);
    };
}

} // namespace quorvell
