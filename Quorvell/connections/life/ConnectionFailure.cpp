// SPDX-License-Identifier: MIT
#include "Quorvell/connections/life/ConnectionFailure.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Secrets.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr int tooLarge = 1009;
constexpr int serverError = 1011;
constexpr int serviceRestart = 1012;
constexpr int tryAgainLater = 1013;
constexpr int goingAway = 1001;
constexpr int badMessage = 1007;
constexpr int notAllowed = 1008;
constexpr std::size_t longestQuote = 300; ///< Characters of what others say that are passed on.

/// What to tell about one failure.
struct Advice {
    std::string sentence;
    bool mustUserAct = false;
};

/// For the event log, which keeps no words of the other side: they may repeat what the user said, or the key.
std::string nameOf(Kind kind)
{
    static constexpr const char* names[] = {"refused", "session refused", "name unknown", "nobody answers", "untrusted",
        "opened too slowly", "started too slowly", "went silent", "closed", "create refused", "unreadable answer",
        "media blocked", "own fault"};
    return names[static_cast<std::size_t>(kind)];
}

/// The service as the subject of a sentence.
std::string serviceName(const LiveAccess& access)
{
    return access.place == LiveAccess::Place::onDevice ? "The service on this device"
                                                       : "The service at " + access.endpoint.host;
}

/// After "Wait": what the service asked for, in words.
std::string waitingTime(const ConnectionFailure& failure)
{
    using std::chrono::ceil;
    const auto asked = failure.retryAfter.value_or(std::chrono::minutes(1));
    if (const auto minutes = ceil<std::chrono::minutes>(asked).count(); minutes > 1)
        return std::to_string(minutes) + " minutes";
    return asked > std::chrono::seconds(30) ? "a minute" : "half a minute";
}

/// A service that has been used up is not busy: waiting changes nothing.
bool isOutOfCredit(const ConnectionFailure& failure)
{
    constexpr int tooMany = 429;
    return failure.code == tooMany && failure.detail.find("insufficient_quota") != std::string::npos;
}

/// What the service says itself, as an appendix.
std::string quoted(const std::string& words)
{
    return words.empty() ? std::string() : " (" + words + ")";
}

Advice adviceForStatus(const ConnectionFailure& failure, const std::string& service, const std::string& keyName)
{
    const int status = failure.code;
    const std::string otherwise = ", or remove " + keyName + " to use the assistant on this device.";
    const std::string why = quoted(failure.message);
    if (status == 401)
        return {service + " did not accept the API key" + why + ". Check " + keyName + otherwise, true};
    if (status == 403)
        return {service + " does not let this API key hold live conversations" + why + ". Check what the key may do"
                + otherwise,
            true};
    if (status == 404)
        return {service + " offers no live conversations" + why + ". Check the host that is set for Quorvell.", true};
    if (isOutOfCredit(failure))
        return {
            service + " says that this account's credit is used up" + why + ". Add credit to the account" + otherwise,
            true};
    if (status == 429)
        return {service + " has had too many requests from this account" + why + ". Wait " + waitingTime(failure)
            + " and ask again."};
    if (status >= 500)
        return {service + " has a problem of its own (" + std::to_string(status) + "). Ask again in a few minutes."};
    if (status == 0)
        return {service + " refused the connection. Check the host that is set for Quorvell, and ask again."};
    const std::string said = failure.message.empty() ? std::string() : ": " + failure.message;
    return {service + " refused the request (" + std::to_string(status) + said
            + "). Check the host and the models that are set for Quorvell, and ask again.",
        status >= 400 && status != 408};
}

Advice adviceForClosing(const ConnectionFailure& failure, const std::string& service, const std::string& keyName)
{
    const std::string why = quoted(failure.detail);
    switch (failure.code) {
    case LiveClosure::abnormal:
        return {"The connection to the assistant was lost. Ask again to begin a new one."};
    case serverError:
        return {service + " had a problem of its own" + why + ". Ask again in a minute."};
    case tooLarge:
        return {service + " was sent or sent more than fits into one message. Ask again, in smaller parts."};
    case goingAway:
        return {service + " went away" + why + ". Ask again to begin a new conversation."};
    case badMessage:
        return {service + " did not understand a message" + why + ". Ask again to begin a new conversation."};
    case notAllowed:
        return {service + " does not allow this conversation" + why + ". Check what the key in " + keyName
                + " may do, and ask again.",
            failure.detail.find("API key") != std::string::npos};
    default:
        return {service + " ended the conversation" + why + ". Ask again to begin a new one."};
    }
}

Advice adviceFor(const ConnectionFailure& failure, const std::string& service, const std::string& keyName)
{
    switch (failure.kind) {
    case Kind::refusedRequest:
        return adviceForStatus(failure, service, keyName);
    case Kind::refusedSession:
        return {service + " would not begin a conversation" + quoted(failure.detail)
                + ". Check the models that are set for Quorvell, and ask again.",
            true};
    case Kind::nameUnknown:
        return {service + " could not be found. Check the network connection and the host's name, and ask again."};
    case Kind::nobodyAnswers:
        return {service + " cannot be reached. Check the network connection and ask again."};
    case Kind::untrusted:
        return {service + " could not prove that it is what it claims to be (" + failure.detail
                + "), so nothing was sent. Check the host's name and this computer's date.",
            true};
    case Kind::openedTooSlowly:
        return {service + " did not answer in time. Check the network connection and ask again."};
    case Kind::startedTooSlowly:
        return {service + " answered but did not begin the conversation in time. Ask again in a minute."};
    case Kind::wentSilent:
        return {"The connection to the assistant has gone silent. Check the network connection and ask again."};
    case Kind::closed:
        return adviceForClosing(failure, service, keyName);
    case Kind::createRefused:
        return {service + " keeps refusing to answer. Ask again to begin a new conversation."};
    case Kind::unreadableAnswer:
        return {service + " answered with something that is no conversation. Check the host that is set for Quorvell.",
            true};
    case Kind::mediaBlocked:
        return {service
            + " can be reached, but sound does not get through to it (WebRTC over UDP). Set the transport to "
              "websocket, or use another network."};
    case Kind::ownFault:
        return {"The conversation could not begin on this computer (" + failure.detail
            + "). Ask again, or set the transport to websocket."};
    }
    return {};
}

} // namespace

LiveClosure ConnectionFailure::closure(const LiveAccess& access) const
{
    const Secrets secrets{{access.key}};
    ConnectionFailure told = *this;
    // Before they are cut: half a key is one too.
    told.detail = secrets.blanked(std::move(told.detail));
    told.message = secrets.blanked(std::move(told.message));
    if (kind != Kind::refusedRequest) // The body of a refusal is read, not quoted.
        told.detail = firstCharacters(told.detail, longestQuote);
    told.message = firstCharacters(told.message, longestQuote);
    const Advice advice = adviceFor(told, serviceName(access), std::string(access.keyName));
    const bool isCoded = kind == Kind::closed || kind == Kind::refusedRequest;
    const auto wait = isBusy() ? std::optional(retryAfter.value_or(std::chrono::milliseconds::zero())) : std::nullopt;
    return {
        isCoded && code != 0 ? code : LiveClosure::abnormal, nameOf(kind), advice.mustUserAct, advice.sentence, wait};
}

bool ConnectionFailure::isBusy() const
{
    constexpr int notImplemented = 501;
    constexpr int tooMany = 429;
    if (kind == Kind::refusedRequest)
        return (code == tooMany && !isOutOfCredit(*this)) || (code >= 500 && code != notImplemented);
    return kind == Kind::closed && (code == serverError || code == serviceRestart || code == tryAgainLater);
}

ConnectionFailure ConnectionFailure::refusal(int status, std::string body)
{
    ConnectionFailure failure{Kind::refusedRequest, status, std::move(body)};
    const auto json = parseJson(failure.detail);
    const Json* error = json ? memberOf(*json, "error") : nullptr;
    if (error)
        failure.message = readString(*error).value_or(readString(*error, "message").value_or(""));
    return failure;
}

} // namespace quorvell
