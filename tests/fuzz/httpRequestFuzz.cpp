// SPDX-License-Identifier: MIT
// Any bytes are the start of a request, a request within its bounds, or refused with a status and a sentence; never a
// crash. What was understood does not change when more bytes arrive.
#include "Http/HttpRequest.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using quorvell::HttpReading;
    using quorvell::HttpRequest;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const HttpReading reading = HttpReading::of(bytes);
    if ((reading.kind == HttpReading::Kind::refused) != (reading.status >= 400 && !reading.reason.empty()))
        std::abort();
    if (reading.kind == HttpReading::Kind::incomplete)
        return 0;
    if (HttpReading::of(bytes + "X") != reading && bytes.size() > HttpRequest::longestHead + 4)
        std::abort();
    const HttpRequest& request = reading.request;
    if (request.headBytes > size || request.bodyBytes > HttpRequest::longestBody)
        std::abort();
    if (reading.kind == HttpReading::Kind::whole && HttpReading::of(bytes.substr(0, request.headBytes)) != reading)
        std::abort();
    (void)request.path();
    (void)request.upgradeProblem();
    if (quorvell::isSameSecret(request.bearer(), ""))
        std::abort();
    return 0;
}
