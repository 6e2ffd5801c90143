// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/gemini/LiveServerParser.h"

#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/text/Base64.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace quorvell {

namespace {

using Events = std::vector<LiveServerEvent>;

constexpr std::string_view soundType = "audio/";

bool isTrue(const Json& object, std::string_view key)
{
    return readBool(object, key) == true;
}

/// Sound, and not a picture or a file. A blob that does not say what it is counts as sound.
bool isSound(const Json& blob)
{
    const Json* type = memberOf(blob, "mimeType");
    return !type || readString(*type).value_or("").starts_with(soundType);
}

void addSound(const Json& part, Events& events)
{
    const Json* blob = memberOf(part, "inlineData");
    const Json* data = blob && isSound(*blob) ? memberOf(*blob, "data") : nullptr;
    const auto* text = data ? data->get_ptr<const Json::string_t*>() : nullptr;
    if (auto pcm = text ? base64Decode(*text) : std::nullopt)
        events.emplace_back(live_event::Audio{std::move(*pcm)});
}

std::optional<std::string> transcriptOf(const Json& content, std::string_view key)
{
    const Json* transcript = memberOf(content, key);
    return transcript ? readString(*transcript, "text") : std::nullopt;
}

void addContent(const Json& content, Events& events)
{
    if (auto heard = transcriptOf(content, "inputTranscription"))
        events.emplace_back(live_event::InputTranscript{std::move(*heard)});
    const Json* turn = memberOf(content, "modelTurn");
    if (const Json* parts = turn ? memberOf(*turn, "parts") : nullptr; parts && parts->is_array()) {
        for (const Json& part : *parts)
            addSound(part, events);
    }
    if (auto said = transcriptOf(content, "outputTranscription"))
        events.emplace_back(live_event::OutputTranscript{std::move(*said)});
    if (isTrue(content, "interrupted"))
        events.emplace_back(live_event::Interrupted{});
    if (isTrue(content, "generationComplete"))
        events.emplace_back(live_event::GenerationComplete{});
    if (isTrue(content, "turnComplete"))
        events.emplace_back(live_event::TurnComplete{});
}

/// Arguments that are missing are none; any but an object cannot be trusted to be whole.
std::optional<LiveFunctionCall> functionCall(const Json& call)
{
    auto id = readString(call, "id");
    auto name = readString(call, "name");
    if (!id || !name || std::max(id->size(), name->size()) > LiveServerParser::longestID)
        return std::nullopt;
    LiveFunctionCall result{std::move(*id), std::move(*name)};
    const Json* args = memberOf(call, "args");
    if (args && args->is_object())
        result.args = *args;
    else if (args && !args->is_null())
        result.args[std::string(LiveFunctionCall::cutOffKey)] = true;
    return result;
}

void addToolCall(const Json& toolCall, Events& events)
{
    const Json* list = memberOf(toolCall, "functionCalls");
    if (!list || !list->is_array())
        return;
    live_event::ToolCall found;
    for (const Json& entry : *list) {
        if (auto call = functionCall(entry); call && found.calls.size() < LiveServerParser::mostCalls)
            found.calls.push_back(std::move(*call));
    }
    if (!found.calls.empty())
        events.emplace_back(std::move(found));
}

void addCancellation(const Json& cancellation, Events& events)
{
    if (auto ids = readStrings(cancellation, "ids"); ids && !ids->empty())
        events.emplace_back(live_event::ToolCallCancellation{std::move(*ids)});
}

/// "9.5s". The text is a duration in seconds and says so.
std::optional<std::chrono::milliseconds> readDuration(std::string_view text)
{
    constexpr double mostSeconds = 1e9;
    double seconds = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    const bool isWhole = problem == std::errc{} && std::string_view(end, text.data() + text.size()) == "s";
    if (!isWhole || !std::isfinite(seconds))
        return std::nullopt;
    return std::chrono::milliseconds(std::llround(std::clamp(seconds, 0.0, mostSeconds) * 1000));
}

void addGoAway(const Json& goAway, Events& events)
{
    if (goAway.is_object())
        events.emplace_back(live_event::GoAway{readDuration(readString(goAway, "timeLeft").value_or(""))});
}

void addResumption(const Json& update, Events& events)
{
    auto handle = isTrue(update, "resumable") ? readString(update, "newHandle") : std::nullopt;
    if (handle && !handle->empty())
        events.emplace_back(live_event::ResumptionHandle{std::move(*handle)});
}

void addUsage(const Json& usage, Events& events)
{
    constexpr std::int64_t mostTokens = 1'000'000'000'000; // no real count comes near; leaves room for adding up
    if (const auto tokens = readInteger(usage, "totalTokenCount"))
        events.emplace_back(live_event::Usage{std::clamp<std::int64_t>(*tokens, 0, mostTokens)});
}

void addSetupComplete(const Json& setup, Events& events)
{
    if (setup.is_object())
        events.emplace_back(live_event::SetupComplete{readString(setup, "sessionId").value_or("")});
}

struct Reader {
    std::string_view key;
    void (*add)(const Json&, Events&);
};

constexpr Reader readers[] = {
    {"setupComplete", addSetupComplete},
    {"serverContent", addContent},
    {"toolCall", addToolCall},
    {"toolCallCancellation", addCancellation},
    {"goAway", addGoAway},
    {"sessionResumptionUpdate", addResumption},
    {"usageMetadata", addUsage},
};

} // namespace

std::vector<LiveServerEvent> LiveServerParser::parse(std::string_view message)
{
    Events events;
    if (auto sound =
            message.size() <= limits.maximumBytes ? readAudioBlobText(message, geminiServerAudio) : std::nullopt;
        sound && sound->mimeType.starts_with(soundType)) {
        events.emplace_back(live_event::Audio{std::move(sound->pcm)});
        return events;
    }
    const auto json = parseJson(message, limits);
    if (!json)
        return events;
    for (const Reader& reader : readers) {
        if (const Json* member = memberOf(*json, reader.key))
            reader.add(*member, events);
    }
    return events;
}

} // namespace quorvell
