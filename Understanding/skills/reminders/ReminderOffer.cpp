// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderOffer.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/time/TimeWords.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

std::optional<Request> ReminderOffer::read(const std::string& words, const RuleSurroundings& around)
{
    static const Pattern plan(
        "^(?:(?:oh|and|so|well|also|um|uh),? )*(?:i(?:['’]d| would) (?:like|love) to|i(?:['’]m| am) (?:going|planning|"
        "hoping) to|i (?:plan|hope|want|mean|wish) to) "
        "((?:write (?:to )?(?:him|her|them|my|the|\\p{Lu}\\p{Ll}+)|buy|bake|send|visit|congratulate|thank|return|pick "
        "up|collect|plant|repair|iron|fetch)\\b.+?)[.!]?$",
        Pattern::caseless);
    static const Pattern note("\\b(?:down|note|notes|list|calendar|diary|about)\\b", Pattern::caseless);
    const auto match = plan.find(words);
    if (!match || note.find(match->texts[0]) || !around.offers(ReminderCalls::tool))
        return std::nullopt;
    const std::string deed = match->texts[0];
    const auto timed = TimeWords::atEnd(deed, around);
    if (!timed || timed->rest.empty())
        return std::nullopt;
    return Request{.answer = [deed](RequestMemory memory, const RuleSurroundings&) {
        // Once something else is said it is over: nobody asked for it.
        return RuleStep::asking({.kind = &ToolResults::confirmation,
                                    .question = "Should I remind you to " + deed + "?",
                                    .task = deed,
                                    .tool = ReminderCalls::tool,
                                    .arguments = dumpJson(Json{{"text", "remind me to " + deed}}),
                                    .isTakenUpAgain = true},
            std::move(memory));
    }};
}

} // namespace quorvell
