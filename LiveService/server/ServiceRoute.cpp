// SPDX-License-Identifier: MIT
#include "LiveService/server/ServiceRoute.h"

#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"

#include <algorithm>
#include <iterator>

namespace quorvell {

namespace {

struct Row {
    std::string_view path;
    std::string_view method;
    ServiceRoute::Kind kind;
};

constexpr Row rows[] = {
    {ServiceRoute::sessions, "GET", ServiceRoute::Kind::openAISocket},
    {ServiceRoute::sessions, "POST", ServiceRoute::Kind::openAICall},
    {GeminiLiveEndpoint::path, "GET", ServiceRoute::Kind::geminiSocket},
    {ServiceRoute::responses, "POST", ServiceRoute::Kind::response},
};

ServiceRoute refused(int status, std::string_view reason)
{
    return {std::nullopt, HttpResponse::refusal(status, reason)};
}

ServiceRoute wrongMethod(std::string_view path)
{
    ServiceRoute route = refused(405, "This address is not asked for that way.");
    for (const Row& row : rows) {
        if (row.path == path)
            route.refusal.allow += (route.refusal.allow.empty() ? "" : ", ") + std::string(row.method);
    }
    return route;
}

} // namespace

ServiceRoute ServiceRoute::of(const HttpRequest& request, std::string_view token)
{
    const std::string_view path = request.path();
    if (std::ranges::find(rows, path, &Row::path) == std::end(rows))
        return refused(404, "There are /v1/live/sessions, /v1/responses and the path of Gemini live sessions here.");
    const auto row = std::ranges::find_if(
        rows, [&](const Row& candidate) { return candidate.path == path && candidate.method == request.method; });
    if (row == std::end(rows))
        return wrongMethod(path);
    const bool isGemini = row->kind == Kind::geminiSocket;
    if (!isSameSecret(isGemini ? request.field(GeminiLiveEndpoint::keyHeader) : request.bearer(), token))
        return refused(401,
            isGemini ? "Send this service's key in the header \"x-goog-api-key\"."
                     : "Send the header \"Authorization: Bearer KEY\" with this service's key.");
    if (row->method == "POST")
        return {row->kind};
    switch (request.upgradeProblem()) {
    case 0:
        return {row->kind};
    case 426:
        return refused(426, "Use version 13 of the WebSocket protocol.");
    default:
        return refused(400, "Ask for an upgrade to a WebSocket.");
    }
}

} // namespace quorvell
