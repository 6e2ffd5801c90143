// SPDX-License-Identifier: MIT
#include "Understanding/requests/FollowUpRules.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/requests/RequestReader.h"

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

/// Whether the words are a request of their own and no answer.
bool isNewRequest(const PendingQuestion& asked, const std::string& core, const RuleSurroundings& around)
{
    const auto request = RequestReader::read(core, around);
    return request && !(request->mayAnswer && request->mayAnswer(asked, around));
}

} // namespace

std::optional<RuleStep> FollowUpRules::answer(
    std::string_view words, RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core(words);
    PendingQuestion asked = std::exchange(memory.pending, {});
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
