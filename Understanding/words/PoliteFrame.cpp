// SPDX-License-Identifier: MIT
#include "Understanding/words/PoliteFrame.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/WordRewriting.h"

#include <algorithm>
#include <array>
#include <deque>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

struct Form {
    std::string_view ending; ///< As it is after "be" and "would you mind".
    std::string_view base;
};

constexpr auto forms = std::to_array<Form>({{"adding", "add"}, {"putting", "put"}, {"creating", "create"},
    {"making", "make"}, {"setting", "set"}, {"deleting", "delete"}, {"removing", "remove"}, {"cancelling", "cancel"},
    {"canceling", "cancel"}, {"scheduling", "schedule"}, {"rescheduling", "reschedule"}, {"booking", "book"},
    {"reminding", "remind"}, {"moving", "move"}, {"changing", "change"}, {"telling", "tell"}, {"showing", "show"},
    {"reading", "read"}, {"taking", "take"}, {"noting", "note"}, {"writing", "write"}, {"starting", "start"},
    {"turning", "turn"}, {"waking", "wake"}, {"giving", "give"}, {"checking", "check"}, {"clearing", "clear"},
    {"updating", "update"}, {"including", "include"}, {"marking", "mark"}, {"entering", "enter"}, {"saving", "save"},
    {"blocking", "block"}, {"arranging", "arrange"}, {"fixing", "fix"}, {"letting", "let"}, {"finding", "find"},
    {"postponing", "postpone"}, {"pushing", "push"}, {"shifting", "shift"}, {"dropping", "drop"}, {"erasing", "erase"},
    {"jotting", "jot"}, {"popping", "pop"}, {"listing", "list"}, {"opening", "open"}, {"planning", "plan"}});

const std::string deeds =
    "(?:add|put|create|set|schedule|reschedule|book|remind|delete|remove|cancel|include|note|make a"
    "|mark|enter|move|insert|tell me|show me|read|list|wake|clear|update|turn)";

/// "Would you mind creating a list" as "please create a list".
std::string withPlainVerb(const std::string& words)
{
    static const Pattern lead(
        "^((?:(?:please|kindly|hey|hi|and|also|so) )*)(?:(?:would|do|will) you mind|can you be|could you be|be"
        "|(?:i['’]?d |i would )?(?:really )?appreciate (?:you|your|if you are)|thanks for|mind|how about|help me(?: "
        "with)?"
        "|please be|kindly be|are you able to be|(?:is|would) it (?:be )?ok(?:ay)? (?:with )?you)"
        "(?: please| kindly| just)? (\\w+ing)\\b",
        Pattern::caseless);
    const auto match = lead.find(words);
    if (!match)
        return words;
    const auto form = std::ranges::find(forms, lowerCased(match->texts[1]), &Form::ending);
    return form != forms.end() ? "please " + std::string(form->base) + words.substr(match->range.end) : words;
}

/// A reason tells nothing of what is looked for. Where it wishes for something itself, it is none.
std::string withoutReason(const std::string& words)
{
    static const Pattern undoing(
        "^(?:(?:cancel|delete|remove|call off|get rid of|drop|erase|scrap|clear|skip|scratch|nix|stop|take|turn off"
        "|disable|bin|lose|dump|ditch|move|reschedule|postpone|push|i (?:do not|don['’]?t|no longer) need|no more)\\b)",
        Pattern::caseless);
    static const Pattern reason(
        "(?:[,;.!–-]+ (?:(?:because|since|as|cos|for) .+|(?:i|we|he|she|they|it|that|there|half|nobody|everyone"
        "|(?:my|our|the|his|her|their) \\S+|\\p{L}+)(?:['’](?:m|s|re|ve|d))?(?: \\S+){0,2}? "
        "(?:am|is|are|was|were|has|have|had|fell|got|can['’]?t|cannot|won['’]?t|isn['’]?t|aren['’]?t|don['’]?t|doesn['"
        "’]?t"
        "|didn['’]?t|do|quit|broke|died|moved|rang|said|called|need|want|feel|feels|hate|changed|went|left|lost|will|"
        "would"
        "|no|not|ill|sick|busy|done|over)(?: .*)?|(?:i|we|he|she|they) \\w+)"
        "| (?:because|since|cos) (?:of |i\\b|we\\b|he\\b|she\\b|they\\b|it\\b|my\\b|the\\b).*"
        "| as (?:i|we|he|she|they|it|there)\\b(?:['’]\\w+)? .+"
        "| (?:it['’]?s|they['’]?re|it is|they are) (?:finished|done|over|gone|empty|used up|not needed|expired))$",
        Pattern::caseless);
    static const Pattern wish(
        "\\b(?:instead|rather|move|add|put|remind|make|cancel|delete|remove|set|tell|reschedule|only"
        "|except|but not|not the|keep|leave|on (?:mon|tues|wednes|thurs|fri|satur|sun)day|at \\d"
        "|tomorrow|next|or)\\b|\\?",
        Pattern::caseless);
    const std::string core = RequestText::withoutOpening(words);
    const auto match = undoing.find(core) ? reason.find(words) : std::nullopt;
    if (!match || match->range.start == 0)
        return words;
    const std::string said = words.substr(match->range.start);
    return wish.find(said) ? words : words.substr(0, match->range.start);
}

std::string withoutClosing(const std::string& words)
{
    // A last "thanks" stays: alone it is an answer. The question mark is that of "will you?".
    const std::string end = "((?:[\\s,.]+(?:please|thanks|thank you|cheers))*)[\\s.!?]*$";
    static const WordRewriting closings(std::deque<std::pair<std::string, std::string>>{
        {"\\b(thanks|thank you|cheers)(?: (?:in advance|again|a "
         "(?:bunch|million|ton)|loads|you|u|mate|buddy|bro|alexa|siri"
         "|google|dear|for (?:your|the) help))+[\\s.!]*$",
            "$1"},
        {"[\\s,.;!?–-]+(?:(?:much |i(?:['’]?d)? (?:would )?|really )*appreciated?(?: it| that)?|asap|a\\.s\\.a\\.p\\.?"
         "|as soon as (?:possible|you can)|right away|straight away|immediately"
         "|if (?:at all |it['’]?s |that['’]?s |it is |that is )?(?:possible|ok|okay|alright|all right|not too much "
         "trouble)"
         "(?: with you| for you)?"
         "|(?:when|whenever|once) (?:you|u) (?:can|get (?:a |the )?(?:chance|moment|minute|min|sec|time)"
         "|have (?:a |the )?(?:chance|moment|minute|min|sec|time)|are (?:free|ready))"
         "|(?:(?:please|kindly) )?do the needful|(?:will|would|could|can|won['’]?t) (?:you|u|ya)"
         "|(?:that['’]?s|that is) (?:all|it)(?: for now)?"
         "|that(?: would|['’]?d) be (?:great|nice|lovely|good|awesome|perfect|cool)|pretty please"
         "|if (?:you|u) (?:can|could|would|please|don['’]?t mind|like|may))"
                + end,
            "$1"},
        {"\\s*,\\s*(?:got it|ok(?:ay)?|alright|(?:do not|don['’]?t) forget(?: it)?|kindly)" + end, "$1"},
        {"[\\s,]+and (?:please )?(?:let me know|tell me|confirm|inform me|notify me)(?: (?:when|once|after|that|if)"
         "(?: it['’]?s| it is| you(?:['’]?re| are| have)?| that['’]?s)?)? (?:done|ready|finished|complete|completed)"
                + end,
            "$1"},
        {"[\\s,]+and (?:please )?(?:let me know|tell me|check|see) (?:if|whether) (?:it|that|this|there|i)\\b.{0,60}$",
            ""},
    });
    std::string text = words;
    for (std::string before; before != text;) {
        before = text;
        const std::string shorter = trimmed(closings.first(text));
        text = shorter.empty() ? text : shorter;
    }
    return text;
}

} // namespace

/// "Create for me one list" as "create a list".
std::string withPlainObject(const std::string& words)
{
    static const WordRewriting objects({
        {"\\b((?:create|make|set|set up|start|open|add|schedule|keep|book)) one "
         "(list|alarm|reminder|event|note|timer|meeting"
         "|appointment)\\b",
            "$1 a $2"},
        {"^((?:please |kindly |can you |could you )*(?:create|make|set|set "
         "up|start|open|add|schedule|keep|book|put|find|read))"
         " (?:for )(?:me|us) (?!(?:to|and|at|on)\\b)",
            "$1 "},
        {"\\b(list|event|note|reminder|alarm|timer|appointment|meeting) for (?:me|us) "
         "(?=(?:called|named|titled|with|for|at|on"
         "|to|of|about|tomorrow|today)\\b)",
            "$1 "},
        {"^((?:please |kindly |can you |could you )*(?:add|put|include|insert)) (?:an? |the )?(?:new "
         ")?(?:item|entry|thing|task)"
         "(?: called| named|:)? (?=\")",
            "$1 "},
    });
    return objects.outsideQuotes(words);
}

std::string PoliteFrame::removed(const std::string& words)
{
    static const Pattern verb(
        "^((?:(?:please|kindly|and|also|so) )*)(?:do|go ahead and|make sure (?:to|you|that you)"
        "|be sure to|ensure (?:that )?you|(?:do not|don['’]?t) forget to|try to|feel free to|help me(?: to)?"
        "|quickly|remember to|see if you can|you (?:need|have|ought) to|you (?:should|must|may)) (?="
            + deeds + "\\b)",
        Pattern::caseless);
    static const Pattern inMiddle(" please(?=,)", Pattern::caseless);
    const std::string text = withoutClosing(withPlainObject(withPlainVerb(words)));
    const auto match = verb.find(text);
    const std::string plain = match ? match->texts[0] + text.substr(match->range.end) : text;
    return withoutReason(inMiddle.replaceAll(plain, ""));
}

} // namespace quorvell
