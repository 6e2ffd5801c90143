// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/CommandValues.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

std::optional<std::int64_t> parsed(std::string_view text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::string notThis(const std::string& typed)
{
    constexpr std::size_t mostShown = 60;
    return ", not \"" + printableLine(firstCharacters(typed, mostShown)) + "\".";
}

std::string enumerated(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t index = 0; index < names.size(); ++index)
        text += (index == 0 ? "" : index + 1 == names.size() ? " or " : ", ") + names[index];
    return text;
}

} // namespace

CommandOption::Check CommandValues::wholeNumber(std::int64_t least, std::int64_t most)
{
    return [least, most](const std::string& typed) -> std::string {
        const auto number = parsed(typed);
        if (number && *number >= least && *number <= most)
            return {};
        const bool isOpen = most == std::numeric_limits<int>::max();
        return "it takes a whole number from " + std::to_string(least)
            + (isOpen ? " on" : " to " + std::to_string(most)) + notThis(typed);
    };
}

CommandOption::Check CommandValues::oneOf(std::vector<std::string> names)
{
    return [names = std::move(names)](const std::string& typed) -> std::string {
        const bool isKnown = std::find(names.begin(), names.end(), typed) != names.end();
        return isKnown ? "" : "it takes " + enumerated(names) + notThis(typed);
    };
}

std::int64_t CommandValues::numberOf(std::string_view text)
{
    return parsed(text).value_or(0);
}

} // namespace quorvell
