// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"

#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistorySeed.h"
#include "QuorvellCore/text/Base64.h"

#include <utility>

namespace quorvell {

namespace {

Json blob(std::span<const std::uint8_t> bytes, std::string_view mimeType)
{
    return {{"data", base64Encode(bytes)}, {"mimeType", mimeType}};
}

Json turn(const char* role, std::string_view text)
{
    return {{"role", role}, {"parts", Json::array({Json{{"text", text}}})}};
}

Json clientContent(Json turns, bool isComplete)
{
    return {{"clientContent", {{"turns", std::move(turns)}, {"turnComplete", isComplete}}}};
}

Json generation(const LiveSetupOptions& options)
{
    Json config{{"responseModalities", Json::array({LiveMessage::modality})},
        {"speechConfig", {{"voiceConfig", {{"prebuiltVoiceConfig", {{"voiceName", options.voiceName}}}}}}}};
    if (options.thinkingLevel)
        config["thinkingConfig"] = {{"thinkingLevel", *options.thinkingLevel}};
    return config;
}

/// Eager to hear a start, slow to call an end: a cut-off user is worse than a late answer.
Json turnDetection(const LiveSetupOptions& options)
{
    return {
        {"automaticActivityDetection",
            {{"startOfSpeechSensitivity", "START_SENSITIVITY_HIGH"}, {"endOfSpeechSensitivity", "END_SENSITIVITY_LOW"},
                {"silenceDurationMs", options.silenceDurationMs}}},
        {"activityHandling", "START_OF_ACTIVITY_INTERRUPTS"}};
}

} // namespace

Json LiveMessage::setup(const LiveSetupOptions& options)
{
    Json resumption = Json::object();
    if (options.resumptionHandle)
        resumption["handle"] = *options.resumptionHandle;
    return {{"setup",
        {{"model", "models/" + options.model}, {"generationConfig", generation(options)},
            {"systemInstruction", {{"parts", Json::array({Json{{"text", options.systemInstruction}}})}}},
            {"tools", options.tools}, {"realtimeInputConfig", turnDetection(options)},
            {"inputAudioTranscription", Json::object()}, {"outputAudioTranscription", Json::object()},
            {"sessionResumption", std::move(resumption)},
            {"contextWindowCompression", {{"slidingWindow", Json::object()}}}}}};
}

Json LiveMessage::audio(std::span<const std::uint8_t> pcm)
{
    return {{"realtimeInput", {{"audio", blob(pcm, inputAudioMimeType)}}}};
}

std::string LiveMessage::audioText(std::span<const std::uint8_t> pcm)
{
    return audioBlobText(geminiClientAudio, inputAudioMimeType, pcm);
}

Json LiveMessage::image(std::span<const std::uint8_t> jpeg)
{
    return {{"realtimeInput", {{"video", blob(jpeg, imageMimeType)}}}};
}

Json LiveMessage::audioStreamEnd()
{
    return {{"realtimeInput", {{"audioStreamEnd", true}}}};
}

Json LiveMessage::text(std::string_view text)
{
    return clientContent(Json::array({turn("user", text)}), true);
}

Json LiveMessage::note(std::string_view text)
{
    return clientContent(Json::array({turn("user", text)}), false);
}

Json LiveMessage::answerNow()
{
    return clientContent(Json::array(), true);
}

std::optional<Json> LiveMessage::history(const std::vector<LiveHistoryEntry>& entries)
{
    Json turns = Json::array();
    for (const auto& [role, text] : LiveHistorySeed::of(entries))
        turns.push_back(turn(role == "assistant" ? "model" : "user", text));
    return turns.empty() ? std::nullopt : std::optional(clientContent(std::move(turns), false));
}

Json LiveMessage::toolResponse(const std::vector<LiveFunctionResponse>& responses)
{
    Json list = Json::array();
    for (const LiveFunctionResponse& response : responses)
        list.push_back({{"id", response.id}, {"name", response.name}, {"response", response.response}});
    return {{"toolResponse", {{"functionResponses", std::move(list)}}}};
}

} // namespace quorvell
