// SPDX-License-Identifier: MIT
// Any body that a client of the Responses service may send. What was read survives being written and read again.
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace quorvell;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto read = ResponsesRequestReader::read({reinterpret_cast<const char*>(data), size});
    auto* request = std::get_if<ResponsesRequest>(&read);
    if (!request)
        return 0;
    if (request->reasoningEffort == "none")
        request->reasoningSummary.reset(); // not sent with it
    const auto again = ResponsesRequestReader::read(dumpJson(request->json()));
    const auto* second = std::get_if<ResponsesRequest>(&again);
    if (!second || !(*second == *request))
        std::abort();
    return 0;
}
