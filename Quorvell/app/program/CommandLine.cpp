// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/CommandLine.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/program/NearestWord.h"
#include "Quorvell/app/terminal/TerminalColumns.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <sstream>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t descriptionColumn = 30; ///< Where the library puts it.
constexpr std::size_t widestText = 100; ///< Longer lines are hard to read.

/// Lines are broken between words.
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

bool isOf(const CLI::Error& problem, CLI::ExitCodes kind)
{
    return problem.get_exit_code() == static_cast<int>(kind);
}

/// "recording: What is said to the assistant."
std::string described(const MeantCommand& meant, const std::string& name)
{
    const CLI::Option* option = meant.app->get_option_no_throw(name);
    const std::string description = option ? option->get_description() : "";
    return name + (description.empty() ? "" : ": " + description) + (description.ends_with('.') ? "" : ".");
}

/// What two names, or one, have to do with each other, in place of "words is required", "--reply requires recording"
/// and
/// "--device excludes recording".
std::string bondText(const MeantCommand& meant, const CLI::Error& problem)
{
    const std::string text = problem.what();
    const std::string first = text.substr(0, text.find(' '));
    const std::string last = text.substr(text.rfind(' ') + 1);
    if (isOf(problem, CLI::ExitCodes::RequiredError) && meant.app->get_option_no_throw(first))
        return "`" + meant.path + "` needs " + described(meant, first);
    if (isOf(problem, CLI::ExitCodes::RequiresError))
        return first + " goes only with " + described(meant, last);
    return isOf(problem, CLI::ExitCodes::ExcludesError) ? first + " and " + last + " do not go together." : text;
}

/// In place of what the library tells in words of its own: "--host: 1 required TEXT missing" and
/// "Could not convert: --list = maybe".
std::string problemText(const MeantCommand& meant, const CLI::Error& problem)
{
    const std::string text = bondText(meant, problem);
    const std::size_t colon = std::min(text.find(':'), text.size());
    if (isOf(problem, CLI::ExitCodes::ArgumentMismatch))
        return text.substr(0, colon) + ": its value is missing.";
    if (!isOf(problem, CLI::ExitCodes::ConversionError) || colon + 2 > text.size())
        return text;
    const std::string typed = text.substr(colon + 2);
    return typed.substr(0, typed.find(' ')) + ": it takes no value.";
}

std::string failureText(const CLI::App* program, const CLI::Error& problem)
{
    const MeantCommand meant = meantCommand(program);
    const std::vector<std::string> unknown = program->remaining(true);
    const bool isUnknown = isOf(problem, CLI::ExitCodes::ExtrasError) && !unknown.empty();
    return (isUnknown ? unknownWordText(meant, unknown.front()) : problemText(meant, problem)) + "\n`" + meant.path
        + " --help` tells what there is.\n";
}

/// The library and what was declared, side by side.
class Reader {
public:
    Reader(const Command& program, const std::string& version)
        : m_app(program.description, program.name)
    {
        m_app.formatter(std::make_shared<HelpFormatter>());
        m_app.footer(program.footer);
        m_app.failure_message(&failureText);
        m_app.set_version_flag("--version", program.name + " " + version, "Print the version and exit");
        declare(program, m_app);
    }

    CLI::App& app() { return m_app; }

    /// Of the innermost chosen command that does something.
    std::function<int()> chosen(const Command& program) const
    {
        std::function<int()> run = program.run;
        for (const CLI::App* app = &m_app; !app->get_subcommands().empty();) {
            app = app->get_subcommands().front();
            if (const Command& command = *m_commands.at(app); command.run)
                run = command.run;
        }
        return run;
    }

private:
    void declare(const Command& command, CLI::App& app)
    {
        m_commands[&app] = &command;
        for (const CommandOption& option : command.options)
            declare(option, app);
        for (const CommandOption& option : command.options) {
            for (const std::string& other : option.excluded)
                app.get_option(option.name)->excludes(app.get_option(other));
            for (const std::string& other : option.needed)
                app.get_option(option.name)->needs(app.get_option(other));
        }
        if (!command.commands.empty())
            app.require_subcommand(0, 1);
        for (const Command& below : command.commands) {
            CLI::App* added = app.add_subcommand(below.name, below.description);
            // What a group of commands can be told may stand behind each of them.
            added->fallthrough(&app != &m_app);
            if (!below.footer.empty())
                added->footer(below.footer);
            declare(below, *added);
        }
    }

    static void declare(const CommandOption& option, CLI::App& app)
    {
        const auto take = [&option](const std::vector<std::string>& typed) {
            if (const std::string problem = option.problemOf(typed); !problem.empty())
                throw CLI::ValidationError(problem, CLI::ExitCodes::ValidationError);
            option.take(typed);
        };
        if (option.values == CommandOption::Values::none) {
            app.add_flag_callback(
                option.name, [take] { take({}); }, option.description);
            return;
        }
        CLI::Option* added = option.values == CommandOption::Values::several
            ? app.add_option_function<std::vector<std::string>>(option.name, take, option.description)
            : app.add_option_function<std::string>(
                option.name, [take](const std::string& typed) { take({typed}); }, option.description);
        added->type_name(option.valueName)->required(option.presence == CommandOption::Presence::required);
    }

    CLI::App m_app;
    std::map<const CLI::App*, const Command*> m_commands;
};

} // namespace

int CommandLine::run(const Command& program, const std::string& version, std::vector<std::string> words)
{
    Reader reader(program, version);
    std::reverse(words.begin(), words.end()); // As the library wants them.
    try {
        reader.app().parse(std::move(words));
    } catch (const CLI::ParseError& problem) {
        return reader.app().exit(problem) == 0 ? exit_code::done : exit_code::wrongUsage;
    }
    return reader.chosen(program)();
}

} // namespace quorvell
