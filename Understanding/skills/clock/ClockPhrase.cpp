// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/ClockPhrase.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"

namespace quorvell {

namespace {

std::string withoutAll(const Pattern& pattern, std::string text)
{
    for (std::string before; before != text;) {
        before = text;
        text = pattern.replaceAll(text, "");
    }
    return text;
}

} // namespace

std::string ClockPhrase::of(std::string_view core)
{
    static const Pattern lead(
        "^(?:(?:may|can|could|might) (?:i|we) (?:have )?|(?:please )?(?:have a look|look|glance) at |pull up |bring up "
        "|provide |"
        "(?:inform|update) me (?:of|on|about) |like to (?:know |see |hear |check "
        ")?|(?:please|kindly|quickly|just|and|so|ok|okay|hey|can|could|would|will|you|quorvell) "
        "|(?:tell|show|give|get|read|report|display|announce|state|check|find|say|speak)(?: out)? "
        "(?:(?:to )?(?:me|us) )?|let me (?:know|see) |(?:i |we )?(?:would like|want|need|wish)(?: to)? "
        "(?:(?:know|see|hear|check|have) )?|(?:know|see|hear|check) "
        "|do you (?:happen to )?(?:know|have) |have you got |have (?=the (?:time and|date|current|exact)\\b)|total "
        "|and (?=how )|any idea |i wonder )");
    static const Pattern question("^(?:and |so |but )*(?:what|which|whats|wat)(?: is| are| was| will be)? ");
    static const Pattern tail(
        "(?<! from| before) (?:now|right now|currently|at the moment|at this moment|at "
        "present|presently|please|exactly|"
        "just now|for me|also|too|as well|by the way|i (?:want|need|have) to .*|so (?:that )?(?:i|we) .*|because "
        "(?:i|we) .*|thanks|thank you|right at "
        "this moment|as of now)$");
    // As they are typed fast.
    static const Pattern article("\\b(?:d|da|de) (?=(?:time|date|day)\\b)");
    static const Pattern is("\\biz\\b");
    static const Pattern are("\\br (?=(?:we|u|you|they|there)\\b)");
    const std::string said =
        are.replaceAll(is.replaceAll(article.replaceAll(RequestText::phrase(core), "the "), "is"), "are ");
    return withoutAll(tail, question.replaceAll(withoutAll(lead, said), ""));
}

} // namespace quorvell
