// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"

#include "QuorvellCore/live/wire/gemini/LiveMessage.h"
#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <utility>

namespace quorvell {

namespace {

using Message = GeminiClientMessage;

Message malformed(std::string reason)
{
    return gemini_client::Malformed{std::move(reason)};
}

const Json* innerMember(const Json& object, std::initializer_list<std::string_view> path)
{
    const Json* value = &object;
    for (const std::string_view key : path)
        value = value ? memberOf(*value, key) : nullptr;
    return value;
}

std::optional<std::string> innerText(const Json& object, std::initializer_list<std::string_view> path)
{
    const Json* value = innerMember(object, path);
    return value ? readString(*value) : std::nullopt;
}

/// The text parts of a content, a line break between two. Nothing when a part is something else.
std::optional<std::string> partsText(const Json& content)
{
    const Json* parts = memberOf(content, "parts");
    if (!parts || !parts->is_array())
        return std::nullopt;
    std::string joined;
    for (const Json& part : *parts) {
        const auto text = readString(part, "text");
        if (!text)
            return std::nullopt;
        joined += (&part == &parts->front() ? "" : "\n") + *text;
    }
    return joined;
}

/// "audio/pcm;rate=16000"; without a rate it is the usual one.
std::optional<int> sampleRateOf(std::string_view mimeType)
{
    constexpr std::string_view type = "audio/pcm";
    constexpr std::string_view mark = ";rate=";
    if (!mimeType.starts_with(type))
        return std::nullopt;
    mimeType.remove_prefix(type.size());
    if (mimeType.empty())
        return LiveMessage::inputSampleRate;
    if (!mimeType.starts_with(mark))
        return std::nullopt;
    mimeType.remove_prefix(mark.size());
    int rate = 0;
    const auto [end, problem] = std::from_chars(mimeType.data(), mimeType.data() + mimeType.size(), rate);
    const bool isUsable = problem == std::errc{} && end == mimeType.data() + mimeType.size()
        && rate >= GeminiClientParser::minimumSampleRate && rate <= GeminiClientParser::maximumSampleRate;
    return isUsable ? std::optional(rate) : std::nullopt;
}

Message audioMessage(std::optional<Bytes> pcm, std::string_view mimeType)
{
    const auto rate = sampleRateOf(mimeType);
    if (!rate)
        return malformed("\"mimeType\" of \"audio\" must be \"audio/pcm\" with a \"rate\" from 8000 to 48000.");
    if (!pcm || pcm->size() % 2 != 0)
        return malformed("\"data\" of \"audio\" is no base64 of whole 16-bit samples.");
    return gemini_client::Audio{std::move(*pcm), *rate};
}

std::optional<Bytes> blobBytes(const Json& blob)
{
    const Json* data = memberOf(blob, "data");
    const auto* text = data ? data->get_ptr<const Json::string_t*>() : nullptr;
    return text ? base64Decode(*text) : std::nullopt;
}

Message readRealtimeInput(const Json& input)
{
    if (const Json* audio = memberOf(input, "audio"))
        return audioMessage(blobBytes(*audio), readString(*audio, "mimeType").value_or(""));
    if (const Json* video = memberOf(input, "video")) {
        auto jpeg = blobBytes(*video);
        if (!jpeg || readString(*video, "mimeType") != LiveMessage::imageMimeType)
            return malformed("\"video\" must hold base64 \"data\" of type image/jpeg.");
        return gemini_client::Image{std::move(*jpeg)};
    }
    if (readBool(input, "audioStreamEnd") == true)
        return gemini_client::AudioStreamEnd{};
    return malformed("\"realtimeInput\" must hold \"audio\", \"video\" or \"audioStreamEnd\".");
}

bool isToolList(const Json& tools)
{
    if (!tools.is_array() || tools.size() > GeminiClientParser::maximumTools)
        return false;
    std::size_t declarations = 0;
    for (const Json& group : tools) {
        const Json* list = memberOf(group, "functionDeclarations");
        if (!list || !list->is_array()
            || !std::all_of(list->begin(), list->end(), [](const Json& tool) { return tool.is_object(); }))
            return false;
        declarations += list->size();
    }
    return declarations <= GeminiClientParser::maximumTools;
}

Message readSetup(const Json& setup)
{
    constexpr std::string_view modelPrefix = "models/";
    auto model = readString(setup, "model");
    if (!model || !model->starts_with(modelPrefix))
        return malformed("\"model\" must be a text that begins with \"models/\".");
    LiveSetupOptions options;
    options.model = model->substr(modelPrefix.size());
    options.voiceName =
        innerText(setup, {"generationConfig", "speechConfig", "voiceConfig", "prebuiltVoiceConfig", "voiceName"})
            .value_or("");
    options.thinkingLevel = innerText(setup, {"generationConfig", "thinkingConfig", "thinkingLevel"});
    if (const Json* instruction = memberOf(setup, "systemInstruction"))
        options.systemInstruction = partsText(*instruction).value_or("");
    if (const Json* tools = memberOf(setup, "tools")) {
        if (!isToolList(*tools))
            return malformed("\"tools\" must be groups of \"functionDeclarations\", at most 256 in all.");
        options.tools = *tools;
    }
    const Json* silence =
        innerMember(setup, {"realtimeInputConfig", "automaticActivityDetection", "silenceDurationMs"});
    options.silenceDurationMs = static_cast<int>(std::clamp<std::int64_t>(
        silence ? readInteger(*silence).value_or(LiveSetupOptions::usualSilenceMs) : LiveSetupOptions::usualSilenceMs,
        0, GeminiClientParser::maximumSilenceMs));
    options.resumptionHandle = innerText(setup, {"sessionResumption", "handle"});
    return gemini_client::Setup{std::move(options)};
}

Message readContent(const Json& content)
{
    const Json* turns = memberOf(content, "turns");
    if (!turns || !turns->is_array() || turns->size() > GeminiClientParser::maximumTurns)
        return malformed("\"turns\" must be a list of at most 256 turns.");
    gemini_client::Content result{{}, readBool(content, "turnComplete").value_or(false)};
    for (const Json& turn : *turns) {
        const auto role = readString(turn, "role").value_or("user");
        auto text = partsText(turn);
        if (!text || (role != "user" && role != "model"))
            return malformed("A turn must have \"role\" \"user\" or \"model\" and \"parts\" of text.");
        result.turns.push_back({role == "model" ? "assistant" : "user", std::move(*text)});
    }
    return result;
}

Message readToolResponse(const Json& toolResponse)
{
    const Json* list = memberOf(toolResponse, "functionResponses");
    if (!list || !list->is_array() || list->size() > GeminiClientParser::maximumResponses)
        return malformed("\"functionResponses\" must be a list of at most 64 responses.");
    gemini_client::ToolResponse result;
    for (const Json& entry : *list) {
        auto id = readString(entry, "id");
        const Json* response = memberOf(entry, "response");
        if (!id || !response || !response->is_object())
            return malformed("A function response must have an \"id\" and a \"response\" that is an object.");
        result.responses.push_back({std::move(*id), readString(entry, "name").value_or(""), *response});
    }
    return result;
}

struct ClientReader {
    std::string_view key;
    Message (*read)(const Json&);
};

constexpr ClientReader clientReaders[] = {
    {"setup", readSetup},
    {"realtimeInput", readRealtimeInput},
    {"clientContent", readContent},
    {"toolResponse", readToolResponse},
};

} // namespace

GeminiClientMessage GeminiClientParser::parse(std::string_view message)
{
    if (message.size() <= limits.maximumBytes) {
        if (auto sound = readAudioBlobText(message, geminiClientAudio))
            return audioMessage(std::move(sound->pcm), sound->mimeType);
    }
    const auto json = parseJson(message, limits);
    if (!json || !json->is_object())
        return malformed("The message is no JSON object, or is too large.");
    for (const ClientReader& reader : clientReaders) {
        if (const Json* member = memberOf(*json, reader.key))
            return reader.read(*member);
    }
    return malformed("The message is none of \"setup\", \"realtimeInput\", \"clientContent\", \"toolResponse\".");
}

} // namespace quorvell
