// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/responses/ResponsesStreamWriter.h"

#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

Json messageItem(const std::string& id, Json content, const char* status)
{
    return {
        {"id", id}, {"type", "message"}, {"status", status}, {"role", "assistant"}, {"content", std::move(content)}};
}

Json textPart(const std::string& text)
{
    return {{"type", "output_text"}, {"text", text}};
}

} // namespace

ResponsesStreamWriter::ResponsesStreamWriter(std::string responseID)
    : m_responseID(std::move(responseID))
{
}

std::string ResponsesStreamWriter::itemID(const char* kind) const
{
    return std::string(kind) + "_" + m_responseID + "_" + std::to_string(m_items);
}

std::string ResponsesStreamWriter::write(Json event)
{
    event["sequence_number"] = m_events++;
    return ServerSentEvents::text({readString(event, "type").value_or("message"), dumpJson(event)});
}

std::string ResponsesStreamWriter::created()
{
    return write(OpenAIResponseEvent::created(m_responseID));
}

std::string ResponsesStreamWriter::reasoningDelta(std::string_view text)
{
    const std::string before = closeText();
    return before + write(OpenAIResponseEvent::reasoningDelta(text));
}

std::string ResponsesStreamWriter::textDelta(std::string_view text)
{
    const std::string id = itemID("msg");
    std::string bytes;
    if (!std::exchange(m_isTextOpen, true)) {
        bytes += write({{"type", "response.output_item.added"}, {"output_index", m_items},
            {"item", messageItem(id, Json::array(), "in_progress")}});
        bytes += write({{"type", "response.content_part.added"}, {"item_id", id}, {"output_index", m_items},
            {"content_index", 0}, {"part", textPart("")}});
    }
    m_text += text;
    Json event = OpenAIResponseEvent::textDelta(text);
    event["item_id"] = id;
    event["output_index"] = m_items;
    event["content_index"] = 0;
    return bytes + write(std::move(event));
}

std::string ResponsesStreamWriter::closeText()
{
    if (!std::exchange(m_isTextOpen, false))
        return {};
    const std::string id = itemID("msg");
    const std::string text = std::exchange(m_text, {});
    Json done = OpenAIResponseEvent::textDone(text);
    done["item_id"] = id;
    done["output_index"] = m_items;
    done["content_index"] = 0;
    std::string bytes = write(std::move(done));
    bytes += write({{"type", "response.content_part.done"}, {"item_id", id}, {"output_index", m_items},
        {"content_index", 0}, {"part", textPart(text)}});
    bytes += write({{"type", "response.output_item.done"}, {"output_index", m_items},
        {"item", messageItem(id, Json::array({textPart(text)}), "completed")}});
    ++m_items;
    return bytes;
}

std::string ResponsesStreamWriter::functionCall(const openai_event::FunctionCall& call)
{
    std::string bytes = closeText();
    const std::string id = itemID("fc");
    const auto withItem = [&](Json event) {
        event["output_index"] = m_items;
        if (Json* item = event.contains("item") ? &event["item"] : nullptr)
            (*item)["id"] = id;
        else
            event["item_id"] = id;
        return write(std::move(event));
    };
    bytes += withItem(OpenAIResponseEvent::functionCallAdded(call));
    bytes += withItem(OpenAIResponseEvent::argumentsDelta(call.arguments));
    if (!call.incomplete)
        bytes += withItem({{"type", "response.function_call_arguments.done"}, {"arguments", call.arguments}});
    bytes += withItem(OpenAIResponseEvent::functionCallDone(call));
    ++m_items;
    return bytes;
}

std::string ResponsesStreamWriter::ended(OpenAIResponseEnd end)
{
    end.responseID = m_responseID;
    const std::string before = closeText();
    return before + write(OpenAIResponseEvent::ended(end));
}

std::string ResponsesStreamWriter::error(const OpenAIErrorReport& report)
{
    return write({{"type", "error"}, {"code", report.code}, {"message", report.message}});
}

} // namespace quorvell
