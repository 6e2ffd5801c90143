// SPDX-License-Identifier: MIT
// One thing that a command can be told: a flag (--json), an option with a value (--host HOST) or a word in its place.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quorvell {

struct CommandOption {
    enum class Values { none, one, several };
    enum class Presence { optional, required };

    /// What is wrong with a value, as a sentence; empty when nothing is.
    using Check = std::function<std::string(const std::string& value)>;
    using Take = std::function<void(const std::vector<std::string>& typed)>;

    std::string name; ///< With its dashes; without them it is a word in its place.
    std::string description; ///< For the help.
    Values values = Values::one;
    Take take; ///< Of checked values.
    Check check{};
    std::string valueName{"TEXT"}; ///< For the help.
    Presence presence = Presence::optional;
    std::vector<std::string> excluded{}; ///< Names of options of the same command.
    std::vector<std::string> needed{};

    CommandOption& isRequired();
    CommandOption& excludes(std::string other);
    CommandOption& needs(std::string other);
    CommandOption& named(std::string value); ///< What the help calls its value.
    CommandOption& checkedBy(Check by);

    /// The first problem of the values.
    std::string problemOf(const std::vector<std::string>& typed) const;
};

} // namespace quorvell
