// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/responses/ResponsesRequest.h"

#include "QuorvellCore/live/wire/openai/OpenAIItemCodec.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"

#include <utility>

namespace quorvell {

Json ResponsesRequest::json() const
{
    OpenAILiveSetupOptions options;
    options.backendModel = model;
    options.backendInstructions = instructions;
    options.tools = tools;
    options.reasoningEffort = reasoningEffort;
    options.reasoningSummary = reasoningSummary;
    options.serviceTier = serviceTier;
    options.verbosity = verbosity;
    options.maxOutputTokens = maxOutputTokens;
    Json result = OpenAILiveMessage::backend(options); // the same model, the same object
    Json items = Json::array();
    for (const OpenAIItem& item : input)
        items.push_back(OpenAIItemCodec::encode(item));
    result["input"] = std::move(items);
    if (previousResponseID)
        result["previous_response_id"] = *previousResponseID;
    result["store"] = false;
    result["stream"] = true;
    return result;
}

} // namespace quorvell
