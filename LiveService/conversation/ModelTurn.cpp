// SPDX-License-Identifier: MIT
#include "LiveService/conversation/ModelTurn.h"

#include "Understanding/requests/CarefulStep.h"

#include <array>
#include <utility>

namespace quorvell {

namespace {

/// Whether something would be gone afterwards. Then the user is asked first: these words were not understood by the
/// rules, and a small model is no better witness.
bool takesAway(const std::string& arguments)
{
    constexpr auto keys = std::to_array<std::string_view>({"cancel", "delete", "remove", "keep_only", "clear",
        "clear_ticked", "forget", "done", "series", "undo", "replace"});
    const auto json = parseJson(arguments);
    for (const std::string_view key : keys) {
        const Json* value = json ? memberOf(*json, key) : nullptr;
        if (value && readBool(*value) != false)
            return true;
    }
    return false;
}

} // namespace

ModelTurn::ModelTurn(ModelSurroundings surroundings, const Json& declarations, const ConversationHistory& history)
    : m_surroundings(std::move(surroundings))
    , m_tools(std::make_shared<ModelTools>(declarations))
    , m_history(history)
{
}

ModelTurn::Step ModelTurn::begin(const std::string& words, const RuleStep& notUnderstood, Time now)
{
    m_words = words;
    auto earlier = m_history.last(ModelRequest::mostEarlier + 1);
    if (!earlier.empty() && earlier.back().text == words)
        earlier.pop_back(); // They are in the history by now.
    const std::string* cannot = std::get_if<std::string>(&notUnderstood.answer);
    m_run.emplace(m_surroundings.access, m_tools,
        ModelRequest(m_surroundings.access.model, m_surroundings.today(), earlier, words), cannot ? *cannot : "");
    return after(m_run->begin(now), notUnderstood.memory);
}

ModelTurn::Step ModelTurn::received(std::string_view bytes, const RequestMemory& memory, Time now)
{
    return isAsking() ? after(m_run->received(bytes, now), memory) : Step{};
}

ModelTurn::Step ModelTurn::ended(ModelEnd end, const RequestMemory& memory, Time now)
{
    return isAsking() ? after(m_run->ended(end, now), memory) : Step{};
}

ModelTurn::Step ModelTurn::tick(const RequestMemory& memory, Time now)
{
    return isAsking() ? after(m_run->tick(now), memory) : Step{};
}

ModelTurn::Step ModelTurn::took(const std::string& result, RuleStep step, const RequestMemory& memory, Time now)
{
    const std::string* told = std::get_if<std::string>(&step.answer);
    Step next;
    if (!told) {
        // The rules would go on by themselves, for a request that was not made to them.
        next = m_run ? after(m_run->took(result, {}, now), memory) : Step{.isOver = true};
        next.memory = next.memory.value_or(memory);
        next.memory->acts = std::move(step.memory.acts);
        return next;
    }
    if (step.memory.pending.isOpen() || !m_run) {
        // The rules ask back, and will know what to do with the answer; or somebody is in a hurry.
        m_run.reset();
        return {.sentences = {*told}, .memory = std::move(step.memory), .isOver = true};
    }
    next = after(m_run->took(result, *told, now), step.memory);
    if (!next.memory)
        next.memory = std::move(step.memory);
    return next;
}

/// A call is made as carefully as one of the rules': for words that did not wish for it the user is asked first.
ModelTurn::Step ModelTurn::after(ModelRun::Next next, const RequestMemory& memory)
{
    Step step{.sentences = std::move(next.sentences), .ask = std::move(next.ask), .isOver = next.isOver};
    if (next.call) {
        const RequestMood said = moodOf(m_words);
        const bool isDoubted = takesAway(next.call->arguments) || (said == RequestMood::wish && saysNo(m_words));
        const RequestMood mood = isDoubted ? RequestMood::question : said;
        RuleStep careful =
            CarefulStep::take({ToolRequest{next.call->name, next.call->arguments}, memory}, Request{}, mood, memory);
        if (auto* request = std::get_if<ToolRequest>(&careful.answer)) {
            step.call = std::move(*request);
        } else {
            step.sentences.push_back(std::get<std::string>(careful.answer));
            step.memory = std::move(careful.memory);
            step.isOver = true;
        }
    }
    if (step.isOver)
        m_run.reset();
    return step;
}

} // namespace quorvell
