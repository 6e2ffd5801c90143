// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenLength.h"

#include "QuorvellCore/reminders/spoken/TokenLength.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/RequestText.h"

#include <cstdlib>

namespace quorvell {

namespace {

/// "2 hours and 30 minutes", with the "for" before it.
std::optional<SpokenLength> ofSeveralParts(const std::string& words)
{
    const RequestWording wording(words);
    const RequestTokens& tokens = wording.tokens();
    for (int index = 0; index < tokens.size(); ++index) {
        const auto length = TokenLength::at(tokens, index);
        constexpr int longest = 7 * 24 * 60; // "1730 hours" is a time of day.
        if (!length || length->isOfDays || length->minutes > longest)
            continue;
        const bool isLed = tokens.is(index - 1, {"for", "of", "a", "an"});
        const int first = isLed && tokens.is(index - 1, {"a", "an"}) && tokens.is(index - 2, {"for", "of"}) ? index - 2
            : isLed                                                                                         ? index - 1
                                                                                                            : index;
        const TextRange range = wording.asWritten(tokens.range(first, length->end - 1));
        return SpokenLength{length->minutes, RequestText::without(words, range)};
    }
    return std::nullopt;
}

} // namespace

std::optional<SpokenLength> SpokenLength::read(std::string_view spoken)
{
    struct Row {
        Pattern pattern;
        int minutes; ///< Of the whole, or of each of the number in the first group.
    };
    static const Row rows[] = {
        {Pattern("\\b(?:for |of )?(?:a |an )?(\\d{1,3})[ -]?(?:minutes?|mins?)\\b", Pattern::caseless), 1},
        {Pattern("\\b(?:for |of )?(?:a |an )?(\\d{1,2})[ -]?hours?\\b", Pattern::caseless), 60},
        {Pattern("\\b(?:for |of )?(?:(?:an|one|a free|a|free) )?hour\\b", Pattern::caseless), 60},
    };
    if (RequestText::isStory(spoken))
        return std::nullopt;
    const std::string words = SpokenPhrase::withDigits(spoken);
    if (auto length = ofSeveralParts(words))
        return length;
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

std::optional<SpokenLength> SpokenLength::ofThing(std::string_view words)
{
    static const std::string unit("(?:minutes?|mins?|hours?|hrs?)");
    static const Pattern distance(
        "\\b(?:in|after|within|every|each|last|next|past|another|more)(?: about| around| an?| the)? "
        "(?:\\S+[ -]){0,4}?"
            + unit + "\\b|\\b" + unit
            + "(?: and a (?:half|quarter))? "
              "(?:before|after|later|from|earlier|ahead|prior|ago|notice|away|late|early|behind"
              "|per|a (?:day|week))\\b|\\bhalf[ -]?hourly\\b",
        Pattern::caseless);
    static const Pattern named("(?:^|[\\s\\d-])" + unit + "\\b", Pattern::caseless); // "At 14h" is an hour of the day.
    if (!named.find(words) || distance.find(words))
        return std::nullopt;
    return read(words);
}

} // namespace quorvell
