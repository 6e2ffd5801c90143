#include "QuorvellCore/live/wire/OpenAILiveClientParser.h"

#include "QuorvellCore/live/wire/AudioFrameText.h"
#include "QuorvellCore/live/wire/OpenAISessionReader.h"
#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Message = OpenAILiveClientMessage;

constexpr std::string_view audioType = "session.input_audio.append";
constexpr std::string_view jpegPrefix = "data:image/jpeg;base64,";

std::optional<std::string> eventIDOf(const Json& message)
{
    return readString(message, "event_id");
}

Message malformed(const char* code, std::string reason, const Json& message)
{
    return openai_client::Malformed{code, std::move(reason), eventIDOf(message)};
}

Message missing(const char* field, const Json& message)
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

Message readAudio(const Json& message)
{
    const Json* audio = memberOf(message, "audio");
    const auto* text = audio ? audio->get_ptr<const Json::string_t*>() : nullptr;
    if (!text)
        return missing("audio", message);
    auto pcm = base64Decode(*text);
    if (!pcm || pcm->size() % 2 != 0)
        return malformed("invalid_value", "\"audio\" is no base64 of whole 16-bit samples.", message);
    return openai_client::InputAudio{std::move(*pcm)};
}

Message readAppend(const Json& message, openai_client::Append::Kind kind)
{
    auto text = readString(message, "content");
    if (!text)
        return missing("content", message);
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

/// Adds one part of a user message; what is wrong with it, or nothing.
std::optional<std::string> addPart(const Json& part, openai_client::UserMessage& result)
{
    const auto type = readString(part, "type");
    if (type == "input_text") {
        const auto text = readString(part, "text");
        if (!text)
            return "A part of type \"input_text\" has no \"text\".";
        result.text += (result.text.empty() ? "" : "\n") + *text;
        return std::nullopt;
    }
    if (type != "input_image")
        return "A part of \"content\" is neither \"input_text\" nor \"input_image\".";
    const auto address = readString(part, "image_url");
    auto jpeg = address && address->starts_with(jpegPrefix)
        ? base64Decode(std::string_view(*address).substr(jpegPrefix.size()))
        : std::nullopt;
    if (!jpeg || result.images.size() == OpenAILiveClientParser::maximumImages)
        return "\"image_url\" must be a base64 data address of type image/jpeg, at most "
            + std::to_string(OpenAILiveClientParser::maximumImages) + " in a message.";
    result.images.push_back({std::move(*jpeg), readString(part, "detail").value_or("auto")});
    return std::nullopt;
}

Message readUserMessage(const Json& message, const Json& item)
{
    openai_client::UserMessage result{{}, {}, eventIDOf(message)};
    const Json* content = memberOf(item, "content");
    if (readString(item, "role") != "user" || !content || !content->is_array())
        return malformed("invalid_value", "A message must have \"role\" \"user\" and a list of \"content\".", message);
    for (const Json& part : *content) {
        if (auto problem = addPart(part, result))
            return malformed("invalid_value", std::move(*problem), message);
    }
    return result;
}

Message readFunctionOutput(const Json& message, const Json& item)
{
    auto id = readString(item, "call_id");
    if (!id)
        return missing("call_id", message);
    auto output = readString(item, "output");
    if (!output)
        return missing("output", message);
    return openai_client::FunctionOutput{std::move(*id), std::move(*output), eventIDOf(message)};
}

Message readItemCreate(const Json& message)
{
    const Json* item = memberOf(message, "item");
    if (!item)
        return malformed("missing_field", "\"item\" is missing.", message);
    const auto type = readString(*item, "type");
    if (type == "message")
        return readUserMessage(message, *item);
    if (type == "function_call_output")
        return readFunctionOutput(message, *item);
    return malformed("invalid_value", "\"item\" must be of type \"message\" or \"function_call_output\".", message);
}

Message readResponseCreate(const Json& message)
{
    return openai_client::ResponseCreate{eventIDOf(message)};
}

Message readClose(const Json& message)
{
    return openai_client::Close{eventIDOf(message)};
}

struct Reader {
    std::string_view type;
    Message (*read)(const Json&);
};

constexpr std::array readers{
    Reader{audioType, readAudio},
    Reader{"session.start", readSessionStart},
    Reader{"session.instructions.append", readInstructions},
    Reader{"session.commentary.append", readCommentary},
    Reader{"session.thinking.append", readThinking},
    Reader{"response.item.create", readItemCreate},
    Reader{"response.create", readResponseCreate},
    Reader{"session.close", readClose},
};

} // namespace

OpenAILiveClientMessage OpenAILiveClientParser::parse(std::string_view message)
{
    if (message.size() <= limits.maximumBytes) {
        auto pcm = readAudioFrameText(message, audioType, "audio");
        if (pcm && pcm->size() % 2 == 0)
            return openai_client::InputAudio{std::move(*pcm)};
    }
    const auto json = parseJson(message, limits);
    if (!json || !json->is_object())
        return openai_client::Malformed{"invalid_json", "The message is no JSON object, or is too large.", {}};
    const auto type = readString(*json, "type");
    if (!type)
        return missing("type", *json);
    const auto reader =
        std::find_if(readers.begin(), readers.end(), [&](const Reader& entry) { return entry.type == *type; });
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
