// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"

#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/text/Base64.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace quorvell {

namespace {

Json serverContent(const char* key, Json value)
{
    return {{"serverContent", {{key, std::move(value)}}}};
}

/// "9.500s"
std::string durationText(std::chrono::milliseconds duration)
{
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%lld.%03llds", static_cast<long long>(duration.count() / 1000),
        static_cast<long long>(duration.count() % 1000));
    return buffer.data();
}

} // namespace

Json GeminiServerMessage::setupComplete(std::string_view sessionID)
{
    Json state = Json::object();
    if (!sessionID.empty())
        state["sessionId"] = sessionID;
    return {{"setupComplete", std::move(state)}};
}

Json GeminiServerMessage::audio(std::span<const std::uint8_t> pcm)
{
    const Json blob{{"data", base64Encode(pcm)}, {"mimeType", audioMimeType}};
    return serverContent("modelTurn", {{"parts", Json::array({Json{{"inlineData", blob}}})}});
}

std::string GeminiServerMessage::audioText(std::span<const std::uint8_t> pcm)
{
    return audioBlobText(geminiServerAudio, audioMimeType, pcm);
}

Json GeminiServerMessage::inputTranscription(std::string_view text)
{
    return serverContent("inputTranscription", {{"text", text}});
}

Json GeminiServerMessage::outputTranscription(std::string_view text)
{
    return serverContent("outputTranscription", {{"text", text}});
}

Json GeminiServerMessage::interrupted()
{
    return serverContent("interrupted", true);
}

Json GeminiServerMessage::generationComplete()
{
    return serverContent("generationComplete", true);
}

Json GeminiServerMessage::turnComplete()
{
    return serverContent("turnComplete", true);
}

Json GeminiServerMessage::toolCall(const std::vector<LiveFunctionCall>& calls)
{
    Json list = Json::array();
    for (const LiveFunctionCall& call : calls)
        list.push_back({{"id", call.id}, {"name", call.name}, {"args", call.args}});
    return {{"toolCall", {{"functionCalls", std::move(list)}}}};
}

Json GeminiServerMessage::toolCallCancellation(const std::vector<std::string>& ids)
{
    return {{"toolCallCancellation", {{"ids", ids}}}};
}

Json GeminiServerMessage::goAway(std::chrono::milliseconds timeLeft)
{
    return {{"goAway", {{"timeLeft", durationText(std::max(timeLeft, std::chrono::milliseconds(0)))}}}};
}

Json GeminiServerMessage::resumptionUpdate(std::string_view handle)
{
    Json update{{"resumable", !handle.empty()}};
    if (!handle.empty())
        update = {{"newHandle", handle}, {"resumable", true}};
    return {{"sessionResumptionUpdate", std::move(update)}};
}

Json GeminiServerMessage::usage(std::int64_t totalTokens)
{
    return {{"usageMetadata", {{"totalTokenCount", totalTokens}}}};
}

} // namespace quorvell
