// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"

#include "QuorvellCore/live/wire/openai/OpenAIItemCodec.h"
#include "QuorvellCore/live/wire/openai/OpenAISessionReader.h"

#include <utility>

namespace quorvell {

namespace {

OpenAIErrorReport report(std::string code, std::string message)
{
    return {"invalid_request_error", std::move(code), std::move(message), std::nullopt};
}

std::optional<OpenAIErrorReport> readInput(const Json& body, std::vector<OpenAIItem>& items)
{
    const Json* input = memberOf(body, "input");
    if (auto text = input ? readString(*input) : std::nullopt) {
        items.emplace_back(openai_item::Message{"user", std::move(*text)});
        return std::nullopt;
    }
    if (!input || !input->is_array() || input->size() > ResponsesRequestReader::maximumItems)
        return report("invalid_value", "\"input\" must be a text or a list of at most 1024 items.");
    for (const Json& entry : *input) {
        auto decoded = OpenAIItemCodec::decode(entry);
        if (auto* problem = std::get_if<OpenAIItemCodec::Problem>(&decoded))
            return report(std::move(problem->code), std::move(problem->reason));
        items.push_back(std::move(*std::get_if<OpenAIItem>(&decoded)));
    }
    return std::nullopt;
}

} // namespace

std::variant<ResponsesRequest, OpenAIErrorReport> ResponsesRequestReader::read(std::string_view body)
{
    const auto json = parseJson(body, limits);
    if (!json || !json->is_object())
        return report("invalid_json", "The body is no JSON object, or is too large.");
    OpenAISessionReader reader;
    auto options = reader.readBackendAlone(*json);
    if (!options)
        return report("invalid_value", reader.problem());
    if (readBool(*json, "stream") != true)
        return report("invalid_value", "\"stream\" must be true: answers come as a stream of events only.");
    ResponsesRequest request{std::move(options->backendModel), std::move(options->backendInstructions), {}};
    if (auto problem = readInput(*json, request.input))
        return std::move(*problem);
    request.tools = std::move(options->tools);
    request.reasoningEffort = std::move(options->reasoningEffort);
    request.reasoningSummary = std::move(options->reasoningSummary);
    request.serviceTier = std::move(options->serviceTier);
    request.verbosity = std::move(options->verbosity);
    request.maxOutputTokens = options->maxOutputTokens;
    request.previousResponseID = readString(*json, "previous_response_id");
    return request;
}

} // namespace quorvell
