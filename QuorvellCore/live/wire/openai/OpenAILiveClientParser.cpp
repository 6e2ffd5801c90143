// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"

#include "QuorvellCore/live/wire/openai/OpenAIAudioTypes.h"
#include "QuorvellCore/live/wire/openai/OpenAIItemCodec.h"
#include "QuorvellCore/live/wire/openai/OpenAISessionReader.h"
#include "QuorvellCore/live/wire/transport/AudioFrameText.h"
#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Message = OpenAILiveClientMessage;

std::optional<std::string> eventIDOf(const Json& message)
{
    return readString(message, "event_id");
}

Message malformed(const char* code, std::string reason, const Json& message)
{
    return openai_client::Malformed{code, std::move(reason), eventIDOf(message)};
}

Message missingIn(const char* field, const Json& message)
{
    return malformed("missing_field", std::string("\"") + field + "\" is missing or is no text.", message);
}

Message readSessionStart(const Json& message)
{
    const Json* session = memberOf(message, "session");
    if (!session)
        return malformed("missing_field", "\"session\" is missing.", message);
    std::string problem;
    auto options = OpenAILiveClientParser::parseSession(*session, problem);
    if (!options)
        return malformed("invalid_value", std::move(problem), message);
    return openai_client::SessionStart{std::move(*options), eventIDOf(message)};
}

Message readInputAudio(const Json& message)
{
    const Json* audio = memberOf(message, "audio");
    const auto* text = audio ? audio->get_ptr<const Json::string_t*>() : nullptr;
    if (!text)
        return missingIn("audio", message);
    auto pcm = base64Decode(*text);
    if (!pcm || pcm->size() % 2 != 0)
        return malformed("invalid_value", "\"audio\" is no base64 of whole 16-bit samples.", message);
    return openai_client::InputAudio{std::move(*pcm)};
}

Message readAppend(const Json& message, openai_client::Append::Kind kind)
{
    auto text = readString(message, "content");
    if (!text)
        return missingIn("content", message);
    return openai_client::Append{kind, std::move(*text), {readString(message, "delegation_id"), eventIDOf(message)}};
}

Message readInstructions(const Json& message)
{
    return readAppend(message, openai_client::Append::Kind::instructions);
}

Message readCommentary(const Json& message)
{
    return readAppend(message, openai_client::Append::Kind::commentary);
}

Message readThinking(const Json& message)
{
    return readAppend(message, openai_client::Append::Kind::thinking);
}

Message readItemCreate(const Json& message)
{
    const Json* item = memberOf(message, "item");
    if (!item)
        return malformed("missing_field", "\"item\" is missing.", message);
    auto decoded = OpenAIItemCodec::decode(*item);
    if (auto* problem = std::get_if<OpenAIItemCodec::Problem>(&decoded))
        return malformed(problem->code.c_str(), std::move(problem->reason), message);
    auto& read = *std::get_if<OpenAIItem>(&decoded);
    if (auto* output = std::get_if<openai_item::FunctionOutput>(&read))
        return openai_client::FunctionOutput{std::move(output->callID), std::move(output->output), eventIDOf(message)};
    auto* words = std::get_if<openai_item::Message>(&read);
    if (words && words->role == "user")
        return openai_client::UserMessage{std::move(words->text), std::move(words->images), eventIDOf(message)};
    return malformed(
        "invalid_value", "\"item\" must be a message of the \"user\" or a \"function_call_output\".", message);
}

Message readResponseCreate(const Json& message)
{
    return openai_client::ResponseCreate{eventIDOf(message)};
}

Message readClose(const Json& message)
{
    return openai_client::Close{eventIDOf(message)};
}

struct ClientReader {
    std::string_view type;
    Message (*read)(const Json&);
};

constexpr std::array readers{
    ClientReader{OpenAIAudioTypes::input, readInputAudio},
    ClientReader{"session.start", readSessionStart},
    ClientReader{"session.instructions.append", readInstructions},
    ClientReader{"session.commentary.append", readCommentary},
    ClientReader{"session.thinking.append", readThinking},
    ClientReader{"response.item.create", readItemCreate},
    ClientReader{"response.create", readResponseCreate},
    ClientReader{"session.close", readClose},
};

} // namespace

OpenAILiveClientMessage OpenAILiveClientParser::parse(std::string_view message)
{
    if (message.size() <= limits.maximumBytes) {
        auto pcm = readAudioFrameText(message, OpenAIAudioTypes::input, "audio");
        if (pcm && pcm->size() % 2 == 0)
            return openai_client::InputAudio{std::move(*pcm)};
    }
    const auto json = parseJson(message, limits);
    if (!json || !json->is_object())
        return openai_client::Malformed{"invalid_json", "The message is no JSON object, or is too large.", {}};
    const auto type = readString(*json, "type");
    if (!type)
        return missingIn("type", *json);
    const auto reader =
        std::find_if(readers.begin(), readers.end(), [&](const ClientReader& entry) { return entry.type == *type; });
    if (reader == readers.end())
        return malformed("unknown_type", "There is no message of this \"type\".", *json);
    return reader->read(*json);
}

std::optional<OpenAILiveSetupOptions> OpenAILiveClientParser::parseSession(const Json& session, std::string& problem)
{
    OpenAISessionReader reader;
    auto options = reader.read(session);
    problem = reader.problem();
    return options;
}

} // namespace quorvell
