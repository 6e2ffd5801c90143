// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"

#include "QuorvellCore/live/wire/openai/OpenAIAudioTypes.h"
#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace quorvell {

namespace {

using Events = std::vector<OpenAILiveEvent>;

/// A list of one without copying its element, as an initialiser list would: sound comes through here.
template <typename Event> Events one(Event event)
{
    Events events;
    events.emplace_back(std::move(event));
    return events;
}

const Json* innerMemberOf(const Json& object, std::string_view key, std::string_view innerKey)
{
    const Json* inner = memberOf(object, key);
    return inner ? memberOf(*inner, innerKey) : nullptr;
}

std::optional<std::string> readInnerString(const Json& object, std::string_view key, std::string_view innerKey)
{
    const Json* inner = innerMemberOf(object, key, innerKey);
    return inner ? readString(*inner) : std::nullopt;
}

/// Ids are remembered by the hundred; one that is longer than any is none.
std::optional<std::string> withinBound(std::optional<std::string> id)
{
    return id && id->size() <= OpenAILiveParser::longestID ? std::move(id) : std::nullopt;
}

std::optional<double> readInnerNumber(const Json& object, std::string_view key, std::string_view innerKey)
{
    const Json* inner = innerMemberOf(object, key, innerKey);
    return inner ? readNumber(*inner) : std::nullopt;
}

Events readStarted(const Json& message)
{
    auto id = withinBound(readInnerString(message, "session", "id"));
    return id ? one(openai_event::Started{std::move(*id)}) : Events{};
}

Events readAudio(const Json& message)
{
    const Json* delta = memberOf(message, "delta");
    const auto* text = delta ? delta->get_ptr<const Json::string_t*>() : nullptr;
    auto pcm = text ? base64Decode(*text) : std::nullopt;
    return pcm ? one(openai_event::Audio{std::move(*pcm)}) : Events{};
}

Events readInputTranscript(const Json& message)
{
    auto delta = readString(message, "delta");
    return delta ? one(openai_event::InputTranscript{std::move(*delta)}) : Events{};
}

Events readOutputTranscript(const Json& message)
{
    auto delta = readString(message, "delta");
    return delta ? one(openai_event::OutputTranscript{std::move(*delta)}) : Events{};
}

Events readDelegated(const Json& message)
{
    auto id = withinBound(readInnerString(message, "delegation", "id"));
    return id ? one(openai_event::Delegated{std::move(*id)}) : Events{};
}

Events readResponseEvent(const Json& message)
{
    const Json* event = memberOf(message, "event");
    return event ? OpenAILiveParser::parseBackend(*event) : Events{};
}

Events readUsage(const Json& message)
{
    return one(openai_event::Usage{
        readInnerNumber(message, "usage", "seconds"), readInnerNumber(message, "context_window", "usage_ratio")});
}

Events readError(const Json& message)
{
    auto clientEventID = withinBound(readInnerString(message, "error", "client_event_id"));
    if (!clientEventID)
        clientEventID = withinBound(readString(message, "client_event_id"));
    return one(openai_event::Error{readInnerString(message, "error", "code"),
        readInnerString(message, "error", "message"), std::move(clientEventID)});
}

Events readClosed(const Json& message)
{
    return one(openai_event::Closed{readString(message, "reason").value_or("unknown")});
}

Events readBackendStarted(const Json& event)
{
    auto id = withinBound(readInnerString(event, "response", "id"));
    return id ? one(openai_event::BackendStarted{std::move(*id)}) : Events{};
}

/// A count of tokens. No real one comes near the limit, which leaves room for adding them up.
std::int64_t readTokens(const Json& object, std::string_view key)
{
    constexpr std::int64_t mostTokens = 1'000'000'000'000;
    return std::clamp<std::int64_t>(readInteger(object, key).value_or(0), 0, mostTokens);
}

openai_event::BackendUsage readBackendUsage(const Json& usage)
{
    const Json* details = memberOf(usage, "input_tokens_details");
    return {readTokens(usage, "input_tokens"), details ? readTokens(*details, "cached_tokens") : 0,
        readTokens(usage, "output_tokens")};
}

Events readBackendEnded(const Json& event, const char* statusOfName)
{
    const Json* response = memberOf(event, "response");
    auto id = response ? withinBound(readString(*response, "id")) : std::nullopt;
    if (!id)
        return {};
    Events events =
        one(openai_event::BackendEnded{std::move(*id), readString(*response, "status").value_or(statusOfName)});
    if (const Json* usage = memberOf(*response, "usage"); usage && usage->is_object())
        events.emplace_back(readBackendUsage(*usage));
    if (auto tier = readString(*response, "service_tier"))
        events.emplace_back(openai_event::ServedTier{std::move(*tier)});
    return events;
}

Events readCompleted(const Json& event)
{
    return readBackendEnded(event, "completed");
}

Events readFailed(const Json& event)
{
    return readBackendEnded(event, "failed");
}

Events readIncomplete(const Json& event)
{
    return readBackendEnded(event, "incomplete");
}

Events readCancelled(const Json& event)
{
    return readBackendEnded(event, "cancelled");
}

/// The item of an event if it is a function call.
const Json* functionCallItem(const Json& event)
{
    const Json* item = memberOf(event, "item");
    return item && readString(*item, "type") == "function_call" ? item : nullptr;
}

Events readItemAdded(const Json& event)
{
    const Json* item = functionCallItem(event);
    auto name = item ? readString(*item, "name") : std::nullopt;
    return name ? one(openai_event::ToolChosen{std::move(*name)}) : Events{};
}

/// Anything but a text is handed on as the JSON it is, so that the call is still answered.
std::string readArguments(const Json& item)
{
    const Json* arguments = memberOf(item, "arguments");
    if (!arguments || arguments->is_null())
        return {};
    const auto* text = arguments->get_ptr<const Json::string_t*>();
    return text ? *text : dumpJson(*arguments);
}

Events readItemDone(const Json& event)
{
    const Json* item = functionCallItem(event);
    if (!item)
        return {};
    auto id = withinBound(readString(*item, "call_id"));
    auto name = withinBound(readString(*item, "name"));
    if (!id || !name)
        return {};
    return one(openai_event::FunctionCall{
        std::move(*id), std::move(*name), readArguments(*item), readString(*item, "status") == "incomplete"});
}

Events readReasoning(const Json& event)
{
    auto delta = readString(event, "delta");
    return delta ? one(openai_event::Reasoning{std::move(*delta)}) : Events{};
}

Events readReasoningBreak(const Json&)
{
    return one(openai_event::Reasoning{});
}

Events readBackendText(const Json& event)
{
    auto text = readString(event, "text");
    return text ? one(openai_event::BackendText{std::move(*text)}) : Events{};
}

struct ServerReader {
    std::string_view type;
    Events (*read)(const Json&);
};

constexpr std::array sessionReaders{
    ServerReader{"session.started", readStarted},
    ServerReader{OpenAIAudioTypes::output, readAudio},
    ServerReader{"session.input_transcript.delta", readInputTranscript},
    ServerReader{"session.output_transcript.delta", readOutputTranscript},
    ServerReader{"session.delegation.created", readDelegated},
    ServerReader{"response.event", readResponseEvent},
    ServerReader{"session.usage.updated", readUsage},
    ServerReader{"error", readError},
    ServerReader{"session.closed", readClosed},
};

constexpr std::array backendReaders{
    ServerReader{"response.created", readBackendStarted},
    ServerReader{"response.completed", readCompleted},
    ServerReader{"response.failed", readFailed},
    ServerReader{"response.incomplete", readIncomplete},
    ServerReader{"response.cancelled", readCancelled},
    ServerReader{"response.done", readCompleted},
    ServerReader{"response.output_item.added", readItemAdded},
    ServerReader{"response.output_item.done", readItemDone},
    ServerReader{"response.reasoning_summary_text.delta", readReasoning},
    ServerReader{"response.reasoning_summary_part.added", readReasoningBreak},
    ServerReader{"response.output_text.done", readBackendText},
};

Events readWith(std::span<const ServerReader> readers, const Json& message)
{
    const auto type = readString(message, "type");
    if (!type)
        return {};
    const auto reader =
        std::find_if(readers.begin(), readers.end(), [&](const ServerReader& entry) { return entry.type == *type; });
    return reader == readers.end() ? Events{} : reader->read(message);
}

} // namespace

std::vector<OpenAILiveEvent> OpenAILiveParser::parse(std::string_view message)
{
    if (auto pcm = message.size() <= limits.maximumBytes
            ? readAudioFrameText(message, OpenAIAudioTypes::output, "delta")
            : std::nullopt)
        return one(openai_event::Audio{std::move(*pcm)});
    const auto json = parseJson(message, limits);
    return json ? readWith(sessionReaders, *json) : Events{};
}

std::vector<OpenAILiveEvent> OpenAILiveParser::parseBackend(const Json& event)
{
    return readWith(backendReaders, event);
}

} // namespace quorvell
