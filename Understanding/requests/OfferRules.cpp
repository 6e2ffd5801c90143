// SPDX-License-Identifier: MIT
#include "Understanding/requests/OfferRules.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/requests/CarefulStep.h"
#include "Understanding/requests/RequestMood.h"
#include "Understanding/requests/RequestReader.h"
#include "Understanding/time/SpokenDays.h"

#include <utility>

namespace quorvell {

std::optional<RuleStep> OfferRules::answer(
    const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t longest = 120; ///< Bytes; longer words tell a story.
    static const Pattern past(
        "\\b(?:was|were|went|had|did|yesterday|ago|last|if|no|never|not|cannot|\\w+n['’]t|came|said|told|took"
        "|saw|met|made|gave|\\w{3,}ed)\\b",
        Pattern::caseless);
    // What somebody likes, or says to part, is no matter of a day.
    static const Pattern opinion(
        "^(?:i|we|he|she|they) (?:really |just )?(?:love|like|hate|enjoy|prefer|think|feel|know)\\b"
        "|^(?:see|talk|speak|catch)\\b.* you\\b|\\b(?:mornings|evenings|nights|\\w+days)\\b",
        Pattern::caseless);
    static const Pattern birthday("^(?:(?:my|our|his|her) )?(?:[\\p{L}-]+ ){0,2}?([\\p{L}-]+) has (?:his|her|a|their) "
                                  "(birthday|anniversary|name day) (?:on |is )?(.+)$",
        Pattern::caseless);
    std::string title;
    const bool names = core.size() <= longest && core.find(' ') != core.npos && !past.find(core) && !opinion.find(core)
        && around.offers("add_event") && SpokenDays::find(core, around, title);
    if (!names)
        return std::nullopt;
    const auto feast = birthday.find(core);
    const std::string wish = feast
        ? "put " + feast->texts[0] + "'s " + feast->texts[1] + " into my calendar on " + feast->texts[2]
        : "put " + core + " into my calendar";
    const auto request = RequestReader::read(wish, around);
    if (!request)
        return std::nullopt;
    RuleStep step = CarefulStep::take(request->answer(memory, around), *request, RequestMood::musing, memory);
    return step.memory.pending.isOpen() && step.memory.pending.tool == "add_event" ? std::optional(std::move(step))
                                                                                   : std::nullopt;
}

bool OfferRules::isAccepted(const std::string& core, const PendingQuestion& asked)
{
    static const Pattern wish("^(?:yes|yeah|yep|sure|ok|okay)?[,.]? ?(?:please )?(?:do )?(?:put|add|write|enter|save) "
                              "(?:it|that|this)(?: (?:down|in there|in|there))?"
                              "(?: (?:(?:in|into|to|on) )?(?:my|the|our) (?:calendar|diary|agenda))?$",
        Pattern::caseless);
    return asked.tool == "add_event" && wish.find(core);
}

} // namespace quorvell
