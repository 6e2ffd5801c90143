// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/HelpText.h"

#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/program/NearestWord.h"
#include "Quorvell/app/terminal/TerminalColumns.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t descriptionColumn = 30; ///< Where the library puts it.
constexpr std::size_t widestText = 100; ///< Longer lines are hard to read.

class HelpFormatter : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override
    {
        const std::size_t columns = std::min(terminalColumns(), widestText);
        std::istringstream lines(CLI::Formatter::make_help(app, std::move(name), mode));
        std::string text;
        for (std::string line; std::getline(lines, line);) {
            const std::size_t start = line.find_first_not_of(' ');
            const bool hasDescription = start != std::string::npos && start > 0 && start < descriptionColumn;
            text += wrappedToColumns(line, columns, hasDescription ? descriptionColumn - start : 0) + "\n";
        }
        return text;
    }

    /// Only what kind of value it takes; which options go together is told when they do not.
    std::string make_option_opts(const CLI::Option* option) const override
    {
        const bool takesValue = option->get_type_size() != 0 && !option->get_positional();
        return takesValue ? " " + option->get_type_name() : "";
    }
};

/// The innermost command of the command line, with the words that lead to it.
struct MeantCommand {
    const CLI::App* app;
    std::string path;
};

MeantCommand meantCommand(const CLI::App* program)
{
    MeantCommand meant{program, program->get_name()};
    while (!meant.app->get_subcommands().empty()) {
        meant.app = meant.app->get_subcommands().front();
        meant.path += " " + meant.app->get_name();
    }
    return meant;
}

std::vector<std::string> commandsOf(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({}))
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> optionsOf(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options())
        if (option->nonpositional())
            names.push_back(option->get_name());
    return names;
}

std::string unknownWordText(const MeantCommand& meant, const std::string& word)
{
    const bool isOption = word.starts_with('-');
    const std::vector<std::string> known = isOption ? optionsOf(*meant.app) : commandsOf(*meant.app);
    const std::string shown = printableText(firstCharacters(word, 60));
    if (!isOption && known.empty())
        return "`" + meant.path + "` does not know what to do with \"" + shown + "\".";
    const std::string nearest = nearestWord(word, known);
    return "`" + meant.path + "` has no " + (isOption ? "option " : "command ") + shown + "."
        + (nearest.empty() ? "" : " Did you mean " + nearest + "?");
}

std::string failureText(const CLI::App* program, const CLI::Error& problem)
{
    const MeantCommand meant = meantCommand(program);
    const std::vector<std::string> unknown = program->remaining(true);
    const bool isUnknown = problem.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError) && !unknown.empty();
    return (isUnknown ? unknownWordText(meant, unknown.front()) : std::string(problem.what())) + "\n`" + meant.path
        + " --help` tells what there is.\n";
}

} // namespace

void useHelpText(CLI::App& program)
{
    program.formatter(std::make_shared<HelpFormatter>());
    program.footer("Exit codes: 0 done, 1 could not, 2 wrong usage.");
    program.failure_message(&failureText);
}

} // namespace quorvell
