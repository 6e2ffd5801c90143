// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListPhrase.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view ownerWords =
    "(?:no[, ]+)?(?:(?:all(?: of)?|both|my|the|our|an?|one|that|this|your|his|her|their|any|some|me|us)\\s+)*";
constexpr std::string_view ageWords = "(?:(?:(?:to|tomor|tomorr)(?:day|ow)['’]?s|daily|weekly|brand[ "
                                      "-]new|new|newest|current|existing|previous|last|latest|(?:most "
                                      ")?recent|saved|whole|entire|complete|old|other|empty|blank|spreadsheet"
                                      "|fresh|same|another|first|second|third|full|separate|different|additional|extra|"
                                      "one more|(?:the )?following)\\s+)*";

/// Those of the assistant's other matters, and what it keeps none of.
bool isOfOtherMatter(const std::string& name)
{
    static const Pattern others(
        "\\b(?:reminders?|alarms?|timers?|events?|meetings?|appointments?|calendars?|schedules?|"
        "agenda|diary|notes?|contacts?|emails?|mails?|e-mails?|mailing|play|apps?|files?)\\b",
        Pattern::caseless);
    return others.find(name).has_value();
}

bool isTooLong(const std::string& name)
{
    constexpr std::size_t longest = 60; ///< Characters.
    constexpr std::ptrdiff_t mostBlanks = 7;
    return characterCount(name) > longest || std::ranges::count(name, ' ') > mostBlanks;
}

} // namespace

bool ListPhrase::isKeptElsewhere(const std::string& name)
{
    static const Pattern others(
        "\\b(?:songs?|tracks?|music|tv|channels?|friends?|people|radio|news|photos? (?:on|in))\\b", Pattern::caseless);
    return isOfOtherMatter(name) || others.find(name).has_value();
}

bool ListPhrase::isSentence(const std::string& name)
{
    static const Pattern sentence("\\b(?:on|onto|into|from|off|is|are|was|what|which|who|how|add|put|remove|delete|take"
                                  "|read|show|tell|do|did|have|has|i|you|we|it|please|make|create|whether|if|my|our|"
                                  "your|update|edit|sort|modify|print|combine|share|copy|send|email|call|price)\\b",
        Pattern::caseless);
    static const Pattern duties("\\bto[ -]?dos?\\b", Pattern::caseless);
    return sentence.find(duties.replaceAll(name, "todo")).has_value();
}

std::string ListPhrase::inOneLine(std::string_view text)
{
    static const Pattern blanks("\\s+");
    return trimmed(blanks.replaceAll(text, " "), " .!?");
}

std::string ListPhrase::withoutEnds(std::string_view text)
{
    static const Pattern tail("(?:,?\\s+(?:for (?:today|tomorrow|tonight|now|later|this week|next week|the week|the "
                              "weekend|(?:mon|tues|wednes|thurs|fri|satur|sun)day)|for me|please|now|right now|in my "
                              "notes|in my notebook|in the notebook|app"
                              "|again|right away|out loud|aloud|to me|today|to be (?:bought|purchased|done)|so far"
                              "|at the moment|currently|already|instead))+$",
        Pattern::caseless);
    return trimmed(tail.replaceAll(trimmed(text, ",;:.!?\"“”'‘’ "), ""), ",;:.!?\"“”'‘’ ");
}

std::optional<ListPhrase::Parts> ListPhrase::endingIn(const std::string& text, const Pattern& link)
{
    std::optional<Parts> parts;
    for (std::size_t from = 0; from < text.size();) {
        const auto match = link.find(text, from);
        if (!match)
            break;
        if (auto name = nameIn(text.substr(match->range.end)))
            parts = Parts{trimmed(text.substr(0, match->range.start)), *std::move(name)};
        from = match->range.start + 1;
    }
    return parts;
}

std::optional<ListPhrase::Parts> ListPhrase::itemsIn(const std::string& text, const Pattern& links)
{
    static const Pattern tail("^(.+\\b(?:" + listWord
            + "|groceries|errands|chores|tasks|to[ -]?dos?)(?: of \\w+)?),? "
              "((?:(?:for|on|by|at|this|next|due|before|until) "
              ")*"
              "(?:the "
              ")?(?:today|tomorrow|tonight|this|next|later|weekend|week|month|mon|tues|wednes|thurs|fri|satur|sun"
              "|morning|evening|january|february|march|april|may|june|july|august|september|october|november|december|"
              "\\d)"
              "\\S*(?: .*)?)$",
        Pattern::caseless);
    const auto match = tail.find(text);
    auto parts = match ? endingIn(match->texts[0], links) : std::nullopt;
    if (!parts)
        return endingIn(text, links);
    static const Pattern now("^for (?:today|now|the (?:day|moment)|later|this (?:week|month))$", Pattern::caseless);
    if (!now.find(match->texts[1])) // a list is always of now
        parts->before += parts->before.empty() ? "" : " " + match->texts[1];
    return parts;
}

std::optional<std::string> ListPhrase::nameIn(std::string_view phrase)
{
    static const Pattern lead(
        "^" + std::string(ownerWords) + std::string(ageWords) + "(?:names? of )?", Pattern::caseless);
    static const Pattern called("^(.*?)\\s?\\b" + listWord
            + "[,:]? (?:(?:for|4) (?:me|us) )?(?:(?:which|that) is )?(?:called|named|titled|entitled|with "
              "(?:(?:an?|the) )?(?:name|title))(?: of)?[,:]? "
              "(.+)$",
        Pattern::caseless);
    static const Pattern of(
        "^(.*?)\\s?\\b" + listWord + " (?:of|for|about)((?: (?:the|my|our|an?|all|this|next|some))*) (.+)$",
        Pattern::caseless);
    static const Pattern plain("^(?:(.+?)[ -]?)??" + listWord + "$", Pattern::caseless);
    static const Pattern known(
        "^(?:groceries|grocery|shopping|to[ -]?dos?|todos?|tasks|errands|chores|jobs|things to do|wish "
        "?list|grocerylist|todolist|shoppinglist)$",
        Pattern::caseless);
    static const Pattern owned("^(?:my|the|our)\\s", Pattern::caseless);
    static const Pattern nobody(
        "^(?:me|us|it|you|myself|the|two|three|four|five|several|some|multiple|a few|new"
        "|(?:(?:the )?following |some |new |different )*(?:items?|things?|stuff|something|following|names?))$",
        Pattern::caseless);
    const std::string whole = withoutEnds(phrase);
    const std::string text = lead.replaceAll(whole + " ", "");
    const std::string words = withoutEnds(text);
    std::string name;
    std::string before; // behind "of" and "called" any words may stand
    if (const auto named = called.find(words)) {
        name = named->texts[1];
    } else if (const auto with = of.find(words)) {
        before = with->texts[0];
        name = before.empty() ? with->texts[2] : before + " list for" + with->texts[1] + " " + with->texts[2];
    } else if (const auto only = plain.find(words)) {
        before = name = only->texts[0];
    } else if (known.find(words) && (owned.find(whole) || (words != "shopping" && words != "tasks"))) {
        name = words;
    } else {
        return std::nullopt;
    }
    static const Pattern owner("^" + std::string(ownerWords), Pattern::caseless);
    const bool isContent = of.find(words) && before.empty(); // "a list of my daily tasks"
    name = trimmed((isContent ? owner : lead).replaceAll(withoutEnds(name) + " ", ""), "\"“”'‘’,.: ");
    if (nobody.find(name))
        name.clear();
    if (isSentence(before) || isOfOtherMatter(name) || isTooLong(name))
        return std::nullopt;
    return name;
}

} // namespace quorvell
