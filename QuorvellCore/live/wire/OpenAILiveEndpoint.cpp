#include "QuorvellCore/live/wire/OpenAILiveEndpoint.h"

#include "QuorvellCore/live/wire/OpenAILiveMessage.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quorvell {

namespace {

using Security = OpenAILiveEndpoint::Security;

/// "host" and, where there is one, the port behind it. An IPv6 address stands in brackets.
struct HostAndPort {
    std::string_view host;
    std::optional<std::string_view> port;
};

HostAndPort splitHost(std::string_view text)
{
    const std::size_t bracket = text.starts_with('[') ? text.find(']') : 0;
    const std::size_t colon = text.find(':', bracket == std::string_view::npos ? 0 : bracket);
    if (colon == std::string_view::npos)
        return {text, std::nullopt};
    return {text.substr(0, colon), text.substr(colon + 1)};
}

bool isPort(std::string_view text)
{
    unsigned port = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), port);
    return problem == std::errc{} && end == text.data() + text.size() && port >= 1 && port <= 65535;
}

bool isHostCharacter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '.' || letter == '-';
}

bool isHost(std::string_view host)
{
    if (host.starts_with('[') && host.ends_with(']') && host.size() > 2) {
        return std::all_of(host.begin() + 1, host.end() - 1,
            [](char letter) { return letter == ':' || (letter != '-' && isHostCharacter(letter)); });
    }
    return !host.empty() && host.size() <= 253 && std::all_of(host.begin(), host.end(), isHostCharacter);
}

/// A dotted name such as "127.evil.example" is none of these: after "127." only digits and dots may follow.
bool isThisComputer(std::string_view host)
{
    return host == "localhost" || host == "[::1]"
        || (host.starts_with("127.") && host.find_first_not_of("0123456789.") == std::string_view::npos);
}

std::pair<std::string, std::string> authorization(std::string_view apiKey)
{
    return {"Authorization", "Bearer " + std::string(apiKey)};
}

} // namespace

std::optional<OpenAILiveEndpoint> OpenAILiveEndpoint::create(std::string_view address)
{
    std::string text = lowerCased(trimmed(address));
    Security security = Security::tls;
    if (const std::size_t end = text.find("://"); end != std::string::npos) {
        const std::string scheme = text.substr(0, end);
        if (scheme == "http" || scheme == "ws")
            security = Security::none;
        else if (scheme != "https" && scheme != "wss")
            return std::nullopt;
        text.erase(0, end + 3);
    }
    if (text.ends_with('/'))
        text.pop_back();
    const auto [host, port] = splitHost(text);
    if (!isHost(host) || (port && !isPort(*port)) || (security == Security::none && !isThisComputer(host)))
        return std::nullopt;
    return OpenAILiveEndpoint{std::move(text), security};
}

WebRequest OpenAILiveEndpoint::request(std::string_view apiKey) const
{
    const char* scheme = security == Security::tls ? "wss://" : "ws://";
    return {WebRequest::Method::get, scheme + host + std::string(path), {authorization(apiKey)}, {},
        std::chrono::seconds(60)};
}

WebRequest OpenAILiveEndpoint::webRTCRequest(
    std::string_view apiKey, const OpenAILiveSetupOptions& options, std::string_view offerSDP) const
{
    const char* scheme = security == Security::tls ? "https://" : "http://";
    const Json body{{"session", OpenAILiveMessage::session(options, OpenAILiveMessage::AudioFormat::undeclared)},
        {"transport", {{"type", "webrtc"}, {"sdp", offerSDP}}}};
    return {WebRequest::Method::post, scheme + host + std::string(path),
        {authorization(apiKey), {"Content-Type", "application/json"}}, dumpJson(body), std::chrono::seconds(20)};
}

std::optional<OpenAILiveEndpoint::WebRTCAnswer> OpenAILiveEndpoint::webRTCAnswer(std::string_view body)
{
    const auto json = parseJson(body);
    const Json* transport = json ? memberOf(*json, "transport") : nullptr;
    const Json* session = json ? memberOf(*json, "session") : nullptr;
    auto sdp = transport ? readString(*transport, "sdp") : std::nullopt;
    if (!sdp || !session || !session->is_object())
        return std::nullopt;
    return WebRTCAnswer{std::move(*sdp), readString(*session, "id").value_or("")};
}

RefusedSetting OpenAILiveEndpoint::refusedSetting(int status, std::string_view body)
{
    if (status != 400 && status != 403)
        return RefusedSetting::none;
    const std::string text = lowerCased(repairUtf8(body));
    if (text.find("service_tier") != std::string::npos)
        return RefusedSetting::serviceTier;
    if (text.find("summary") != std::string::npos || text.find("verif") != std::string::npos)
        return RefusedSetting::summary;
    return RefusedSetting::none;
}

} // namespace quorvell
