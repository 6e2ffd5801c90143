// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

const char* statusText(OpenAIResponseEnd::Status status)
{
    switch (status) {
    case OpenAIResponseEnd::Status::completed:
        return "completed";
    case OpenAIResponseEnd::Status::failed:
        return "failed";
    case OpenAIResponseEnd::Status::incomplete:
        return "incomplete";
    case OpenAIResponseEnd::Status::cancelled:
        return "cancelled";
    }
    return "failed";
}

Json callItem(const openai_event::FunctionCall& call, std::string_view arguments, const char* status)
{
    return {{"type", "function_call"}, {"call_id", call.callID}, {"name", call.name}, {"arguments", arguments},
        {"status", status}};
}

Json usageObject(const openai_event::BackendUsage& usage)
{
    return {{"input_tokens", usage.inputTokens}, {"input_tokens_details", {{"cached_tokens", usage.cachedTokens}}},
        {"output_tokens", usage.outputTokens}, {"total_tokens", usage.inputTokens + usage.outputTokens}};
}

} // namespace

Json OpenAIResponseEvent::created(std::string_view responseID)
{
    return {{"type", "response.created"}, {"response", {{"id", responseID}, {"status", "in_progress"}}}};
}

Json OpenAIResponseEvent::functionCallAdded(const openai_event::FunctionCall& call)
{
    return {{"type", "response.output_item.added"}, {"item", callItem(call, "", "in_progress")}};
}

Json OpenAIResponseEvent::argumentsDelta(std::string_view text)
{
    return {{"type", "response.function_call_arguments.delta"}, {"delta", text}};
}

Json OpenAIResponseEvent::functionCallDone(const openai_event::FunctionCall& call)
{
    const char* status = call.incomplete ? "incomplete" : "completed";
    return {{"type", "response.output_item.done"}, {"item", callItem(call, call.arguments, status)}};
}

Json OpenAIResponseEvent::reasoningDelta(std::string_view text)
{
    return {{"type", "response.reasoning_summary_text.delta"}, {"delta", text}};
}

Json OpenAIResponseEvent::reasoningBreak()
{
    return {{"type", "response.reasoning_summary_part.added"}};
}

Json OpenAIResponseEvent::textDelta(std::string_view text)
{
    return {{"type", "response.output_text.delta"}, {"delta", text}};
}

Json OpenAIResponseEvent::textDone(std::string_view text)
{
    return {{"type", "response.output_text.done"}, {"text", text}};
}

Json OpenAIResponseEvent::ended(const OpenAIResponseEnd& end)
{
    const char* status = statusText(end.status);
    Json response{{"id", end.responseID}, {"status", status}};
    if (end.usage)
        response["usage"] = usageObject(*end.usage);
    if (end.serviceTier)
        response["service_tier"] = *end.serviceTier;
    if (!end.detail.empty() && end.status == OpenAIResponseEnd::Status::failed)
        response["error"] = {{"code", "server_error"}, {"message", end.detail}};
    if (!end.detail.empty() && end.status == OpenAIResponseEnd::Status::incomplete)
        response["incomplete_details"] = {{"reason", end.detail}};
    return {{"type", std::string("response.") + status}, {"response", std::move(response)}};
}

} // namespace quorvell
