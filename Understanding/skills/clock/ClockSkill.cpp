// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/ClockSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/clock/ClockPhrase.h"
#include "Understanding/skills/clock/DayQuestions.h"
#include "Understanding/skills/clock/PlaceTimes.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr std::size_t longestQuestion = 120; ///< Bytes; nobody needs more for one.

Request saying(std::string text)
{
    return {.answer = [text = std::move(text)](RequestMemory memory, const RuleSurroundings&) {
        return ToolResults::say(text, std::move(memory));
    }};
}

std::optional<RuleStep> takePlace(
    const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern lead("^(?:in|for|at|i mean|the one in) ", Pattern::caseless);
    return ToolResults::say(PlaceTimes::in(lead.replaceAll(core, ""), around), std::move(memory));
}

const QuestionKind whichPlace{takePlace};

Request askingPlace()
{
    return {.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return RuleStep::asking({.kind = &whichPlace, .question = "In which city or country?"}, std::move(memory));
    }};
}

Found readPlain(const std::string& core, const RuleSurroundings& around)
{
    if (core.size() > longestQuestion)
        return std::nullopt;
    const std::string phrase = ClockPhrase::of(core);
    if (PlaceTimes::lacksPlace(phrase))
        return askingPlace();
    if (auto said = PlaceTimes::converted(core, around))
        return saying(*std::move(said));
    for (const auto reader : {PlaceTimes::difference, PlaceTimes::zone, PlaceTimes::current}) {
        if (auto said = reader(phrase, around))
            return saying(*std::move(said));
    }
    if (auto said = DayQuestions::answer(phrase, core, around))
        return saying(*std::move(said));
    return std::nullopt;
}

} // namespace

constinit const Skill ClockSkill::row{
    .name = "clock",
    .readPlain = readPlain,
};

} // namespace quorvell
