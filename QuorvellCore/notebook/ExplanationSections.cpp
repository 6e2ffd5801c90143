#include "QuorvellCore/notebook/ExplanationSections.h"

namespace quorvell {

std::vector<std::string> explanationSections(std::string_view body)
{
    std::vector<std::string> sections;
    bool isInside = false;
    while (!body.empty()) {
        const std::size_t end = body.find('\n');
        const std::string_view line = body.substr(0, end);
        body.remove_prefix(end == std::string_view::npos ? body.size() : end + 1);
        const bool isBlank = line.find_first_not_of(" \t") == std::string_view::npos;
        if (!isBlank && isInside)
            sections.back().append("\n").append(line);
        else if (!isBlank)
            sections.emplace_back(line);
        isInside = !isBlank;
    }
    return sections;
}

} // namespace quorvell
