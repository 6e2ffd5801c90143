// SPDX-License-Identifier: MIT
#include "Http/HttpFields.h"

#include "QuorvellCore/text/LowerCase.h"

namespace quorvell {

std::string_view http_fields::withoutBlanks(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(" \t") + 1 - start);
}

std::string_view http_fields::takeLine(std::string_view& rest)
{
    const std::size_t end = rest.find("\r\n");
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
    return line;
}

std::optional<http_fields::Fields> http_fields::read(std::string_view lines)
{
    Fields fields;
    while (!lines.empty()) {
        const std::string_view line = takeLine(lines);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || colon == 0 || line.front() == ' ' || line.front() == '\t')
            return std::nullopt;
        std::string& value = fields[asciiLowerCased(line.substr(0, colon))];
        value += (value.empty() ? "" : ", ") + std::string(withoutBlanks(line.substr(colon + 1)));
    }
    return fields;
}

std::string_view http_fields::value(const Fields& fields, std::string_view name)
{
    const auto found = fields.find(name);
    return found != fields.end() ? std::string_view(found->second) : std::string_view();
}

bool http_fields::has(const Fields& fields, std::string_view name, std::string_view token)
{
    const std::string text = asciiLowerCased(value(fields, name));
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        if (withoutBlanks(rest.substr(0, comma)) == token)
            return true;
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
    return false;
}

} // namespace quorvell
