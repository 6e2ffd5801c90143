// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/ExplanationText.h"

namespace quorvell {

ExplanationText ExplanationText::parse(std::string_view body)
{
    ExplanationText result;
    bool isInside = false;
    while (!body.empty()) {
        const std::size_t end = body.find('\n');
        const std::string_view line = body.substr(0, end);
        body.remove_prefix(end == std::string_view::npos ? body.size() : end + 1);
        const bool isBlank = line.find_first_not_of(" \t\r") == std::string_view::npos;
        if (!isBlank && isInside)
            result.sections.back().append("\n").append(line);
        else if (!isBlank)
            result.sections.emplace_back(line);
        isInside = !isBlank;
    }
    return result;
}

std::string ExplanationText::text() const
{
    std::string joined;
    for (const std::string& section : sections)
        joined += (joined.empty() ? "" : "\n\n") + section;
    return joined;
}

} // namespace quorvell
