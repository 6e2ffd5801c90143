// SPDX-License-Identifier: MIT
// Any bytes are the start of a request, a request within its bounds, or refused with a status and a sentence; never a
// crash. What was understood does not change when more bytes arrive. The same of an answer.
#include "Http/HttpAnswerHead.h"
#include "Http/HttpRequest.h"
#include "fuzzing.h"

namespace quorvell {

void searchAnswer(std::string_view text)
{
    const HttpAnswerReading reading = HttpAnswerReading::of(text);
    const HttpAnswerHead& head = reading.head;
    if (reading.kind != HttpAnswerReading::Kind::whole)
        return;
    require(head.status >= 100 && head.status <= 999 && head.headBytes <= text.size());
    require(HttpAnswerReading::of(text.substr(0, head.headBytes)).head.fields == head.fields);
}

} // namespace quorvell

void quorvell::search(std::string_view text)
{
    searchAnswer(text);
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
