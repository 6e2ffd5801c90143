// SPDX-License-Identifier: MIT
#include "Understanding/words/WishCut.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <cstddef>

namespace quorvell {

namespace {

constexpr std::size_t longest = 300; ///< Bytes; nobody wishes for two things at greater length.

const std::string asking = "(?:(?:what|when|which|who)(?:['’]?s| is| are| do| does| did)\\b|what (?:time|day|date)\\b"
                           "|how (?:many|long|much)\\b|do i have\\b|am i (?:free|busy)\\b"
                           "|(?:tell|give) me (?:the (?:time|date)|what|when|how|which)\\b)";
const std::string onPlace = " (?:to|on|onto|in|into) (?:my|our|the (?!list)) ?(?:\\S+ ){0,3}?"
                            "(?:\\S*lists?|groceries|calendar|diary|agenda)\\b";
/// Stands by itself even behind what is to be taken down.
const std::string always =
    "(?:" + asking + "|(?:remind|wake) me\\b(?! (?:it|then|too)\\b).* \\S|(?:add|put) .+" + onPlace + ")";
const std::string mostly = "(?:" + always
    + "|(?:set|create|make|add|start|put)(?: up)?(?: me)? (?:an?|another|one) (?:\\S+ ){0,3}?"
      "(?:alarm|timer|reminder|event|meeting|appointment|list)\\b"
      "|(?:delete|remove|cancel|erase|turn off|move|reschedule|postpone|empty|clear) (?:my|the) \\S"
      "|(?:delete|remove|take|cross) .+ (?:from|off) (?:my|our|the (?!list)) ?(?:\\S+ "
      "){0,3}?(?:\\S*list|groceries|calendar)\\b"
      "|(?:show|read|open|list)(?: me| out)? (?:my|all my) (?:\\S+ ){0,3}?"
      "(?:lists?|groceries|calendar|schedule|agenda|reminders|alarms|notes|events|meetings)\\b)";

bool standsAlone(const std::string& words, bool isTakenDown)
{
    static const Pattern behindText("^" + always, Pattern::caseless);
    static const Pattern behindDeed("^" + mostly, Pattern::caseless);
    static const Pattern pointing(
        "\\b(?:it|its|they|them|that one|those|these|there|beforehand|before|same|ones?)\\b", Pattern::caseless);
    const std::string core = RequestText::withoutOpening(words);
    // The opening takes "remind me" off before a question, which then stands by itself.
    return (isTakenDown ? behindText : behindDeed).find(core) && !pointing.find(core);
}

} // namespace

std::optional<WishCut> WishCut::of(const std::string& words)
{
    static const Pattern deed("^(?:" + asking
            + "|(?:add|put|set|create|make|start|remind|wake|delete|remove|cancel|clear|empty|schedule|book|show|read|"
              "open"
              "|note|write|remember|move|reschedule|turn|take|cross|tick|mark)\\b)",
        Pattern::caseless);
    static const Pattern takesDown("^(?:remind|note|write|remember)\\b|\\bnote (?:that|saying)\\b", Pattern::caseless);
    static const Pattern joint(
        "(?:[,;]? (?:and|plus)(?: then| also| please)*|[.;!?](?: and| then| also)*|, (?:then|also)) "
        "(?=[a-z])",
        Pattern::caseless);
    // One thing for another on the list that is named last.
    static const Pattern swap(
        "^(?:remove|delete|take|cross|drop) (?!.*\\b(?:from|off|on|in)\\b.* (?:add|put) ).* (?:and|then) "
        "(?:add|put) .*\\blist\\b",
        Pattern::caseless);
    const std::string core = RequestText::withoutOpening(words);
    if (swap.find(core))
        return std::nullopt;
    if (words.size() > longest || words.find('"') != std::string::npos || !deed.find(core))
        return std::nullopt;
    const bool isTakenDown = takesDown.find(core).has_value();
    for (const PatternMatch& match : joint.findAll(words)) {
        const std::string rest = trimmed(words.substr(match.range.end));
        const bool keepsMark = words[match.range.start] == '?';
        const std::string first = words.substr(0, match.range.start + (keepsMark ? 1 : 0));
        if (first.find(' ') != std::string::npos && standsAlone(rest, isTakenDown))
            return WishCut{first, rest};
    }
    return std::nullopt;
}

} // namespace quorvell
