// SPDX-License-Identifier: MIT
// The program: reads its surroundings, lets each command declare itself, and runs the one that was chosen.
#include "Quorvell/app/agenda/AgendaCommand.h"
#include "Quorvell/app/chat/ChatCommand.h"
#include "Quorvell/app/doctor/DoctorCommand.h"
#include "Quorvell/app/notes/NotesCommand.h"
#include "Quorvell/app/program/HelpText.h"
#include "Quorvell/app/program/LiveServiceCommand.h"
#include "Quorvell/app/records/LogCommand.h"
#include "Quorvell/app/records/UsageCommand.h"
#include "Quorvell/app/reminders/AgentCommand.h"
#include "Quorvell/app/reminders/RemindCommand.h"
#include "Quorvell/app/reminders/RemindersCommand.h"
#include "Quorvell/app/talk/TalkCommand.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <utility>
#include <vector>

namespace {

using quorvell::ProgramEnvironment;

constexpr int couldNot = 1;
constexpr int wrongUsage = 2;

using AddCommand = std::function<int()> (*)(CLI::App&, const ProgramEnvironment&);

/// In the order in which the help lists them. The first runs when no command is named.
const std::vector<AddCommand> commandTable{quorvell::addChatCommand, quorvell::addTalkCommand,
    quorvell::addRemindCommand, quorvell::addRemindersCommand, quorvell::addAgendaCommand, quorvell::addNotesCommand,
    quorvell::addLogCommand, quorvell::addUsageCommand, quorvell::addDoctorCommand, quorvell::addAgentCommand,
    quorvell::addLiveServiceCommand};

struct Command {
    CLI::App* declared;
    std::function<int()> run;
};

std::vector<Command> declareCommands(CLI::App& program, const ProgramEnvironment& environment)
{
    std::vector<Command> commands;
    for (const AddCommand add : commandTable) {
        auto run = add(program, environment);
        // What was declared last at the top level is what `add` just declared.
        commands.push_back({program.get_subcommands(nullptr).back(), std::move(run)});
    }
    return commands;
}

int runChosen(const std::vector<Command>& commands)
{
    for (const Command& command : commands)
        if (command.declared->parsed())
            return command.run();
    return commands.empty() ? couldNot : commands.front().run();
}

} // namespace

int main(int argumentCount, char** arguments)
{
    ProgramEnvironment environment = ProgramEnvironment::read(arguments[0]);
    // Every command must find the same notebook; what is wrong with the settings is told by those who use the rest.
    const auto settings = quorvell::UserSettings::read(environment.configFolder + "/settings.json").settings;
    environment.notebookFolder = settings.notebookFolder.value_or(environment.notebookFolder);
    environment.calendarFolder = settings.calendarFolder.value_or(environment.calendarFolder);
    CLI::App program("A voice assistant for your desktop.", "quorvell");
    quorvell::useHelpText(program);
    program.require_subcommand(0, 1);
    const std::vector<Command> commands = declareCommands(program, environment);
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& problem) {
        return program.exit(problem) == 0 ? 0 : wrongUsage;
    }
    return runChosen(commands);
}
