// SPDX-License-Identifier: MIT
#include "Understanding/requests/UtteranceShape.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/SmallTalk.h"
#include "Understanding/requests/CallEffect.h"
#include "Understanding/requests/RequestRules.h"
#include "Understanding/time/ClearMoment.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/RequestText.h"

#include <string>
#include <variant>

namespace quorvell {

namespace {

constexpr auto anyCase = Pattern::Case::insensitive;

/// Another word has to come: "remind me to", "with my", "to call", "ten and".
bool hangs(const std::string& core)
{
    static const Pattern needsMore(
        "(?:^|\\s)(?:an?|the|my|your|our|his|her|their|this|these|some|any|every|each|next|another|i|i "
        "am|we|me|us|to|at|in"
        "|on|of|for|from|by|with|about|until|till|before|after|between|into|around|and|or|but|then|because|so|"
        "which"
        "|who|what|when|where|how|if|is|are|was|were|be|do|does|did|can|could|will|would|should|have|has|set|put|add|"
        "make"
        "|create|book|schedule|move|change|cancel|delete|remove|remind|remember|keep|tell|find|show|read|called|named"
        "|saying|(?:remember|forget|know|note|down|mind|me|fact|so) that|day of the week|(?<!thank |are |about |with "
        "|for "
        ")you|quarter|half|past|o|um|uh|er|erm|well)$",
        anyCase);
    // What is done to something, before that was named; "stretch" and "leave" are done to nothing.
    static const Pattern needsMatter(
        "\\bto "
        "(?:take|pick|turn|call|buy|check|send|pay|feed|water|get|bring|ring|phone|ask|visit|renew|finish|order|clean"
        "|wash|cook|give|fix|write|email|text|drink|go|do|empty|return|change|collect|charge|cancel|start|use|try|see)$"
        "|\\b(?:take|pick|turn|put|hand|drop|clear|throw|bring|switch|look|fill|write|sign)"
        " (?:out|up|off|on|down|over|away|in|after)$",
        anyCase);
    return needsMore.find(core) || needsMatter.find(core);
}

/// "At 7", "in 20": whose half of the day, or what of?
bool endsInNumber(const std::string& core)
{
    static const Pattern number("(?:^|\\s)\\d[\\d:.,]*$", anyCase);
    return number.find(core).has_value();
}

/// A length that a further one may follow: "for two hours and ten minutes".
bool endsInHours(const std::string& time)
{
    static const Pattern hours("\\b(?:hours?|days?|weeks?)$", anyCase);
    return hours.find(time).has_value();
}

/// Nobody goes on behind these: "undo that", "all my alarms", "ten minutes longer", "to the shopping list".
bool isCompleteAct(const std::string& core)
{
    static const Pattern complete(
        "^(?:please )?(?:undo|redo|repeat|say) (?:it|that|this|again|that again|it again|everything|the last one)$"
        "|\\b(?:minutes?|hours?|days?|weeks?) (?:longer|shorter|later|earlier)$|\\binstead$|^\\S+ more minutes$"
        "|^(?:stop|cancel|end|pause|resume|continue|delete|turn off|switch off|how (?:long|much)) .*\\btimers?$"
        "|^what did (?:i|you) just (?:do|add|say)$|\\bby (?:\\S+ ){1,3}(?:minutes?|hours?|days?|weeks?)$"
        "|^(?:cancel|delete|clear) (?:everything|all)\\b.* (?:today|tomorrow|\\w+day)$"
        "|\\ball (?:of )?(?:my |the )?(?:alarms|timers)$|\\b(?:skip|cancel|turn off|delete) .*'s alarm$"
        "|^(?:add|put|remove|delete|take|tick|cross|check|clear|empty|read|show)\\b.* lists?$",
        anyCase);
    return complete.find(core).has_value();
}

/// Asks for what one place tells: no day or list is named behind it.
bool isCompleteQuestion(const std::string& core)
{
    static const Pattern question(
        "^(?:when|where|what time)\\b|\\bnext (?:meeting|appointment|event|reminder|alarm)$", anyCase);
    return question.find(core).has_value();
}

UtteranceShape shapeOfLookUp(const std::string& core, const LocalTime& around)
{
    static const Pattern list("\\blists?$", anyCase);
    if (endsInNumber(core))
        return UtteranceShape::open;
    return list.find(core) || isCompleteQuestion(core) || TimeWords::atEnd(core, around) ? UtteranceShape::whole
                                                                                         : UtteranceShape::open;
}

/// What stands for a while, such as a reminder or an event: whole with its moment and its matter, whichever is last.
UtteranceShape shapeOfChange(const std::string& core, const LocalTime& around)
{
    static const Pattern timer("\\btimer\\b.*\\b(?:minutes?|seconds?)$", anyCase);
    if (timer.find(core))
        return UtteranceShape::whole;
    static const Pattern repeatedBare("\\b(?:every|each) \\S+$|\\b(?:daily|weekly|monthly|yearly)$", anyCase);
    // "Tonight" is a moment by itself, but mostly an hour follows.
    static const Pattern exact("\\d|\\b(?:noon|midnight|hour|minute)\\b", anyCase);
    const auto last = TimeWords::atEnd(core, around);
    const auto moment = ClearMoment::in(core, around);
    if (!moment || !exact.find(core))
        return last || repeatedBare.find(core) ? UtteranceShape::hanging : UtteranceShape::open;
    if (last)
        return moment->namesDay && !endsInHours(last->time) ? UtteranceShape::whole : UtteranceShape::open;
    return UtteranceShape::whole;
}

/// No tool is needed: small talk, or the rules ask back, or they can do nothing with it.
UtteranceShape shapeOfReply(const RuleStep& step, const std::string& core, const RequestMemory& before)
{
    // A bare "no" mostly begins a repair, "no, friday", unless it answers something.
    static const Pattern no("^(?:no|nope|no no)$", anyCase);
    if (no.find(core) && !before.pending.isOpen())
        return UtteranceShape::open;
    if (SmallTalk::isCancel(core))
        return UtteranceShape::whole;
    static const Pattern question("^(?:what|when|where|who|which|how|is|are|was|were|do|does|did|will)\\b", anyCase);
    const bool asksBack = step.memory.pending.isOpen() && step.memory.pending != before.pending;
    if (asksBack)
        return UtteranceShape::hanging;
    const bool isAnswered = !step.isNotUnderstood && question.find(core) && !endsInNumber(core);
    return isAnswered ? UtteranceShape::whole : UtteranceShape::open;
}

} // namespace

UtteranceShape shapeOf(std::string_view words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    if (core.empty() || hangs(core))
        return UtteranceShape::hanging;
    if (isCompleteAct(core))
        return UtteranceShape::whole;
    const RuleStep step = RequestRules::answerWords(words, memory, around);
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    if (!call)
        return shapeOfReply(step, core, memory);
    if (!CallEffect::leadsToChange(step, memory))
        return shapeOfLookUp(core, around);
    if (endsInNumber(core))
        return UtteranceShape::hanging;
    // The answer to a question is short, and the call that it settles has all it needs.
    if (memory.pending.isOpen() && !TimeWords::isTime(core, around))
        return UtteranceShape::whole;
    return shapeOfChange(core, around);
}

} // namespace quorvell
