// SPDX-License-Identifier: MIT
#include "Understanding/words/Courtesies.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/WordRewriting.h"

#include <deque>
#include <utility>

namespace quorvell {

namespace {

const std::string deed =
    "(?:add|put|set|create|make|start|schedule|reschedule|book|remind|wake|delete|remove|cancel|clear"
    "|erase|move|change|update|postpone|turn|show|read|tell|list|open|find|check|give me|include"
    "|insert|enter|save|arrange|plan|block)";
const std::string looking = "(?:what|when|which|who|how (?:many|long|much)|do i have|is there|are there|am i)";
const std::string behind = "[,.:;!?]*\\s+(?=(?:please,? |kindly |to )*(?:" + deed + "|" + looking + ")\\b)";

std::string withoutOpeners(const std::string& words)
{
    static const std::string asks =
        "(?:(?:please|kindly|hi|hello|hey|there|can (?:you|u)|could (?:you|u)|would (?:you|u)),? )*";
    static const WordRewriting openers(std::deque<std::pair<std::string, std::string>>{
        {"^" + asks + "(?:please )?be (?:so |very )?(?:kind|good|nice)(?: enough)?(?: to| and)" + behind, ""},
        {"^" + asks + "do the needful(?: and| to)?" + behind, ""},
        {"^" + asks + "(?:help|assist)(?: me| us)?(?: to| in| with)?" + behind, ""},
        {"^(?:(?:ok(?:ay)?|alright|right|well)?,? ?(?:so,? )?(?:basically|actually|like|literally|simply))" + behind,
            ""},
        {"^i hope (?:that )?(?:you|u|this)(?:['’]re| are| is)? \\S+(?: \\S+){0,2}?[.,!]" + behind, ""},
        {"^(?:how are you(?: doing)?(?: today)?|(?:are )?you there)[?.,!]+" + behind, ""},
        {"^i(?:['’]m| am|['’]d| would)? ?(?:need|want|require|request|command|order|ask|like|wish|expect)(?:ing)? "
         "(?:for )?"
         "(?:that )?(?:you|u)(?: to)?"
                + behind,
            ""},
        {"^(?:my (?:request|wish|command|order|task) (?:to you )?is|it is my wish|(?:it(?:['’]s| is) )?time)"
         " (?:to|that you)"
                + behind,
            ""},
        {"^(?:first(?: of all| off|ly)?|secondly|finally|lastly|after that|one more thing|one last thing)" + behind,
            ""},
        {"^(?:(?:an?|one|1|another|small|quick|little|more|my) )*(?:favou?r|request|command|task|thing|question|order"
         "|instruction|do this(?: for me)?|please do the following)\\s*:+"
                + behind,
            ""},
        {"^(?:i (?:think|guess|suppose) )?(?:you|we|u) (?:should|shall|might|must|could)(?: please)?" + behind, ""},
        {"^(?:why (?:don['’]?t (?:you|we)|not)|how about (?:you|we|if you))" + behind, ""},
        {"^(?:would|will|is) it (?:be )?possible (?:that|if|for) (?:you|u)(?: to| could| can)?" + behind, ""},
        {"^(?:may|shall|might) (?:you|u|we)(?: please| kindly)?" + behind, ""},
        {"^(?:try (?:and|to)|go(?: and)?)" + behind, ""},
    });
    std::string text = words;
    for (std::string before; before != text;) {
        before = text;
        text = openers.first(text);
    }
    return text;
}

std::string withoutClosers(const std::string& words)
{
    // What a request ends with, and no name or task does.
    static const std::string whole =
        "(?<=\\b(?:lists?|groceries|calendar|diary|agenda|schedule|alarms?|reminders?|timers?|events?|tomorrow|today"
        "|tonight|week|month|morning|afternoon|evening|noon|midnight|(?:mon|tues|wednes|thurs|fri|satur|sun)day|[ap]m"
        "|o['’]clock|minutes|hours?|please|\\d)),? ";
    static const std::string end = "[\\s.!]*$";
    static const WordRewriting closers(std::deque<std::pair<std::string, std::string>>{
        {"[\\s,.;!?]+(?:for me )?pretty please(?: with \\S+(?: \\S+){0,3})?" + end, ""},
        {"[\\s,.;!?]+(?:(?:please )?and )?(?:thank (?:you|u)|thanks)(?: very much| so much| a lot)?(?: indeed)?(?:,? "
         "you(?:['’]re| are) \\S+"
         "(?: \\S+){0,3})?"
                + end,
            ""},
        {whole
                + "(?:alright|all right|na|ya|yar|yaar|bro|bruh|buddy|dude|mate|man|pal|boss|sir|madam|you "
                  "know|kthx(?:bye)?"
                  "|pl[sz]{2,}|plea{2,}se|quick(?:ly)?|right now|now|at once|immediately|this instant|today itself"
                  "|kindly|thx+|ty)"
                + end,
            ""},
        {"(?:[,.;!?]+|,? and) ?(?:thats|that['’]s|that is) (?:it|all)" + end, ""},
        {"\\s*[,.;!?]+\\s*(?:can|could|will|would) (?:you|u) (?:please )?(?:do|handle|manage) (?:that|it|this)(?: for "
         "me)?"
         "(?: please)?[?\\s.!]*$",
            ""},
        {"\\s*[,.;!?]+\\s*(?:please )?(?:do|make) it (?:now|happen|quick(?:ly)?|for me)" + end, ""},
        {"\\s*[.;!]+\\s*(?:you(?:['’]re| are) (?:the best|great|awesome|amazing|wonderful|so kind|very kind|an? \\w+)"
         "|over(?: and out)?|got that|understood)"
                + end,
            ""},
        {",? if (?:you|u) (?:would|could|can) be so kind" + end, ""},
        {"\\s*\\((?:please|pls|plz|thanks|thank you|urgent)\\)" + end, ""},
        {"\\s*!+1+!*$", ""},
    });
    std::string text = words;
    for (std::string before; before != text;) {
        before = text;
        const std::string shorter = trimmed(closers.first(text));
        text = shorter.empty() ? text : shorter;
    }
    return text;
}

} // namespace

std::string Courtesies::removed(const std::string& words)
{
    static const Pattern request("^(?:" + deed + "|" + looking + ")\\b", Pattern::caseless);
    const std::string opened = withoutOpeners(words);
    return request.find(RequestText::withoutOpening(opened)) ? withoutClosers(opened) : opened;
}

} // namespace quorvell
