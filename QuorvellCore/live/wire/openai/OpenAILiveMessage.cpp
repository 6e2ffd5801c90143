// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"

#include "QuorvellCore/live/wire/openai/OpenAIAudioTypes.h"
#include "QuorvellCore/live/wire/openai/OpenAIItemCodec.h"
#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistorySeed.h"
#include "QuorvellCore/text/Base64.h"

#include <utility>

namespace quorvell {

namespace {

void setIfPresent(Json& object, const char* key, const std::optional<std::string>& value)
{
    if (value)
        object[key] = *value;
}

Json reasoning(const OpenAILiveSetupOptions& options)
{
    Json result = Json::object();
    setIfPresent(result, "effort", options.reasoningEffort);
    if (options.reasoningEffort != "none")
        setIfPresent(result, "summary", options.reasoningSummary);
    return result;
}

Json historyItems(const std::vector<LiveHistoryEntry>& history)
{
    Json items = Json::array();
    for (const auto& [role, text] : LiveHistorySeed::of(history))
        items.push_back(OpenAIItemCodec::message(role, text));
    return items;
}

} // namespace

Json OpenAILiveMessage::backend(const OpenAILiveSetupOptions& options)
{
    Json result{{"model", options.backendModel}, {"instructions", options.backendInstructions},
        {"tools", options.tools}, {"tool_choice", "auto"}, {"parallel_tool_calls", false}};
    if (Json thought = reasoning(options); !thought.empty())
        result["reasoning"] = std::move(thought);
    setIfPresent(result, "service_tier", options.serviceTier);
    if (options.verbosity)
        result["text"] = {{"verbosity", *options.verbosity}};
    if (options.maxOutputTokens)
        result["max_output_tokens"] = *options.maxOutputTokens;
    return result;
}

Json OpenAILiveMessage::session(const OpenAILiveSetupOptions& options, AudioFormat format)
{
    Json sound{{"output", {{"voice", options.voice}}}};
    if (format == AudioFormat::declared)
        sound["format"] = {{"type", "audio/pcm"}, {"rate", options.sampleRate}};
    Json result{{"model", options.model}, {"instructions", options.instructions}, {"audio", std::move(sound)},
        {"delegation", {{"type", "response"}, {"response", backend(options)}}}};
    if (Json items = historyItems(options.history); !items.empty())
        result["input"] = std::move(items);
    return result;
}

Json OpenAILiveMessage::sessionStart(const OpenAILiveSetupOptions& options, AudioFormat format)
{
    return {{"type", "session.start"}, {"event_id", "start"}, {"session", session(options, format)}};
}

Json OpenAILiveMessage::close()
{
    return {{"type", "session.close"}, {"event_id", "close"}};
}

Json OpenAILiveMessage::audio(std::span<const std::uint8_t> pcm)
{
    return {{"type", OpenAIAudioTypes::input}, {"audio", base64Encode(pcm)}};
}

std::string OpenAILiveMessage::audioText(std::span<const std::uint8_t> pcm)
{
    return audioFrameText(OpenAIAudioTypes::input, "audio", pcm);
}

Json OpenAILiveMessage::instructions(std::string_view text, const OpenAIAppendIDs& ids)
{
    return append("session.instructions.append", text, ids);
}

Json OpenAILiveMessage::commentary(std::string_view text, const OpenAIAppendIDs& ids)
{
    return append("session.commentary.append", text, ids);
}

Json OpenAILiveMessage::thinking(std::string_view text, const OpenAIAppendIDs& ids)
{
    return append("session.thinking.append", text, ids);
}

Json OpenAILiveMessage::append(std::string_view type, std::string_view text, const OpenAIAppendIDs& ids)
{
    Json message{{"type", type}};
    setIfPresent(message, "delegation_id", ids.delegationID);
    message["content"] = text;
    setIfPresent(message, "event_id", ids.eventID);
    return message;
}

Json OpenAILiveMessage::backendMessage(
    std::string_view text, const std::optional<LiveImage>& image, const std::optional<std::string>& eventID)
{
    const auto images = image ? std::vector{*image} : std::vector<LiveImage>();
    return itemCreate(OpenAIItemCodec::message("user", text, images), eventID);
}

std::vector<Json> OpenAILiveMessage::functionOutput(
    std::string_view callID, std::string_view output, const std::optional<LiveImage>& image, std::string_view imageText)
{
    std::vector<Json> messages;
    messages.push_back(
        itemCreate(OpenAIItemCodec::encode(openai_item::FunctionOutput{std::string(callID), std::string(output)})));
    if (image)
        messages.push_back(backendMessage(imageText, image));
    return messages;
}

Json OpenAILiveMessage::itemCreate(Json item, const std::optional<std::string>& eventID)
{
    Json message{{"type", "response.item.create"}, {"item", std::move(item)}};
    setIfPresent(message, "event_id", eventID);
    return message;
}

Json OpenAILiveMessage::responseCreate(const std::optional<std::string>& eventID)
{
    Json message{{"type", "response.create"}};
    setIfPresent(message, "event_id", eventID);
    return message;
}

} // namespace quorvell
