// SPDX-License-Identifier: MIT
#include "Wyoming/WyomingAddress.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/LoopbackAddress.h"

#include <algorithm>
#include <charconv>

namespace quorvell {

namespace {

bool isNameLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '.' || letter == '-';
}

bool isHost(std::string_view host, bool isNumeric)
{
    return !host.empty() && host.size() <= 253 && std::all_of(host.begin(), host.end(), [isNumeric](char letter) {
        return isNumeric ? letter == ':' || (letter != '-' && isNameLetter(letter)) : isNameLetter(letter);
    });
}

} // namespace

std::optional<WyomingAddress> WyomingAddress::parse(std::string_view given)
{
    constexpr std::string_view plain = "tcp://";
    constexpr std::string_view inTheClear = "unencrypted://";
    const std::string whole = lowerCased(trimmed(given));
    std::string_view text = whole;
    const bool mayBeElsewhere = text.starts_with(inTheClear);
    if (mayBeElsewhere || text.starts_with(plain))
        text.remove_prefix(mayBeElsewhere ? inTheClear.size() : plain.size());
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    std::string_view host = text.substr(0, colon);
    const bool isBracketed = host.starts_with('[') && host.ends_with(']') && host.size() > 2;
    if (isBracketed)
        host = host.substr(1, host.size() - 2);
    const std::string_view digits = text.substr(colon + 1);
    WyomingAddress address{std::string(host), 0};
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), address.port);
    if (problem != std::errc{} || end != digits.data() + digits.size() || address.port == 0
        || !isHost(host, isBracketed) || (!mayBeElsewhere && !address.isThisComputer()))
        return std::nullopt;
    return address;
}

bool WyomingAddress::isThisComputer() const
{
    return host == "localhost" || host == "::1" || isLoopbackAddress(host);
}

std::string WyomingAddress::text() const
{
    const bool isNumeric = host.find(':') != std::string::npos;
    return (isNumeric ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

} // namespace quorvell
