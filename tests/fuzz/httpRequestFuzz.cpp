// SPDX-License-Identifier: MIT
// Any bytes are the start of a request, a request within its bounds, or refused with a status and a sentence; never a
// crash. What was understood does not change when more bytes arrive.
#include "Http/HttpRequest.h"
#include "fuzzing.h"

void quorvell::search(std::string_view text)
{
    const HttpReading reading = HttpReading::of(text);
    require((reading.kind == HttpReading::Kind::refused) == (reading.status >= 400 && !reading.reason.empty()));
    if (reading.kind == HttpReading::Kind::incomplete)
        return;
    require(text.size() <= HttpRequest::longestHead + 4 || HttpReading::of(std::string(text) + "X") == reading);
    const HttpRequest& request = reading.request;
    require(request.headBytes <= text.size() && request.bodyBytes <= HttpRequest::longestBody);
    require(reading.kind != HttpReading::Kind::whole || HttpReading::of(text.substr(0, request.headBytes)) == reading);
    (void)request.path();
    (void)request.upgradeProblem();
    require(!isSameSecret(request.bearer(), ""));
}
