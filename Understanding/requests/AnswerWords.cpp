// SPDX-License-Identifier: MIT
// The patterns read the words in lower case, without signs, contractions taken apart: "don't" is "do not".
#include "Understanding/requests/AnswerWords.h"

#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/words/RequestText.h"

#include <string>

namespace quorvell {

namespace {

constexpr std::size_t longestAnswer = 60; ///< Bytes; who says more says something else.

bool isPlainYes(const std::string& phrase)
{
    static const Pattern yes(
        "^(?:(?:ok|okay|oh|ah|well|and|alright|all right|please|um|uh) )*"
        "(?:y+|ye+s+|yea+h*|ye|ya+h*|yup+|yep+|yip|aye|k+|okey|okie|oki|do (?:it|that|so)|make it so|please do|by all "
        "means|why not|go (?:on|ahead|for it)|of course|i do|affirmative|(?:nah|no|oops|sorry) y(?:es|eah|ep) i "
        "(?:mean|meant))"
        "(?: (?:please|yes|yeah|go|on|ahead|do|it|that|so|sure|ok|okay|then|now|thanks|thank|you|mate|of course|i"
        "|mean|is|right|fine|all))*$");
    return yes.find(phrase).has_value();
}

/// "Delete it yes", to "Shall I delete it?"
bool agreesBehind(const std::string& phrase, std::string_view question)
{
    static const Pattern behind("^(\\S.*) (?:yes|yeah|yep|yup)(?: please)?$");
    const auto match = behind.find(phrase);
    return match && SpokenConsent::agreesTo(question, "yes " + match->texts[0]);
}

const std::string leads = "(?:(?:no+|nope|nah|naw|oh|sorry|wait|actually|hm+|ok|okay|but|well|please|on second "
                          "thoughts?|i(?: have)? changed my mind|never ?mind) )*";
const std::string tails = "(?: (?:please|thanks|thank you|then|for now|though|sorry|mate|after all|i think|no))*$";
const std::string leaving = "(?:leave|let) (?:it|that|this|them|everything)"
                            "(?: (?:there|alone|be|as it is|as is|where it is|how it is|in|on|stay|like that))*";

} // namespace

AnswerWords::Verdict AnswerWords::verdict(std::string_view core, std::string_view question)
{
    if (core.size() > longestAnswer)
        return Verdict::none;
    const std::string phrase = RequestText::phrase(core);
    if (isPlainYes(phrase) || agreesBehind(phrase, question))
        return Verdict::yes;
    // "Keep it" spares what was to go, and agrees to what was to be kept.
    static const Pattern keeping("^keep\\b");
    static const Pattern goes(
        "\\b(?:delete|remove|cancel|clear|forget|empty|take|move|change|replace|stop)\\b", Pattern::caseless);
    if (keeping.find(phrase) && !goes.find(question))
        return Verdict::none;
    static const Pattern no("^" + leads
        + "(?:no+|nope|nah|naw|n|never|no way|(?:do not|dont)(?: (?:do|delete|remove|cancel|touch|change|put|add|set"
          "|move)(?: (?:it|that|this|them))?| bother)?|keep(?: (?:it|that|this|them))?(?: (?:there|in|on|as it is"
          "|as is))?|"
        + leaving
        + "|not (?:now|yet|this time|right now|needed|necessary|really)|no need|i (?:do not|dont) (?:want|need) "
          "(?:to|that|it|this)|i (?:have )?changed my mind|it stays|rather not|better not|(?:hell|absolutely"
          "|certainly|of course) not)"
        + tails);
    return no.find(phrase) ? Verdict::no : Verdict::none;
}

bool AnswerWords::declines(std::string_view core)
{
    static const Pattern leave(
        "^" + leads + "(?:" + leaving + "|(?:do not|dont)(?: bother)?|no need(?: for (?:it|that))?)" + tails);
    return core.size() <= longestAnswer && leave.find(RequestText::phrase(core));
}

bool AnswerWords::isNoText(std::string_view core)
{
    static const Pattern points(
        "^(?:(?:and|ok|okay|then|please|also|now|just|no|actually|but|so|can you|could you) )*(?:change|move|make"
        "|delete|remove|cancel|rename|shift|push|postpone|put|set|undo|repeat|read|show|tell|skip|stop|clear|call"
        "|skip|keep)(?: me)? (?:it|that|this|them|those|these|one|two|both|all|everything)\\b");
    static const Pattern asks("^(?:(?:and|so|ok|okay|but) )*(?:is|are|was|were|does|did|do|am|what|which|when|where|who"
                              "|whose|why|how|will|should|have) (?:it|that|this|they|there|i|you|we|he|she|about|is|are"
                              "|was|did|do|does|day|time|else|many|much|long|on)\\b");
    // Of what was spoken of, and nothing by themselves.
    static const Pattern attaches("^(?:(?:and|only|just|but|ok|yes|no|sorry|it|that|also|the|on|at|in) )*(?:too|as "
                                  "well|also|yes|no|sorry|then|again|louder|quieter|longer|shorter|earlier|later|sooner"
                                  "|only|not|please|instead|same|both|neither|today|(?:it |that )?(?:takes|lasts) \\S.*"
                                  "|except \\S.*|not \\S+)(?: (?:too|as well|also|yes|no|sorry|then|again|please|"
                                  "only|instead|now))*$");
    static const Pattern unable(
        "^\\S+ (?:can not|cannot|can t|could not)\\b.* (?:make|put|move|change) (?:it|that)\\b");
    const std::string phrase = RequestText::phrase(core);
    return unable.find(phrase) || points.find(phrase) || asks.find(phrase) || attaches.find(phrase);
}

bool AnswerWords::isBareTime(std::string_view core, const LocalTime& around)
{
    static const Pattern dress(
        "^(?:(?:too|as|well|also|yes|no|only|just|sorry|not|but|then|again|and|except|please|ok|okay"
        "|it|that|louder|for|on|at)(?: |$))+$");
    if (core.size() > longestAnswer)
        return false;
    const std::string beside = RequestText::phrase(SpokenMoment::wordsBeside(core, around));
    return beside.size() < RequestText::phrase(core).size() && dress.find(beside);
}

} // namespace quorvell
