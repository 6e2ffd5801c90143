// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"

#include "QuorvellCore/live/wire/openai/OpenAIAudioTypes.h"
#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

Json OpenAILiveServerMessage::sessionStarted(std::string_view sessionID)
{
    return {{"type", "session.started"}, {"session", {{"id", sessionID}}}};
}

Json OpenAILiveServerMessage::sessionClosed(std::string_view reason)
{
    return {{"type", "session.closed"}, {"reason", reason}};
}

Json OpenAILiveServerMessage::outputAudioDelta(std::span<const std::uint8_t> pcm)
{
    return {{"type", OpenAIAudioTypes::output}, {"delta", base64Encode(pcm)}};
}

std::string OpenAILiveServerMessage::outputAudioDeltaText(std::span<const std::uint8_t> pcm)
{
    return audioFrameText(OpenAIAudioTypes::output, "delta", pcm);
}

Json OpenAILiveServerMessage::outputTranscriptDelta(std::string_view text)
{
    return {{"type", "session.output_transcript.delta"}, {"delta", text}};
}

Json OpenAILiveServerMessage::inputTranscriptDelta(std::string_view text)
{
    return {{"type", "session.input_transcript.delta"}, {"delta", text}};
}

Json OpenAILiveServerMessage::delegationCreated(std::string_view delegationID)
{
    return {{"type", "session.delegation.created"}, {"delegation", {{"id", delegationID}}}};
}

Json OpenAILiveServerMessage::responseEvent(Json event)
{
    return {{"type", "response.event"}, {"event", std::move(event)}};
}

Json OpenAILiveServerMessage::usageUpdated(std::optional<double> seconds, std::optional<double> contextRatio)
{
    Json message{{"type", "session.usage.updated"}};
    if (seconds)
        message["usage"] = {{"seconds", *seconds}};
    if (contextRatio)
        message["context_window"] = {{"usage_ratio", *contextRatio}};
    return message;
}

Json OpenAILiveServerMessage::error(const OpenAIErrorReport& report)
{
    Json details{{"type", report.type}, {"code", report.code}, {"message", report.message}};
    if (report.clientEventID)
        details["client_event_id"] = *report.clientEventID;
    return {{"type", "error"}, {"error", std::move(details)}};
}

} // namespace quorvell
