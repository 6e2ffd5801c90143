// SPDX-License-Identifier: MIT
#include "Understanding/requests/FollowUpRules.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/requests/AnswerWords.h"
#include "Understanding/requests/RequestReader.h"
#include "Understanding/time/SpokenDays.h"

#include <array>
#include <string>
#include <utility>

namespace quorvell {

namespace {

/// "When I go to the doctor" says when, and asks nothing: that would be "when do I go".
bool saysWhen(const std::string& core)
{
    static const Pattern clause(
        "^(?:when|whenever|once|as soon as|before|after) (?:i|we) (?!do\\b|did\\b)\\S+", Pattern::caseless);
    return clause.find(core).has_value();
}

/// "Pm", where the question was which of two hours.
bool namesHalf(const PendingQuestion& asked, const std::string& core)
{
    static const Pattern half("^(?:(?:no|oh|sorry|the|in the|at|of course|yes|i mean)[,]? )*(?:[ap]\\.?m\\.?|morning"
                              "|afternoon|evening|night)(?: (?:one|of course|please|obviously|sorry))*[.!]*$",
        Pattern::caseless);
    return asked.choices.size() > 1 && half.find(core);
}

/// "Tomorrow", where only one of the choices is then: its place among them.
std::string placeByDay(const PendingQuestion& asked, const std::string& core, const RuleSurroundings& around)
{
    constexpr std::array<const char*, 3> places{"the first one", "the second one", "the third one"};
    static const Pattern lead("^(?:(?:the|on|no|ok|i mean)[,]? )+| (?:one|please|then)$", Pattern::caseless);
    if (asked.choices.size() < 2 || asked.choices.size() > places.size())
        return {};
    const auto days = SpokenDays::read(lead.replaceAll(core, ""), around);
    std::string place;
    for (std::size_t index = 0; days && index < asked.choices.size(); ++index) {
        if (!days->hold(asked.choices[index].date))
            continue;
        if (!place.empty())
            return {};
        place = places.at(index);
    }
    return place;
}

/// Whether the words are a request of their own and no answer.
bool isNewRequest(const PendingQuestion& asked, const std::string& core, const RuleSurroundings& around)
{
    if (namesHalf(asked, core))
        return false;
    const auto request = RequestReader::read(core, around);
    return request && !(request->mayAnswer && request->mayAnswer(asked, around));
}

} // namespace

std::optional<RuleStep> FollowUpRules::answer(
    std::string_view words, RequestMemory& memory, const RuleSurroundings& around)
{
    PendingQuestion asked = std::exchange(memory.pending, {});
    const std::string said(words);
    const std::string place = placeByDay(asked, said, around);
    const std::string core = place.empty() ? said : place;
    if (asked.kind && asked.kind->takesText && (AnswerWords::isNoText(core) || AnswerWords::isBareTime(core, around)))
        return std::nullopt;
    const bool isAnswer = asked.kind && asked.kind->isAnswer && asked.kind->isAnswer(core, around);
    if (!isAnswer && !saysWhen(core) && isNewRequest(asked, core, around))
        return std::nullopt;
    if (asked.kind && asked.kind->answer) {
        if (auto step = asked.kind->answer(core, asked, memory, around))
            return step;
    }
    if (asked.misses >= PendingQuestion::patience)
        return std::nullopt;
    ++asked.misses;
    const std::string again = std::string(PlainReplies::notUnderstood) + " " + asked.question;
    memory.pending = std::move(asked);
    return RuleStep{again, memory};
}

} // namespace quorvell
