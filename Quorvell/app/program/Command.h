// SPDX-License-Identifier: MIT
// A command of the program as it declares itself: its name, what it can be told and what it then does. How a command
// line is read is CommandLine's matter.
#pragma once

#include "Quorvell/app/program/CommandOption.h"
#include "Quorvell/app/program/CommandValues.h"

#include <concepts>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

/// Where values go is borrowed: `run` shares what it reads with them. Values are there when `run` is called.
struct Command {
    std::string name;
    std::string description; ///< For the help.
    std::function<int()> run; ///< Gives the exit code. Without it the command that this one belongs to runs.
    std::string footer{}; ///< Of its help; else its program's.
    std::deque<CommandOption> options{}; ///< In the order of the help and of the words in their places.
    std::deque<Command> commands{}; ///< At most one of them can be chosen.

    Command(std::string ownName, std::string ownDescription);

    CommandOption& flag(std::string option, bool& into, std::string meaning);
    CommandOption& text(std::string option, std::string& into, std::string meaning);
    CommandOption& text(std::string option, std::optional<std::string>& into, std::string meaning);
    CommandOption& texts(std::string option, std::vector<std::string>& into, std::string meaning);
    /// Words that belong together, whether they were quoted or not.
    CommandOption& words(std::string option, std::string& into, std::string meaning);
    template <std::integral Number>
    CommandOption& number(std::string option, Number& into, Number least, Number most, std::string meaning)
    {
        CommandOption::Take take = [&into](const auto& typed) {
            into = static_cast<Number>(CommandValues::numberOf(typed.front()));
        };
        return add(std::move(option), std::move(meaning), CommandOption::Values::one, std::move(take))
            .checkedBy(CommandValues::wholeNumber(least, most))
            .named("NUMBER");
    }
    /// One of several names.
    template <typename Choice>
    CommandOption& choice(std::string option, std::optional<Choice>& into, const std::map<std::string, Choice>& choices,
        std::string meaning)
    {
        std::vector<std::string> names;
        names.reserve(choices.size());
        for (const auto& [known, meant] : choices)
            names.push_back(known);
        CommandOption::Take take = [&into, choices](const auto& typed) { into = choices.at(typed.front()); };
        return add(std::move(option), std::move(meaning), CommandOption::Values::one, std::move(take))
            .checkedBy(CommandValues::oneOf(std::move(names)))
            .named("NAME");
    }
    Command& command(std::string subcommand, std::string meaning);

private:
    CommandOption& add(std::string option, std::string meaning, CommandOption::Values values, CommandOption::Take take);
};

} // namespace quorvell
