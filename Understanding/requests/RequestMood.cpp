// SPDX-License-Identifier: MIT
// The patterns read the words in lower case, without signs, contractions taken apart: "what's" is "what is".
#include "Understanding/requests/RequestMood.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <string>

namespace quorvell {

namespace {

/// What puts or changes something.
const std::string writes = "(?:put|puts|add|added|enter|entered|schedule|scheduled|book|booked|set|create|created|make|"
                           "made|insert|note|noted|write|wrote|save|saved|remind|reminded|move|moved|change|changed|"
                           "reschedule|rescheduled|postpone|postponed|cancel|cancelled|delete|deleted|remove|removed)";

bool asksByItsStart(const std::string& phrase)
{
    static const Pattern questionWord(
        "^(?:what(?! i want)|who|whom|whose|which|where|why)\\b"
        "|^when (?:is|are|was|were|am|do|does|did|will|would|can|could|should|has|have)\\b"
        "|^any(?:thing|body|one)? (?!(?:time|one|day|of|is|are|will|would|can|could|else$|other$)\\b)\\w|^how "
        "(?!about)|^(?:if|whether) (?:i|we|there|my|our|any)\\b");
    static const Pattern helper("^(?:is|are|am|was|were|does|has|should|shall) \\w"
                                "|^(?:do|did|have|had) (?:i|we|you|he|she|they|any|there)\\b"
                                "|^(?:will|would|could|can|may|might|must) (?!(?:you|i|we|it be possible)\\b)\\w");
    // "Can the dentist wait until monday" wishes just that.
    static const Pattern wish(
        "^(?:can|could) (?:\\w+ ){1,5}(?:wait|be (?:moved|put off|postponed|pushed|cancelled))\\b");
    return questionWord.find(phrase) || (helper.find(phrase) && !wish.find(phrase));
}

bool asksToBeTold(const std::string& phrase)
{
    static const Pattern telling(
        "^(?:(?:may|can|could) (?:i|we) (?:know|ask|see|hear)\\b|(?:let me know|tell me|show me|remind me) "
        "(?:if|whether|what|which|where|who|how)\\b"
        "|(?:tell|show|give) me (?:the|my|our|all|any)\\b|(?:show|give) me (?:every|today|todays|tomorrow|tomorrows)\\b"
        "|(?:show|list|display) (?:the|my|our|all|any|today|todays|tomorrow|tomorrows)\\b"
        "|(?:confirm|verify|check) (?:if|whether)\\b|(?:confirm|verify) (?:that )?(?:i|we|you|there)\\b)");
    return telling.find(phrase).has_value();
}

/// "Could you put ...?", "the dentist, can we make that friday?"
bool asksPolitely(const std::string& phrase)
{
    static const Pattern polite(
        "\\b(?:can|could|would|will|might|may|shall) (?:you|we|i)\\b|\\bplease\\b|\\bdo you mind\\b"
        "|\\bpossible to\\b|\\bwonder(?:ing)?\\b|\\bwill not you\\b|\\b(?:okay|ok|all right|alright)$");
    return polite.find(phrase).has_value();
}

/// "What about friday", after something was set: another time for it.
bool isOtherTime(std::string_view said)
{
    constexpr std::size_t lead = 2;
    const RequestWords words(said);
    const bool isLed = words.at(1) == "about" && (words.at(0) == "what" || words.at(0) == "how");
    return isLed && words.size() > lead && TimeVocabulary::mayBeTime(words, lead, words.size());
}

bool isMusing(const std::string& phrase)
{
    static const std::string who = "^(?:i|we|he|she|they|it|(?:my|our|his|her|the) \\w+) ";
    static const Pattern undone(who
        + "(?:(?:did not|do not|have not|has not|had not|never|forgot to|forgot that i|have forgotten to|might|may|"
          "should have|could have|was going to|were going to|meant to|wanted to) )+"
        + writes + "\\b");
    static const Pattern told(who + "(?:(?:already|just|have|has|had) )*(?:put|puts|added|entered|scheduled)\\b");
    static const Pattern others("^(?!(?:and|then|now|just|also|please|you|to|so|not|kindly|quickly|simply|always|go|do|"
                                "calendar|diary|agenda|reminder|note|again)\\b)([a-z]+) (?:put|puts|added) ");
    // "I put the key under the pot, remember that"
    static const Pattern wish("\\b(?:remember|remind|do not forget|do not let me|please"
                              "|(?:put|add|note|write|delete|cancel|move) (?:it|that|this))\\b");
    auto match = undone.find(phrase);
    if (!match)
        match = told.find(phrase);
    const bool isTime = TimeVocabulary::mayBeTime(RequestWords(phrase), 0, 1); // "Friday put lunch in ..."
    if (!match && !isTime)
        match = others.find(phrase);
    return match && !wish.find(phrase, match->range.end);
}

bool isDenial(const std::string& phrase)
{
    static const Pattern denied("^(?:do not|never|i do not want (?:you )?to|we do not want (?:you )?to) (?:ever )?"
        + writes + "\\b(?! me\\b| us\\b)");
    // "... on friday at 1 pm? No, don't."
    static const Pattern takenBack(
        "\\b(?:no|wait|actually|sorry|but|rather) do not$"
        "|\\b(?:no|wait|actually|sorry) (?:never mind|forget it|leave it|scratch that|forget that)$");
    return denied.find(phrase) || takenBack.find(phrase);
}

} // namespace

RequestMood moodOf(std::string_view words)
{
    const std::string opened = RequestText::withoutOpening(words);
    const std::string phrase = RequestText::phrase(opened);
    const std::string whole = RequestText::phrase(words);
    if (isDenial(phrase))
        return RequestMood::denial;
    if (isOtherTime(opened))
        return RequestMood::wish;
    static const Pattern wishes("^(?:" + writes + ")\\b");
    const bool isMarked = trimmed(words).ends_with('?') && !asksPolitely(whole);
    if (asksByItsStart(phrase) || asksToBeTold(phrase) || asksToBeTold(whole))
        return RequestMood::question;
    if (isMarked)
        return wishes.find(phrase) ? RequestMood::musing : RequestMood::question;
    static const Pattern early("^i (?:need|have|must|ought|will have|am going)(?: got)?(?: to)? (?:get|wake) up\\b");
    return isMusing(phrase) || early.find(whole) ? RequestMood::musing : RequestMood::wish;
}

bool saysNo(std::string_view words)
{
    static const Pattern no(
        "^(?:no |please |i (?:would rather|want) you )*(?:do not|you (?:must|should) not|never|not|stop|no need to"
        "|i (?:do not|no longer) (?:want|need)|we (?:do not|no longer) (?:want|need))\\b"
        "(?! (?:to )?(?:forget|let me|hesitate|miss)\\b)");
    return no.find(RequestText::phrase(RequestText::withoutOpening(words))).has_value();
}

} // namespace quorvell
