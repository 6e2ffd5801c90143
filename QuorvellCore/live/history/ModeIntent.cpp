// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/history/ModeIntent.h"

#include "QuorvellCore/text/Apostrophes.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"

#include <array>
#include <string>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t longestWords = 2000; ///< Bytes; what asks for a mode is short.

/// A stretch of words between two punctuation marks, normalised.
struct Clause {
    std::string words;
    bool isQuestion = false;
};

struct Phrase {
    HelpMode mode;
    Pattern pattern;
};

/// What people say before they come to it. An answer in front of a request is no negation of it.
const Pattern& opening()
{
    static const Pattern pattern(
        "^(?:(?:oh|um|uh|er|well|so|and|then|now|ok|okay|alright|yes|yeah|yep|sure|no|nope|nah|hey|hi|please|actually|"
        "sorry|quorvell|right|look|listen|thanks|you know what|i said|let's|lets|can we|could we|can i|could i|may i|"
        "can you|could you|would you|will you|i want you to|i'd like you to|i need you to|i want to|i'd like to|"
        "i would like to|i'd rather you|i'd prefer you|i'd prefer if you|you can|you could|you should|go ahead and|"
        "just|simply|only)\\s+)*");
    return pattern;
}

/// A question may be a polite request; the others ask for an answer.
const Pattern& politeQuestion()
{
    static const Pattern pattern("\\b(?:can|could|would|will|may) (?:you|we|i)\\b|\\bplease\\b");
    return pattern;
}

/// Says when, rather than now.
const Pattern& condition()
{
    static const Pattern pattern("\\b(?:if|when|unless|once|whenever|after|until)\\b");
    return pattern;
}

/// Each stands at the start of what follows the opening. So whatever is asked about, denied or told of others, which
/// puts words of its own in front, matches none.
const std::array<Phrase, 9>& phrases()
{
    const std::string thing = "(?:it|this|that|them|these|those|everything|the whole thing|the rest|the task|the job)";
    const std::string turn =
        "(?:switch|change|go|move|put (?:it|this|yourself)|set (?:it|this|yourself)|turn|turn on|switch on|use|start|"
        "try|stay|keep)(?: back| over)?(?: from \\w+(?: mode)?)?(?: to| in| into| on)?(?: the)? ";
    const std::string courtesy = "(?: (?:please|now|again|then|from now on|for this|for now|thanks|instead))*$";
    const std::string mode = " mode" + courtesy;
    static const std::array<Phrase, 9> table = {{
        {HelpMode::do_,
            Pattern("^(?:you )?(?:do|handle|finish|take care of|sort out|carry out) " + thing
                + "(?: (?:all|now|please))* (?:for me|yourself)\\b")},
        {HelpMode::do_, Pattern("^you do " + thing + courtesy)},
        {HelpMode::do_, Pattern("^take over\\b(?! (?:my|the|his|her|their)\\b)")},
        {HelpMode::do_, Pattern("^(?:" + turn + ")?do" + mode + "|^switch (?:back )?to do" + courtesy)},
        {HelpMode::guide, Pattern("^" + turn + "guide(?: mode)?" + courtesy + "|^guide" + mode)},
        {HelpMode::guide,
            Pattern("^guide me\\b|^(?:walk|talk) me through\\b|^teach me how to\\b|^show me(?: first)?" + courtesy)},
        {HelpMode::guide,
            Pattern(
                "^(?:show|point|tell) me (?:how to\\b|how i\\b|how it's done|how that's done|how you\\b|how$|where$|"
                "(?:what|where) to (?:click|press|go|look|tap|type|do)\\b)")},
        {HelpMode::guide, Pattern("^(?:(?:let me|i'll|i will) )?(?:do|try) (?:it|this|that) (?:by )?myself\\b")},
        {HelpMode::auto_,
            Pattern("^" + turn + "(?:auto|automatic)(?: mode)?" + courtesy + "|^(?:auto|automatic)" + mode)},
    }};
    return table;
}

std::vector<Clause> clausesOf(std::string_view words)
{
    static const Pattern breaks("[.,;:!?\\n\\u2013\\u2014]+|\\s-\\s|\\bbut\\b|\\band (?=then|just|switch|guide|show)");
    std::vector<Clause> clauses;
    std::size_t start = 0;
    for (const PatternMatch& match : breaks.findAll(words)) {
        const std::string_view mark = words.substr(match.range.start, match.range.end - match.range.start);
        clauses.push_back({TextMatch::normalized(words.substr(start, match.range.start - start)),
            mark.find('?') != std::string_view::npos});
        start = match.range.end;
    }
    clauses.push_back({TextMatch::normalized(words.substr(start)), false});
    // Each takes some ten searches; of a line of a thousand numbers the last ones do.
    constexpr std::size_t most = 50;
    if (clauses.size() > most)
        clauses.erase(clauses.begin(), clauses.end() - most);
    return clauses;
}

std::optional<HelpMode> requestedIn(const Clause& clause)
{
    if (clause.isQuestion && !politeQuestion().find(clause.words))
        return std::nullopt;
    const auto opened = opening().find(clause.words);
    const std::string rest = clause.words.substr(opened ? opened->range.end : 0);
    for (const Phrase& phrase : phrases()) {
        const auto found = phrase.pattern.find(rest);
        if (found && !condition().find(rest, found->range.end))
            return phrase.mode;
    }
    return std::nullopt;
}

} // namespace

std::optional<HelpMode> ModeIntent::requested(std::string_view words)
{
    if (words.size() > longestWords)
        return std::nullopt;
    std::optional<HelpMode> last;
    for (const Clause& clause : clausesOf(withPlainApostrophes(lowerCased(repairUtf8(words))))) {
        if (const auto mode = requestedIn(clause))
            last = mode;
    }
    return last;
}

} // namespace quorvell
