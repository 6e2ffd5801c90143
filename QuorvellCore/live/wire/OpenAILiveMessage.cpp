#include "QuorvellCore/live/wire/OpenAILiveMessage.h"

#include "QuorvellCore/live/wire/AudioFrameText.h"
#include "QuorvellCore/live/wire/LiveHistorySeed.h"
#include "QuorvellCore/text/Base64.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view audioType = "session.input_audio.append";

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

Json messageItem(std::string_view role, Json content)
{
    return {{"type", "message"}, {"role", role}, {"content", std::move(content)}};
}

Json historyItems(const std::vector<LiveHistoryEntry>& history)
{
    Json items = Json::array();
    for (const auto& [role, text] : LiveHistorySeed::of(history)) {
        const char* type = role == "assistant" ? "output_text" : "input_text";
        items.push_back(messageItem(role, Json::array({Json{{"type", type}, {"text", text}}})));
    }
    return items;
}

Json imagePart(const LiveImage& image)
{
    return {{"type", "input_image"}, {"image_url", "data:image/jpeg;base64," + base64Encode(image.jpeg)},
        {"detail", image.detail}};
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
    return {{"type", audioType}, {"audio", base64Encode(pcm)}};
}

std::string OpenAILiveMessage::audioText(std::span<const std::uint8_t> pcm)
{
    return audioFrameText(audioType, "audio", pcm);
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
    Json content = Json::array({Json{{"type", "input_text"}, {"text", text}}});
    if (image)
        content.push_back(imagePart(*image));
    return itemCreate(messageItem("user", std::move(content)), eventID);
}

std::vector<Json> OpenAILiveMessage::functionOutput(
    std::string_view callID, std::string_view output, const std::optional<LiveImage>& image, std::string_view imageText)
{
    std::vector<Json> messages;
    messages.push_back(itemCreate({{"type", "function_call_output"}, {"call_id", callID}, {"output", output}}));
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
