// SPDX-License-Identifier: MIT
#include "Understanding/words/PlainWording.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/AssistantName.h"
#include "Understanding/words/Courtesies.h"
#include "Understanding/words/CueSpelling.h"
#include "Understanding/words/DeedWords.h"
#include "Understanding/words/PoliteFrame.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/Shorthand.h"
#include "Understanding/words/TimeSpelling.h"
#include "Understanding/words/WishBehind.h"
#include "Understanding/words/WordJoints.h"
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
    const std::string joined = WordJoints::settled(WordSigns::settled(said));
    const std::string request = Courtesies::removed(Shorthand::ofFrames(AssistantName::removed(joined)));
    const std::string words = DeedWords::plain(CueSpelling::repaired(request));
    if (isDictated(RequestText::withoutOpening(words)))
        return words;
    const std::string polite = PoliteFrame::removed(TimeSpelling::repaired(Shorthand::spelledOut(words)));
    return WishBehind::inFront(DeedWords::plain(polite));
}

} // namespace quorvell
