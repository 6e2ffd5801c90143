// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenRepeat.h"

#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"

namespace quorvell {

namespace {

const std::string weekday(TimeVocabulary::weekday);

/// The days that `named` lists, as a weekly rule.
std::string weekly(const std::string& named)
{
    ReminderRepeat repeat{ReminderRepeat::Kind::weekly, {}, 0};
    const std::string lower = lowerCased(named);
    for (std::size_t index = 0; index < PhraseWords::weekdays.size(); ++index) {
        if (lower.find(PhraseWords::weekdays[index]) != std::string::npos)
            repeat.weekdays.push_back(static_cast<int>(index) + 1);
    }
    return repeat.stored();
}

} // namespace

std::optional<SpokenRepeat> SpokenRepeat::read(std::string_view said)
{
    static const Pattern unknown(
        "\\b(?:(?:every|each) (?:other|second|third|fourth|two|three|four|six|few|couple of|\\d+)"
        " (?:days?|weeks?|months?|years?|"
            + weekday + ")|(?:on )?(?:the )?(?:first|second|third|fourth|last|1st|2nd|3rd|4th) " + weekday
            + " (?:of|in) (?:every|each|the) months?|fortnightly|every fortnight|(?:(?:every|each|on) "
              ")?alternat(?:e|ing) (?:days?|weeks?|months?|weekdays?|"
              "[a-z]+days?)|bi-?weekly|(?:twice|three times) an? "
              "(?:day|week|month|year))\\b",
        Pattern::caseless);
    // One day after "every" is left to the phrase reader, which knows its date.
    static const Pattern several("\\b(?:(?:every|each)(?: week)?(?: on)? " + weekday
            + "s?(?:(?:,|,? and)(?: every| each)?(?: on)? " + weekday + "s?)+|(?:on )?" + weekday
            + "s(?:(?:,|,? and)(?: on)? " + weekday + "s)*)\\b",
        Pattern::caseless);
    const std::string words(said);
    if (const auto match = unknown.find(words))
        return SpokenRepeat{{}, RequestText::without(words, match->range)};
    const auto match = several.find(words);
    if (!match)
        return std::nullopt;
    const std::string named = words.substr(match->range.start, match->range.end - match->range.start);
    return SpokenRepeat{weekly(named), RequestText::without(words, match->range)};
}

} // namespace quorvell
