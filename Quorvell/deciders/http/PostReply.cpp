// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/http/PostReply.h"

#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

using Kind = DecisionError::Kind;

std::string seconds(std::chrono::milliseconds time)
{
    const auto tenths = time.count() / 100;
    return std::to_string(tenths / 10) + (tenths % 10 == 0 ? "" : "." + std::to_string(tenths % 10)) + " s";
}

/// Services put it in different places: {"error": {"message": ...}}, {"error": ...}, {"message": ...}.
std::string reasonIn(const std::string& body)
{
    const auto json = parseJson(body, {.maximumBytes = PostReply::longestBody});
    const Json* error = json ? memberOf(*json, "error") : nullptr;
    for (const auto& reason : {error ? readString(*error, "message") : std::nullopt,
             error ? readString(*error) : std::nullopt, json ? readString(*json, "message") : std::nullopt})
        if (reason)
            return *reason;
    return {};
}

DecisionError problemOf(const PostReply& reply, const std::string& host, const Secrets& secrets)
{
    const std::string status = " (status " + std::to_string(reply.status) + ")";
    if (reply.status == 401 || reply.status == 403)
        return {Kind::refused, reply.status, host + " did not accept the key" + status + "."};
    if (reply.status == 429)
        return {Kind::tooMany, reply.status, host + " is asked too much at present" + status + ".", reply.retryAfter};
    if (reply.status >= 500 && reply.status < 600)
        return {Kind::serverFault, reply.status, host + " has a fault of its own at present" + status + "."};
    const std::string reason = printableLine(secrets.blanked(reasonIn(reply.body)), PostReply::longestReason);
    return {Kind::rejected, reply.status,
        host + " did not take the request" + status + (reason.empty() ? "." : ": \"" + reason + "\".")};
}

} // namespace

std::variant<Json, DecisionError> PostReply::judged(
    const std::string& host, std::chrono::milliseconds timeout, const Secrets& secrets) const
{
    switch (end) {
    case End::cancelled:
        return DecisionError{Kind::cancelled, 0, "The request was called off."};
    case End::timedOut:
        return DecisionError{Kind::timedOut, 0, host + " did not answer within " + seconds(timeout) + "."};
    case End::unknownName:
        return DecisionError{Kind::unreachable, 0, "The name " + host + " is not known. Look at the network."};
    case End::noConnection:
        return DecisionError{Kind::unreachable, 0, host + " cannot be reached. Look at the network."};
    case End::noProxy:
        return DecisionError{
            Kind::unreachable, 0, "The proxy on the way to " + host + " lets no request through. Look at https_proxy."};
    case End::notTrusted:
        return DecisionError{Kind::unreachable, 0, host + " could not prove who it is, so nothing was sent."};
    case End::brokenOff:
        return DecisionError{Kind::unreachable, 0, host + " broke off before it had answered."};
    case End::notHTTP:
        return DecisionError{Kind::malformed, 0, host + " answered with what is no HTTP."};
    case End::whole:
        break;
    }
    if (isTooLarge && status < 300)
        return DecisionError{Kind::tooLarge, status, host + " answered with more than is taken."};
    if (status < 200 || status > 299)
        return problemOf(*this, host, secrets);
    auto json = parseJson(body, {.maximumBytes = longestBody});
    if (!json || !json->is_object())
        return DecisionError{Kind::malformed, status, host + " answered with what is no JSON object."};
    return *std::move(json);
}

} // namespace quorvell
