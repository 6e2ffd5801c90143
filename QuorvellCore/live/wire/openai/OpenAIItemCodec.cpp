// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAIItemCodec.h"

#include "QuorvellCore/text/Base64.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Decoded = std::variant<OpenAIItem, OpenAIItemCodec::Problem>;

constexpr std::string_view jpegPrefix = "data:image/jpeg;base64,";
constexpr std::array<std::string_view, 4> roles = {"user", "assistant", "system", "developer"};

struct Encoding {
    Json operator()(const openai_item::Message& message) const
    {
        return OpenAIItemCodec::message(message.role, message.text, message.images);
    }
    Json operator()(const openai_item::FunctionCall& call) const
    {
        return {
            {"type", "function_call"}, {"call_id", call.callID}, {"name", call.name}, {"arguments", call.arguments}};
    }
    Json operator()(const openai_item::FunctionOutput& output) const
    {
        return {{"type", "function_call_output"}, {"call_id", output.callID}, {"output", output.output}};
    }
};

Json imagePart(const LiveImage& image)
{
    return {{"type", "input_image"}, {"image_url", std::string(jpegPrefix) + base64Encode(image.jpeg)},
        {"detail", image.detail}};
}

OpenAIItemCodec::Problem invalid(std::string reason)
{
    return {"invalid_value", std::move(reason)};
}

OpenAIItemCodec::Problem fieldMissing(const char* field)
{
    return {"missing_field", std::string("\"") + field + "\" is missing or is no text."};
}

/// What is wrong with the picture, or nothing.
std::optional<std::string> addImage(const Json& part, openai_item::Message& message)
{
    const auto address = readString(part, "image_url");
    auto jpeg = address && address->starts_with(jpegPrefix)
        ? base64Decode(std::string_view(*address).substr(jpegPrefix.size()))
        : std::nullopt;
    if (!jpeg || message.images.size() == OpenAIItemCodec::maximumImages)
        return "\"image_url\" must be a base64 data address of type image/jpeg, at most "
            + std::to_string(OpenAIItemCodec::maximumImages) + " in a message.";
    message.images.push_back({std::move(*jpeg), readString(part, "detail").value_or("auto")});
    return std::nullopt;
}

/// What is wrong with the part, or nothing.
std::optional<std::string> addPart(const Json& part, openai_item::Message& message)
{
    const auto type = readString(part, "type").value_or("");
    if (type == "input_image")
        return addImage(part, message);
    if (type != "input_text" && type != "output_text")
        return "A part of \"content\" is neither text nor \"input_image\".";
    const auto text = readString(part, "text");
    if (!text)
        return "A part of type \"" + type + "\" has no \"text\".";
    message.text += (message.text.empty() ? "" : "\n") + *text;
    return std::nullopt;
}

Decoded decodeMessage(const Json& item)
{
    openai_item::Message message{readString(item, "role").value_or("")};
    const Json* content = memberOf(item, "content");
    if (std::find(roles.begin(), roles.end(), message.role) == roles.end() || !content
        || !(content->is_array() || content->is_string()))
        return invalid("A message must have a \"role\" and a list of \"content\".");
    if (auto text = readString(*content)) {
        message.text = std::move(*text);
        return OpenAIItem(std::move(message));
    }
    for (const Json& part : *content) {
        if (auto problem = addPart(part, message))
            return invalid(std::move(*problem));
    }
    return OpenAIItem(std::move(message));
}

Decoded decodeCall(const Json& item)
{
    auto id = readString(item, "call_id");
    auto name = readString(item, "name");
    auto arguments = readString(item, "arguments");
    if (!id || !name || !arguments)
        return fieldMissing(!id ? "call_id" : !name ? "name" : "arguments");
    return OpenAIItem(openai_item::FunctionCall{std::move(*id), std::move(*name), std::move(*arguments)});
}

Decoded decodeOutput(const Json& item)
{
    auto id = readString(item, "call_id");
    auto output = readString(item, "output");
    if (!id || !output)
        return fieldMissing(!id ? "call_id" : "output");
    return OpenAIItem(openai_item::FunctionOutput{std::move(*id), std::move(*output)});
}

} // namespace

Json OpenAIItemCodec::encode(const OpenAIItem& item)
{
    return std::visit(Encoding{}, item);
}

Json OpenAIItemCodec::message(std::string_view role, std::string_view text, const std::vector<LiveImage>& images)
{
    Json content = Json::array({Json{{"type", role == "assistant" ? "output_text" : "input_text"}, {"text", text}}});
    for (const LiveImage& image : images)
        content.push_back(imagePart(image));
    return {{"type", "message"}, {"role", role}, {"content", std::move(content)}};
}

std::variant<OpenAIItem, OpenAIItemCodec::Problem> OpenAIItemCodec::decode(const Json& item)
{
    const auto type = readString(item, "type").value_or(memberOf(item, "role") ? "message" : "");
    if (type == "message")
        return decodeMessage(item);
    if (type == "function_call")
        return decodeCall(item);
    if (type == "function_call_output")
        return decodeOutput(item);
    return invalid("An item must be of type \"message\", \"function_call\" or \"function_call_output\".");
}

} // namespace quorvell
