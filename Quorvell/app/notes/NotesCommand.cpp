// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesCommand.h"

#include "Quorvell/app/notes/NotesChanging.h"
#include "Quorvell/app/notes/NotesKeeping.h"
#include "Quorvell/app/notes/NotesMoving.h"
#include "Quorvell/app/notes/NotesReading.h"
#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UsersCalendar.h"

#include <chrono>
#include <iostream>
#include <limits>
#include <memory>
#include <vector>

namespace quorvell {

namespace {

using Action = NotesRequest::Action;

/// What stands after a subcommand's name.
enum class Takes { nothing, words, id, idAndVersion, idAndStep, idAndPicture, assurance, target };

struct Subcommand {
    const char* name;
    Action action;
    Takes takes;
    const char* description;
};

constexpr Subcommand subcommands[] = {
    {"list", Action::list, Takes::nothing, "All notes, the newest first"},
    {"find", Action::find, Takes::words, "Notes that hold all of the words, or words that begin so"},
    {"show", Action::show, Takes::id, "One note with its text"},
    {"add", Action::add, Takes::words, "Keep a note of your own"},
    {"edit", Action::edit, Takes::id, "Edit a note in the program that VISUAL or EDITOR names"},
    {"tick", Action::tick, Takes::idAndStep, "Tick a step or a task of a note, or take the tick off"},
    {"picture", Action::picture, Takes::idAndPicture, "Keep a picture with a note, or say where its picture is"},
    {"history", Action::history, Takes::id, "Earlier versions of a note, the newest first"},
    {"restore", Action::restore, Takes::idAndVersion, "Bring an earlier version back"},
    {"delete", Action::delete_, Takes::id, "Move a note to the trash"},
    {"facts", Action::facts, Takes::nothing, "What is kept about you"},
    {"remember", Action::remember, Takes::words, "Keep a fact about you that the assistant may know"},
    {"confirm", Action::confirm, Takes::id, "Let the assistant know a fact about you"},
    {"forget-facts", Action::forgetFacts, Takes::assurance, "Remove every fact about you for good"},
    {"export", Action::export_, Takes::target, "Copy the notebook into a folder; with --json its notes into one file"},
    {"move", Action::move, Takes::target, "Keep the notebook in another folder from now on"},
};

/// What is only read may be named by what it says.
std::string idMeaning(const std::string& command)
{
    const bool isRead = command == "show" || command == "history";
    return std::string("Its id or the beginning of it") + (isRead ? ", or words that no other note holds" : "");
}

void addArguments(Command& command, Takes takes, NotesRequest& request)
{
    switch (takes) {
    case Takes::nothing:
        return;
    case Takes::words:
        command.words("words", request.words, "The words").isRequired();
        return;
    case Takes::assurance:
        command.flag("--yes", request.isSure, "Do it without asking back");
        return;
    case Takes::target:
        command
            .text("target", request.words,
                command.name == "move"
                    ? "The folder; or local, for the usual one; or synced, for one that a sync program keeps"
                    : "The folder or, with --json, the file; - is the standard output")
            .isRequired();
        return;
    case Takes::id:
    case Takes::idAndVersion:
    case Takes::idAndStep:
    case Takes::idAndPicture:
        command.text("id", request.words, idMeaning(command.name)).isRequired();
    }
    if (takes == Takes::idAndPicture)
        command.text("file", request.picture, "The picture, in any common format");
    else if (takes != Takes::id)
        command
            .number("number", request.number, 1, std::numeric_limits<int>::max(),
                takes == Takes::idAndVersion ? "Its number in the history" : "The number of the step or task")
            .isRequired();
}

bool isChange(Action action)
{
    return action == Action::edit || action == Action::restore || action == Action::confirm || action == Action::tick
        || action == Action::picture || action == Action::delete_;
}

bool isAboutNoNote(Action action)
{
    return action == Action::add || action == Action::remember || action == Action::facts
        || action == Action::forgetFacts;
}

int runNotes(const NotesRequest& request, const ProgramEnvironment& environment)
{
    if (request.action == Action::move)
        return moveNotes(request, environment, std::cout, std::cerr);
    auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (!calendar) {
        std::cerr << environment.unknownTimeZone() << std::endl;
        return exit_code::couldNot;
    }
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto output = environment.isOutputTerminal ? NotesListing::Output::terminal : NotesListing::Output::other;
    const NotesListing listing{*std::move(calendar), now, output};
    if (isAboutNoNote(request.action))
        return keepNotes(request, listing, environment, std::cout, std::cerr);
    NotesReading reading(request, environment.notebookFolder, listing, std::cout, std::cerr);
    if (!isChange(request.action))
        return reading.run();
    const auto note = reading.meantNote();
    return note ? changeNote(request, *note, environment, std::cout, std::cerr) : exit_code::couldNot;
}

} // namespace

Command notesCommand(const ProgramEnvironment& environment)
{
    const auto request = std::make_shared<NotesRequest>();
    Command command("notes", "List, find, show and change the notes of the notebook");
    command.flag("--json", request->asJson, "One JSON object a line");
    for (const Subcommand& subcommand : subcommands) {
        Command& added = command.command(subcommand.name, subcommand.description);
        addArguments(added, subcommand.takes, *request);
        added.run = [action = subcommand.action, request, environment] {
            request->action = action;
            return runNotes(*request, environment);
        };
    }
    command.run = command.commands.front().run;
    return command;
}

} // namespace quorvell
