#include "Quorvell/connections/ConnectionFailure.h"

#include <charconv>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr int tooLarge = 1009;
constexpr int serverError = 1011;

/// What to tell about one failure.
struct Advice {
    std::string sentence;
    bool mustUserAct = false;
};

/// The service as the subject of a sentence.
std::string serviceName(const LiveAccess& access)
{
    return access.place == LiveAccess::Place::onDevice ? "The service on this device"
                                                       : "The service at " + access.endpoint.host;
}

Advice adviceForStatus(int status, const std::string& service)
{
    if (status == 401)
        return {service
                + " did not accept the API key. Check OPENAI_API_KEY, or remove it to use the assistant on this "
                  "device.",
            true};
    if (status == 403)
        return {service
                + " does not let this API key hold live conversations. Check what the key may do, or remove "
                  "OPENAI_API_KEY to use the assistant on this device.",
            true};
    if (status == 404)
        return {service + " offers no live conversations. Check the host that is set for Quorvell.", true};
    if (status == 429)
        return {service + " has had too many requests from this account. Wait a minute and ask again."};
    if (status >= 500)
        return {service + " has a problem of its own (" + std::to_string(status) + "). Ask again in a few minutes."};
    return {service + " refused the connection" + (status != 0 ? " (" + std::to_string(status) + ")" : "")
        + ". Check the host that is set for Quorvell, and ask again."};
}

Advice adviceForClosing(int code, const std::string& detail, const std::string& service)
{
    const std::string why = detail.empty() ? "" : " (" + detail + ")";
    if (code == LiveClosure::abnormal)
        return {"The connection to the assistant was lost. Ask again to begin a new one."};
    if (code == serverError)
        return {service + " had a problem of its own" + why + ". Ask again in a minute."};
    if (code == tooLarge)
        return {service + " was sent or sent more than fits into one message. Ask again, in smaller parts."};
    return {service + " ended the conversation" + why + ". Ask again to begin a new one."};
}

Advice adviceFor(const ConnectionFailure& failure, const std::string& service)
{
    switch (failure.kind) {
    case Kind::refusedUpgrade:
        return adviceForStatus(failure.code, service);
    case Kind::refusedSession:
        return {service + " would not begin a conversation: " + failure.detail, true};
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
        return adviceForClosing(failure.code, failure.detail, service);
    case Kind::createRefused:
        return {service + " keeps refusing to answer. Ask again to begin a new conversation."};
    }
    return {};
}

} // namespace

LiveClosure ConnectionFailure::closure(const LiveAccess& access) const
{
    const Advice advice = adviceFor(*this, serviceName(access));
    const int shownCode = kind == Kind::closed || kind == Kind::refusedUpgrade ? code : LiveClosure::abnormal;
    return {shownCode, detail, advice.mustUserAct, advice.sentence};
}

int ConnectionFailure::statusIn(std::string_view errorText)
{
    constexpr std::string_view mark = "status code: ";
    const auto position = errorText.find(mark);
    if (position == std::string_view::npos)
        return 0;
    const std::string_view digits = errorText.substr(position + mark.size(), 3);
    int status = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), status);
    return status;
}

} // namespace quorvell
