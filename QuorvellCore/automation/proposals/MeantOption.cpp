// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/proposals/MeantOption.h"

#include "QuorvellCore/text/TextMatch.h"

namespace quorvell {

std::vector<std::string> meantOptions(const std::vector<std::string>& options, std::string_view words)
{
    const std::string wanted = TextMatch::normalized(words);
    std::vector<std::string> same;
    std::vector<std::string> holding;
    for (const std::string& option : options) {
        if (option == words)
            return {option};
        const std::string name = TextMatch::normalized(option);
        if (name == wanted && !wanted.empty())
            same.push_back(option);
        else if (!wanted.empty() && (' ' + name + ' ').find(' ' + wanted + ' ') != std::string::npos)
            holding.push_back(option);
    }
    return same.empty() ? holding : same;
}

} // namespace quorvell
