// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderOccasion.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/skills/reminders/TaskWords.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/RequestText.h"

#include <utility>

namespace quorvell {

std::optional<ReminderOccasion> ReminderOccasion::read(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:hey|ok|okay|hi),? )?(?:quorvell,? )?(?:(?:please|kindly|can you|could you|would you),? )*"
        "(?:remind|nudge|ping|alert|notify) (?:me|us) (?:(?:to|about|of) (.+?),? )?"
        "(?:when|whenever|once|as soon as|the moment|next time) (.+?)(?:,? (?:to(?! "
        "(?:the|my|our|an?|his|her|their|this|work|bed|school|town)\\b)|about|of) (.+))?$",
        Pattern::caseless);
    static const Pattern back(
        "^(?:i['’]?m|i am|i get|i come|i[' ]?(?:ha)?ve come|i return|we are|we['’]?re|we get)"
        "(?: back)?(?: (?:at|to|on) (?:the|my|this) (?:computer|desk|laptop|pc|keyboard|machine))?$",
        Pattern::caseless);
    static const Pattern returned("\\bback\\b|\\breturn", Pattern::caseless);
    const auto match = form.find(core);
    if (!match || (!match->groups[0] && !match->groups[2]) || SpokenPhrase::read(core, around))
        return std::nullopt;
    static const Pattern clock(
        "^it(?:['’]s| is) "
        "(?:\\d|noon|midnight|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|half|quarter)",
        Pattern::caseless);
    if (clock.find(match->texts[1]))
        return std::nullopt;
    const std::string& task = match->groups[0] ? match->texts[0] : match->texts[2];
    // "To ask when the shop opens" belongs to the task.
    static const Pattern asks(
        "\\b(?:ask|find out|check|see|know|tell|say|decide|look up)(?: \\S+)?$", Pattern::caseless);
    // "Remind me when the concert is going to start" asks for a time.
    static const Pattern goesOn(
        "\\b(?:is|are|am|was|were|be|going|have|has|had|need|needs|supposed|due|ought|got|meant|about|want|wants)$",
        Pattern::caseless);
    if (match->groups[0] ? asks.find(task).has_value() : goesOn.find(match->texts[1]).has_value())
        return std::nullopt;
    const std::string& when = match->texts[1];
    return ReminderOccasion{trimmed(task), back.find(when) && returned.find(when)};
}

Request ReminderOccasion::request(ReminderOccasion occasion)
{
    return {.answer = [occasion = std::move(occasion)](RequestMemory memory, const RuleSurroundings& around) {
        memory.wish = {};
        memory.request = "remind me to " + occasion.task;
        if (occasion.isReturn)
            return RuleStep{ReminderCalls{around}.setOnReturn(RequestText::written(occasion.task)), std::move(memory)};
        const TaskWords task = TaskWords::of(RequestText::written(occasion.task), memory.request);
        return RuleStep::asking(
            {.kind = &ReminderQuestions::when,
                .question = "I can't tell when that is. At what time should I remind you " + task.told() + "?",
                .task = RequestText::written(occasion.task)},
            std::move(memory));
    }};
}

} // namespace quorvell
