// SPDX-License-Identifier: MIT
#include "Understanding/skills/more/MoreSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/skills/more/MoreCues.h"
#include "Understanding/skills/notes/NoteRules.h"
#include "Understanding/skills/reminders/ReminderRules.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr CueWeights weights[] = {{MoreCues::also, {{{"addAnother", 4}}}}};

std::optional<RuleStep> takeAnswer(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern reminding("\\bremind(?:er|ers)?\\b|\\bsecond\\b", Pattern::Case::insensitive);
    static const Pattern keeping("\\b(?:write|note|keep|down|yes|first|save)\\b", Pattern::Case::insensitive);
    if (reminding.find(core))
        return ReminderRules::set(ReminderIntent::of("to " + asked.task), std::move(memory), around);
    return keeping.find(core) ? std::optional(NoteRules::keep(asked.task, std::move(memory), around)) : std::nullopt;
}

constexpr QuestionKind keepOrRemind{takeAnswer};

/// What nothing of that kind was asked for before.
std::optional<Request> read(const RequestReading& reading, const RuleSurroundings&)
{
    if (reading.content.empty())
        return std::nullopt;
    return Request{.answer =
                       [words = reading.content](RequestMemory memory, const RuleSurroundings&) {
                           return RuleStep::asking({.kind = &keepOrRemind,
                                                       .question = "Should I write that down, or remind you of it?",
                                                       .task = words},
                               std::move(memory));
                       },
        .another = reading.content};
}

constexpr RequestKind kinds[] = {{"addAnother", {}, read}};

} // namespace

constinit const Skill MoreSkill::row{.name = "more", .cues = MoreCues::rows, .weights = weights, .kinds = kinds};

} // namespace quorvell
