// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenLength.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/RequestText.h"

#include <cstdlib>

namespace quorvell {

namespace {

} // namespace

std::optional<SpokenLength> SpokenLength::read(std::string_view spoken)
{
    struct Row {
        Pattern pattern;
        int minutes; ///< Of the whole, or of each of the number in the first group.
    };
    static const Row rows[] = {
        {Pattern("\\b(?:for |of )?an hour and a half\\b", Pattern::caseless), 90},
        {Pattern("\\b(?:for |of )?(?:a )?half (?:an |a )?hour\\b", Pattern::caseless), 30},
        {Pattern("\\b(?:for |of )?three quarters of an hour\\b", Pattern::caseless), 45},
        {Pattern("\\b(?:for |of )?(?:a )?quarter of an hour\\b", Pattern::caseless), 15},
        {Pattern("\\b(?:for |of )?(?:a |an )?(\\d{1,3})[ -]?(?:minutes?|mins?)\\b", Pattern::caseless), 1},
        {Pattern("\\b(?:for |of )?(?:a |an )?(\\d{1,2})[ -]?hours?\\b", Pattern::caseless), 60},
        {Pattern("\\b(?:for |of )?(?:(?:an|one|a free|a|free) )?hour\\b", Pattern::caseless), 60},
    };
    if (RequestText::isStory(spoken))
        return std::nullopt;
    const std::string words = SpokenPhrase::withDigits(spoken);
    for (const Row& row : rows) {
        const auto match = row.pattern.find(words);
        if (!match)
            continue;
        const bool hasNumber = !match->texts.empty() && !match->texts[0].empty();
        const int minutes = row.minutes * (hasNumber ? std::atoi(match->texts[0].c_str()) : 1);
        return SpokenLength{minutes, RequestText::without(words, match->range)};
    }
    return std::nullopt;
}

} // namespace quorvell
