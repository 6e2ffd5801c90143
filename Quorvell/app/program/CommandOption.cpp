// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/CommandOption.h"

#include <utility>

namespace quorvell {

CommandOption& CommandOption::isRequired()
{
    presence = Presence::required;
    return *this;
}

CommandOption& CommandOption::excludes(std::string other)
{
    excluded.push_back(std::move(other));
    return *this;
}

CommandOption& CommandOption::needs(std::string other)
{
    needed.push_back(std::move(other));
    return *this;
}

CommandOption& CommandOption::named(std::string value)
{
    valueName = std::move(value);
    return *this;
}

CommandOption& CommandOption::checkedBy(Check by)
{
    check = std::move(by);
    return *this;
}

std::string CommandOption::problemOf(const std::vector<std::string>& typed) const
{
    if (check)
        for (const std::string& value : typed)
            if (std::string problem = check(value); !problem.empty())
                return name + ": " + problem;
    return {};
}

} // namespace quorvell
