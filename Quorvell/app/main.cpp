// SPDX-License-Identifier: MIT
// The program: reads its surroundings, lets each command declare itself, and runs the one that was chosen.
#include "Quorvell/app/agenda/AgendaCommand.h"
#include "Quorvell/app/chat/ChatCommand.h"
#include "Quorvell/app/doctor/DoctorCommand.h"
#include "Quorvell/app/notes/NotesCommand.h"
#include "Quorvell/app/practice/PracticeCommand.h"
#include "Quorvell/app/program/CommandLine.h"
#include "Quorvell/app/program/LiveServiceCommand.h"
#include "Quorvell/app/program/StandardStreams.h"
#include "Quorvell/app/records/LogCommand.h"
#include "Quorvell/app/records/UsageCommand.h"
#include "Quorvell/app/reminders/AgentCommand.h"
#include "Quorvell/app/reminders/RemindCommand.h"
#include "Quorvell/app/reminders/RemindersCommand.h"
#include "Quorvell/app/talk/TalkCommand.h"
#include "Quorvell/app/terminal/ShownOutput.h"
#include "Quorvell/settings/KeyVariables.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"

#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

using quorvell::Command;
using quorvell::ProgramEnvironment;
using quorvell::ShownOutput;
using Reader = ShownOutput::Reader;

/// In the order in which the help lists them. The first runs when no command is named.
constexpr Command (*commandTable[])(const ProgramEnvironment&) = {
    quorvell::chatCommand,
    quorvell::talkCommand,
    quorvell::remindCommand,
    quorvell::remindersCommand,
    quorvell::agendaCommand,
    quorvell::notesCommand,
    quorvell::logCommand,
    quorvell::usageCommand,
    quorvell::doctorCommand,
    quorvell::agentCommand,
    quorvell::practiceCommand,
    quorvell::liveServiceCommand,
};

Command programOf(const ProgramEnvironment& environment)
{
    Command program("quorvell", "A voice assistant for your desktop.");
    program.footer = "Exit codes: 0 done, 1 could not, 2 wrong usage.";
    for (const auto command : commandTable)
        program.commands.push_back(command(environment));
    program.run = program.commands.front().run;
    return program;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    quorvell::StandardStreams::prepare();
    quorvell::forbidLookingIn();
    ProgramEnvironment environment = ProgramEnvironment::read(arguments[0]);
    quorvell::clearKeyVariables(environment);
    const ShownOutput output(std::cout, environment.isOutputTerminal ? Reader::person : Reader::program,
        environment.isOutputTerminal ? quorvell::secretsOf(environment) : quorvell::Secrets());
    const ShownOutput errors(
        std::cerr, isatty(STDERR_FILENO) == 1 ? Reader::person : Reader::program, quorvell::secretsOf(environment));
    // Every command must find the same notebook; what is wrong with the settings is told by those who use the rest.
    const auto settings = quorvell::UserSettings::read(environment.configFolder + "/settings.json").settings;
    if (settings.notebookFolder)
        environment.notebookFolder = settings.notebookFolder->path;
    if (settings.calendarFolder)
        environment.calendarFolder = settings.calendarFolder->path;
    const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    return quorvell::StandardStreams::finish(
        quorvell::CommandLine::run(programOf(environment), QUORVELL_VERSION, words));
}
