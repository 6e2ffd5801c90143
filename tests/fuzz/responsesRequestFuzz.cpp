// SPDX-License-Identifier: MIT
// Any body that a client of the Responses service may send. What was read survives being written and read again.
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"
#include "fuzzing.h"

void quorvell::search(std::string_view text)
{
    auto read = ResponsesRequestReader::read(text);
    auto* request = std::get_if<ResponsesRequest>(&read);
    if (!request)
        return;
    if (request->reasoningEffort == "none")
        request->reasoningSummary.reset(); // not sent with it
    const auto again = ResponsesRequestReader::read(dumpJson(request->json()));
    const auto* second = std::get_if<ResponsesRequest>(&again);
    require(second && *second == *request);
}
