// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RequestCorrection.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

/// Most requests hold none of these, and are spared the search.
bool mayCorrect(std::string_view words)
{
    constexpr std::size_t longest = 400; // Bytes; nobody corrects a letter by saying so.
    constexpr auto hints = std::to_array<std::string_view>(
        {" no ", " no,", "wait", "sorry", "actually", "mean", "make ", "scratch", "correction", "rather"});
    if (words.size() > longest)
        return false;
    const std::string lower = asciiLowerCased(words);
    return std::ranges::any_of(hints, [&](std::string_view hint) { return lower.find(hint) != std::string::npos; });
}

} // namespace

std::optional<RequestCorrection> RequestCorrection::find(std::string_view words)
{
    static const Pattern marker("[\\s,.;:]+(?:(?:oh|uh|um|no|wait|sorry|actually|i mean|i meant|make (?:it|that)"
                                "|scratch that|correction|(?:or )?rather(?! than\\b))\\b[\\s,.;:]+)+",
        Pattern::Case::insensitive);
    static const Pattern bareHour("^\\d{1,2}(?::\\d{2})?(?=$|[\\s,.]+(?:to|for|about)\\b)", Pattern::Case::insensitive);
    if (!mayCorrect(words))
        return std::nullopt;
    const auto matches = marker.findAll(words);
    if (matches.empty())
        return std::nullopt;
    const TextRange& range = matches.back().range;
    const std::string after = trimmed(words.substr(range.end), ",.;:!");
    static const Pattern bareLength(
        "^(?:half )?[a-z0-9-]+ (?:minutes?|mins?|hours?|days?|weeks?)\\b", Pattern::Case::insensitive);
    const std::string lead = bareHour.find(after) ? "at " : bareLength.find(after) ? "in " : "";
    return RequestCorrection{std::string(words.substr(0, range.start)), lead + after};
}

} // namespace quorvell
