// SPDX-License-Identifier: MIT
#include "LiveService/protocols/TypedConversation.h"

#include "LiveService/conversation/ClientText.h"
#include "LiveService/voice/SpokenText.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamWriter.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/requests/RequestRules.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quorvell {

namespace {

/// Goes through a conversation as it happened; the last step is the one that is still to be told.
class Retelling {
public:
    explicit Retelling(const RuleSurroundings& around)
        : m_around(around)
    {
    }

    void operator()(const openai_item::Message& message)
    {
        if (message.role == "assistant") {
            m_step.memory.lastReply = message.text;
            m_step.answer = std::string(); // What was asked before it is answered.
        } else if (message.role == "user") {
            hear(ClientText::fromMessage(message.text));
        }
    }
    void operator()(const openai_item::FunctionCall& call) { m_calls[call.callID] = {call.name, call.arguments}; }
    void operator()(const openai_item::FunctionOutput& output)
    {
        const auto call = m_calls.find(output.callID);
        if (call != m_calls.end())
            m_step = RequestRules::answerResult(call->second, output.output, m_step.memory, m_around);
    }

    RuleStep step() && { return std::move(m_step); }

private:
    void hear(const ClientText& text)
    {
        switch (text.kind) {
        case ClientText::Kind::request:
            m_step = RequestRules::answerWords(text.text, m_step.memory, m_around);
            break;
        case ClientText::Kind::greeting:
            m_step.answer = PlainReplies::greeting(text.text);
            break;
        case ClientText::Kind::words:
            m_step.answer = text.text;
            break;
        case ClientText::Kind::nothing:
            break;
        }
    }

    const RuleSurroundings& m_around;
    RuleStep m_step{std::string(), {}};
    std::map<std::string, ToolRequest, std::less<>> m_calls;
};

} // namespace

RuleStep TypedConversation::answer(const std::vector<OpenAIItem>& items, const RuleSurroundings& surroundings)
{
    Retelling retelling(surroundings);
    const std::size_t first = items.size() - std::min(items.size(), mostItems);
    for (std::size_t index = first; index < items.size(); ++index)
        std::visit(retelling, items[index]);
    return std::move(retelling).step();
}

std::vector<std::string> TypedConversation::events(const RuleStep& step, const IdSource& ids)
{
    OpenAIResponseEnd end;
    end.responseID = ids("resp_");
    ResponsesStreamWriter writer(end.responseID);
    std::vector<std::string> events{writer.created()};
    if (const auto* request = std::get_if<ToolRequest>(&step.answer)) {
        events.push_back(writer.functionCall({ids("call_"), request->name, request->arguments, false}));
    } else {
        for (const std::string& words : SpokenText::groups(std::get<std::string>(step.answer)))
            events.push_back(writer.textDelta(words));
    }
    events.push_back(writer.ended(end));
    return events;
}

} // namespace quorvell
