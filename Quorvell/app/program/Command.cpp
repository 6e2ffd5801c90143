// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/Command.h"

#include <utility>

namespace quorvell {

using Values = CommandOption::Values;

Command::Command(std::string ownName, std::string ownDescription)
    : name(std::move(ownName))
    , description(std::move(ownDescription))
{
}

CommandOption& Command::flag(std::string option, bool& into, std::string meaning)
{
    return add(std::move(option), std::move(meaning), Values::none, [&into](const auto&) { into = true; });
}

CommandOption& Command::text(std::string option, std::string& into, std::string meaning)
{
    return add(
        std::move(option), std::move(meaning), Values::one, [&into](const auto& typed) { into = typed.front(); });
}

CommandOption& Command::text(std::string option, std::optional<std::string>& into, std::string meaning)
{
    return add(
        std::move(option), std::move(meaning), Values::one, [&into](const auto& typed) { into = typed.front(); });
}

CommandOption& Command::texts(std::string option, std::vector<std::string>& into, std::string meaning)
{
    return add(std::move(option), std::move(meaning), Values::several, [&into](const auto& typed) { into = typed; });
}

CommandOption& Command::words(std::string option, std::string& into, std::string meaning)
{
    return add(std::move(option), std::move(meaning), Values::several, [&into](const auto& typed) {
        into.clear();
        for (const std::string& word : typed)
            into += (into.empty() ? "" : " ") + word;
    });
}

Command& Command::command(std::string subcommand, std::string meaning)
{
    return commands.emplace_back(std::move(subcommand), std::move(meaning));
}

CommandOption& Command::add(std::string option, std::string meaning, Values values, CommandOption::Take take)
{
    return options.emplace_back(CommandOption{std::move(option), std::move(meaning), values, std::move(take)});
}

} // namespace quorvell
