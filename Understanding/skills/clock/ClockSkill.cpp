// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/ClockSkill.h"

#include "QuorvellCore/reckoning/places/PlaceZones.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/clock/ClockPhrase.h"
#include "Understanding/skills/clock/DayQuestions.h"
#include "Understanding/skills/clock/PartOfDay.h"
#include "Understanding/skills/clock/PlaceTimes.h"
#include "Understanding/skills/clock/SpokenLast.h"
#include "Understanding/words/RequestText.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr std::size_t longestQuestion = 120; ///< Bytes; nobody needs more for one.

constexpr std::string_view name = "clock";

/// `form` is what stands before another place or day, where that may be asked about next.
Request saying(std::string text, std::string form)
{
    return {.answer = [text = std::move(text), form = std::move(form)](RequestMemory memory, const RuleSurroundings&) {
        memory.passing = {name, memory.turn, form};
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

/// The question of a day with another day in it.
std::string formOf(const std::string& phrase)
{
    static const Pattern count("^(how (?:many|much|long|far)\\b.*? (?:until|till|til|to|before)) ");
    static const Pattern weekday("^(?:day|weekday|date)\\b");
    if (const auto match = count.find(phrase))
        return match->texts[0] + " ";
    return weekday.find(phrase) ? "what day is " : "when is ";
}

Found aboutTime(const std::string& core, const RuleSurroundings& around)
{
    const std::string phrase = ClockPhrase::of(core);
    if (PlaceTimes::lacksPlace(phrase))
        return askingPlace();
    if (auto said = PlaceTimes::converted(core, around))
        return saying(*std::move(said), "");
    if (auto said = PartOfDay::answer(phrase, around))
        return saying(*std::move(said), "");
    for (const auto reader : {PlaceTimes::difference, PlaceTimes::zone, PlaceTimes::current}) {
        if (auto said = reader(phrase, around))
            return saying(*std::move(said),
                reader == PlaceTimes::difference ? "what is the time difference to "
                    : reader == PlaceTimes::zone ? "what is the time zone of "
                                                 : "what time is it in ");
    }
    auto said = DayQuestions::answer(phrase, core, around);
    return said ? Found(saying(*std::move(said), formOf(phrase))) : std::nullopt;
}

constexpr std::string_view whichDay = "Which day do you mean?";

/// "How many days until then?"
Request askingOfThatDay(const std::string& question)
{
    return {.answer = [question](RequestMemory memory, const RuleSurroundings& around) {
        const std::string day = SpokenLast::day(memory, around);
        const auto request = day.empty() ? std::nullopt : aboutTime(question + day, around);
        if (request)
            return request->answer(std::move(memory), around);
        memory.passing = {name, memory.turn, question};
        return ToolResults::say(std::string(whichDay), std::move(memory));
    }};
}

Found readPlain(const std::string& core, const RuleSurroundings& around)
{
    if (core.size() > longestQuestion)
        return std::nullopt;
    if (const auto question = SpokenLast::question(core))
        return askingOfThatDay(*question);
    return aboutTime(core, around);
}

/// "And in Tokyo?", "what about Easter?"
Skill::Step goOn(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern more("^(?:(?:and|what about|how about|and what about|and how about|or)\\s+)"
                              "(?:in |at |for |until |on |to )?(.+?)(?: then| please)?[?.! ]*$",
        Pattern::caseless);
    static const Pattern here("^(?:here|there|this|that|it|now)$", Pattern::caseless);
    const std::string& form = memory.passing.form;
    const auto match = words.size() <= longestQuestion ? more.find(words) : std::nullopt;
    const bool isAnswer = !match && memory.lastReply == whichDay && words.size() <= longestQuestion;
    const std::string what = match ? match->texts[0] : isAnswer ? RequestText::withoutClosing(words) : std::string();
    if (what.empty() || form.empty() || here.find(what))
        return std::nullopt;
    if (form.find("time") != std::string::npos && PlaceZones::find(what).empty())
        return std::nullopt;
    const auto request = aboutTime(form + what, around);
    return request ? Skill::Step(request->answer(memory, around)) : std::nullopt;
}

} // namespace

constinit const Skill ClockSkill::row{
    .name = name,
    .readPlain = readPlain,
    .goOn = goOn,
};

} // namespace quorvell
