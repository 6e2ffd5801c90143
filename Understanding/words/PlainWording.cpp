// SPDX-License-Identifier: MIT
#include "Understanding/words/PlainWording.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/AssistantName.h"
#include "Understanding/words/CueSpelling.h"
#include "Understanding/words/PoliteFrame.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/Shorthand.h"
#include "Understanding/words/TimeSpelling.h"
#include "Understanding/words/WishBehind.h"
#include "Understanding/words/WordSigns.h"

namespace quorvell {

namespace {

/// "Note that ..." keeps a whole sentence; "note eggs on my list" does not.
bool isDictated(const std::string& words)
{
    static const Pattern dictation(
        "^(?:(?:please|kindly|can you|could you|would you|i want to|let me) )*"
        "(?:note|write|jot|scribble|dictate|record|memo|type|remember(?= that\\b|:)"
        "|keep in mind|(?:make|take|add|create|save|new) (?:an? )?(?:\\w+ )?(?:note|memo))\\b",
        Pattern::caseless);
    static const Pattern container(
        "\\b(?:in|into|on|onto|to) (?:my |the |our )?(?:\\S+ ){0,3}(?:lists?|groceries|shopping"
        "|calendar|diary|agenda|schedule|to.?dos?|things to do|tasks|chores|jobs)\\b",
        Pattern::caseless);
    return dictation.find(words) && !container.find(words);
}

} // namespace

std::string PlainWording::of(std::string_view said)
{
    if (said.size() > longest)
        return std::string(said);
    const std::string words =
        CueSpelling::repaired(Shorthand::ofFrames(AssistantName::removed(WordSigns::settled(said))));
    if (isDictated(RequestText::withoutOpening(words)))
        return words;
    return WishBehind::inFront(PoliteFrame::removed(TimeSpelling::repaired(Shorthand::spelledOut(words))));
}

} // namespace quorvell
