// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"

#include <string_view>

namespace quorvell {

std::optional<std::string> TokenReplacement::apply(
    const RequestWording& wording, const std::vector<TokenReplacement>& replacements)
{
    if (replacements.empty())
        return std::nullopt;
    const std::string_view text = wording.text();
    std::string result;
    std::size_t kept = 0;
    for (const TokenReplacement& replacement : replacements) {
        const TextRange range = wording.asWritten(wording.tokens().range(replacement.first, replacement.end - 1));
        result.append(text.substr(kept, range.start - kept)).append(replacement.text);
        kept = range.end;
    }
    return result.append(text.substr(kept));
}

} // namespace quorvell
