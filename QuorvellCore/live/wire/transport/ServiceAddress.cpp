// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/transport/ServiceAddress.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/LoopbackAddress.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quorvell {

namespace {

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

bool isLocal(std::string_view host)
{
    return host == "localhost" || host == "[::1]" || isLoopbackAddress(host);
}

} // namespace

std::optional<ServiceAddress> ServiceAddress::create(std::string_view address)
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
    if (!isHost(host) || (port && !isPort(*port)) || (security == Security::none && !isLocal(host)))
        return std::nullopt;
    return ServiceAddress{std::move(text), security};
}

bool ServiceAddress::isThisComputer() const
{
    return isLocal(splitHost(host).host);
}

std::string ServiceAddress::webUrl(std::string_view path) const
{
    return (security == Security::tls ? "https://" : "http://") + host + std::string(path);
}

std::string ServiceAddress::socketUrl(std::string_view path) const
{
    return (security == Security::tls ? "wss://" : "ws://") + host + std::string(path);
}

} // namespace quorvell
