#include "Quorvell/app/NotesCommand.h"

#include "Quorvell/app/NotesChanging.h"
#include "Quorvell/app/NotesMoving.h"
#include "Quorvell/app/NotesReading.h"
#include "Quorvell/app/ProgramEnvironment.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <iostream>
#include <memory>
#include <vector>

namespace quorvell {

namespace {

constexpr int couldNot = 1;

using Action = NotesRequest::Action;

struct Options {
    bool asJson = false;
    std::vector<std::string> words;
    std::string target; ///< An id, or where to export or move to.
    int version = 0;
};

struct Subcommand {
    const char* name;
    Action action;
    const char* description;
    const char* argument; ///< Empty when it takes none.
    const char* meaning;
};

constexpr Subcommand subcommands[] = {
    {"list", Action::list, "All notes, the newest first", "", ""},
    {"show", Action::show, "One note with its text", "id", "Its id or the beginning of it"},
    {"edit", Action::edit, "Edit a note in the program that VISUAL or EDITOR names", "id",
        "Its id or the beginning of it"},
    {"history", Action::history, "Earlier versions of a note, the newest first", "id", "Its id or the beginning of it"},
    {"restore", Action::restore, "Bring an earlier version back", "id", "Its id or the beginning of it"},
    {"confirm", Action::confirm, "Let the assistant know a fact about you", "id", "Its id or the beginning of it"},
    {"delete", Action::delete_, "Move a note to the trash", "id", "Its id or the beginning of it"},
    {"export", Action::export_, "Copy the notebook into a folder; with --json its notes into one file", "target",
        "The folder or, with --json, the file; - is the standard output"},
    {"move", Action::move, "Keep the notebook in another folder from now on", "target",
        "The folder; or local, for the usual one; or synced, for one that a sync program keeps"},
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
        return {Action::find, joined(options.words), 0, options.asJson};
    for (const Subcommand& subcommand : subcommands)
        if (command.got_subcommand(subcommand.name))
            return {subcommand.action, options.target, options.version, options.asJson};
    return {Action::list, "", 0, options.asJson};
}

bool isChange(Action action)
{
    return action == Action::edit || action == Action::restore || action == Action::confirm
        || action == Action::delete_;
}

int runNotes(const NotesRequest& request, const ProgramEnvironment& environment)
{
    if (request.action == Action::move)
        return moveNotes(request, environment, std::cout, std::cerr);
    auto calendar = Calendar::create(environment.timeZone, environment.locale);
    if (!calendar) {
        std::cerr << environment.unknownTimeZone() << std::endl;
        return couldNot;
    }
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto output = environment.isOutputTerminal ? NotesListing::Output::terminal : NotesListing::Output::other;
    NotesReading reading(
        request, environment.notebookFolder, {*std::move(calendar), now, output}, std::cout, std::cerr);
    if (!isChange(request.action))
        return reading.run();
    const auto note = reading.meantNote();
    return note ? changeNote(request, *note, environment, std::cout, std::cerr) : couldNot;
}

} // namespace

std::function<int()> addNotesCommand(CLI::App& program, const ProgramEnvironment& environment)
{
    const auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand("notes", "List, find, show and change the notes of the notebook");
    command->require_subcommand(0, 1);
    command->add_flag("--json", options->asJson, "One JSON object a line");
    for (const Subcommand& subcommand : subcommands) {
        CLI::App* added = command->add_subcommand(subcommand.name, subcommand.description);
        if (*subcommand.argument != '\0')
            added->add_option(subcommand.argument, options->target, subcommand.meaning)->required();
        if (subcommand.action == Action::restore)
            added->add_option("version", options->version, "Its number in the history")
                ->required()
                ->check(CLI::PositiveNumber);
        added->fallthrough();
    }
    CLI::App* find = command->add_subcommand("find", "Notes that hold all of the words, or words that begin so");
    find->add_option("words", options->words, "What to look for")->required();
    find->fallthrough();
    return [command, options, environment] { return runNotes(requestOf(*command, *options), environment); };
}

} // namespace quorvell
