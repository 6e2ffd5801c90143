// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/responses/ResponsesStreamParser.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveEventMapper.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Events = std::vector<ResponsesStreamEvent>;

/// From a member that may stand in an inner object or beside it.
std::optional<std::string> readEither(const Json& object, std::string_view inner, std::string_view key)
{
    const Json* within = memberOf(object, inner);
    auto text = within ? readString(*within, key) : std::nullopt;
    return text ? text : readString(object, key);
}

/// What a refused answer says stands in the place of the answer.
std::optional<ResponsesStreamEvent> writtenText(std::string_view type, const Json& event)
{
    if (type == "response.output_text.delta" || type == "response.refusal.delta") {
        auto delta = readString(event, "delta");
        return delta ? std::optional<ResponsesStreamEvent>(responses_event::TextDelta{std::move(*delta)})
                     : std::nullopt;
    }
    auto text = type == "response.refusal.done" ? readString(event, "refusal")
        : type == "response.output_text.done"   ? readString(event, "text")
                                                : std::nullopt;
    return text ? std::optional<ResponsesStreamEvent>(responses_event::Text{std::move(*text)}) : std::nullopt;
}

std::string detailOf(const Json& event)
{
    const Json* response = memberOf(event, "response");
    const Json* error = response ? memberOf(*response, "error") : nullptr;
    if (auto message = error ? readString(*error, "message") : std::nullopt)
        return std::move(*message);
    const Json* reasons = response ? memberOf(*response, "incomplete_details") : nullptr;
    return reasons ? readString(*reasons, "reason").value_or("") : "";
}

} // namespace

std::vector<ResponsesStreamEvent> ResponsesStreamParser::read(std::string_view data)
{
    Events out;
    auto event = m_isEnded ? std::nullopt : parseJson(data, limits);
    if (!event && !m_isEnded)
        event = parseJson(repairUtf8(data), limits); // a bad byte must not cost a piece of the answer
    const auto type = event ? readString(*event, "type") : std::nullopt;
    if (!type)
        return out;
    if (auto written = writtenText(*type, *event))
        out.push_back(std::move(*written));
    else if (*type == "response.function_call_arguments.delta")
        readArguments(*event);
    else if (*type == "error")
        readError(*event, out);
    else
        readOther(*event, out);
    return out;
}

ResponsesStreamParser::OpenCall* ResponsesStreamParser::openCall(std::string_view itemID)
{
    const auto found =
        std::find_if(m_open.begin(), m_open.end(), [&](const OpenCall& call) { return call.itemID == itemID; });
    return found == m_open.end() ? nullptr : &*found;
}

void ResponsesStreamParser::open(const Json& event)
{
    const Json* item = memberOf(event, "item");
    auto callID = item ? readString(*item, "call_id") : std::nullopt;
    if (!callID || m_open.size() == maximumOpenCalls)
        return;
    m_open.push_back(
        {readString(*item, "id").value_or(""), std::move(*callID), readString(*item, "name").value_or(""), {}});
}

void ResponsesStreamParser::readArguments(const Json& event)
{
    OpenCall* call = openCall(readString(event, "item_id").value_or(""));
    const auto delta = readString(event, "delta");
    if (call && delta && call->arguments.size() + delta->size() <= limits.maximumBytes)
        call->arguments += *delta;
}

void ResponsesStreamParser::readError(const Json& event, Events& out)
{
    const std::string message =
        readEither(event, "error", "message").value_or("The service reported an error without saying which.");
    out.emplace_back(LiveServerEvent(live_event::ServerError{readEither(event, "error", "code"), message}));
    end({m_responseID, "failed", message}, out);
}

void ResponsesStreamParser::readOther(const Json& event, Events& out)
{
    std::optional<responses_event::Ended> ended;
    for (OpenAILiveEvent& read : OpenAILiveParser::parseBackend(event)) {
        if (auto* started = std::get_if<openai_event::BackendStarted>(&read)) {
            m_responseID = started->responseID;
            out.emplace_back(responses_event::Started{std::move(started->responseID)});
            continue;
        }
        if (auto* stopped = std::get_if<openai_event::BackendEnded>(&read)) {
            ended = {std::move(stopped->responseID), std::move(stopped->status), detailOf(event)};
            continue;
        }
        if (std::holds_alternative<openai_event::ToolChosen>(read))
            open(event);
        if (auto* call = std::get_if<openai_event::FunctionCall>(&read)) {
            const auto known = std::find_if(
                m_open.begin(), m_open.end(), [&](const OpenCall& one) { return one.callID == call->callID; });
            if (known != m_open.end() && call->arguments.empty())
                call->arguments = std::move(known->arguments);
            if (known != m_open.end())
                m_open.erase(known);
        }
        for (LiveServerEvent& mapped : OpenAILiveEventMapper::map(std::move(read)))
            out.emplace_back(std::move(mapped));
    }
    if (ended)
        end(std::move(*ended), out);
}

void ResponsesStreamParser::end(responses_event::Ended ended, Events& out)
{
    for (OpenCall& call : std::exchange(m_open, {})) {
        live_event::ToolCall cutOff;
        cutOff.calls.push_back(
            LiveFunctionCall::fromArgumentsText(std::move(call.callID), std::move(call.name), call.arguments, true));
        out.emplace_back(LiveServerEvent(std::move(cutOff)));
    }
    m_isEnded = true;
    out.emplace_back(std::move(ended));
}

} // namespace quorvell
