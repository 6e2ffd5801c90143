// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/web/WebAddress.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/LoopbackAddress.h"

#include <unicode/bytestream.h>
#include <unicode/idna.h>

#include <algorithm>
#include <memory>

namespace quorvell {

namespace {

constexpr std::string_view schemeMark = "://";

bool isLetter(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

bool isScheme(std::string_view text)
{
    return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char letter) {
        return isLetter(letter) || isDigit(letter) || letter == '+' || letter == '-' || letter == '.';
    });
}

/// Control characters never belong in an address; browsers disagree on what a backslash means, so none is taken.
bool hasForbiddenLetter(std::string_view text)
{
    return std::any_of(text.begin(), text.end(),
        [](char letter) { return static_cast<unsigned char>(letter) < 0x20 || letter == 0x7F || letter == '\\'; });
}

bool isIpv6Literal(std::string_view host)
{
    return host.size() > 4 && host.front() == '[' && host.back() == ']'
        && std::all_of(host.begin() + 1, host.end() - 1, [](char letter) {
               return isDigit(letter) || (letter >= 'a' && letter <= 'f') || letter == ':' || letter == '.';
           });
}

/// Names that are only unusual (underscores, hyphens in odd places, long or empty labels) exist in the wild.
bool isFatal(std::uint32_t errors)
{
    constexpr std::uint32_t harmless = UIDNA_ERROR_EMPTY_LABEL | UIDNA_ERROR_LABEL_TOO_LONG
        | UIDNA_ERROR_DOMAIN_NAME_TOO_LONG | UIDNA_ERROR_LEADING_HYPHEN | UIDNA_ERROR_TRAILING_HYPHEN
        | UIDNA_ERROR_HYPHEN_3_4;
    return (errors & ~harmless) != 0;
}

std::optional<std::string> asciiHost(std::string_view host)
{
    UErrorCode status = U_ZERO_ERROR;
    constexpr std::uint32_t options =
        UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ | UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE;
    const std::unique_ptr<icu::IDNA> idna(icu::IDNA::createUTS46Instance(options, status));
    if (!idna || U_FAILURE(status))
        return std::nullopt;
    std::string ascii;
    icu::StringByteSink<std::string> sink(&ascii);
    icu::IDNAInfo info;
    const icu::StringPiece source(host.data(), static_cast<std::int32_t>(host.size()));
    idna->nameToASCII_UTF8(source, sink, info, status);
    if (U_FAILURE(status) || isFatal(info.getErrors()))
        return std::nullopt;
    return ascii;
}

std::optional<std::string> normalHost(std::string_view written)
{
    const std::string host = lowerCased(written);
    if (host.empty() || isIpv6Literal(host))
        return host;
    const auto ascii = isAscii(host) && host.find("xn--") == std::string::npos ? host : asciiHost(host);
    // Mapping can bring up letters that would take the address apart differently.
    if (!ascii || ascii->find_first_of(" \"#%/:<>?@[]^`{|}") != std::string::npos)
        return std::nullopt;
    return ascii;
}

bool readPort(std::string_view text, std::optional<std::uint16_t>& port)
{
    if (text.size() > 5 || !std::all_of(text.begin(), text.end(), isDigit))
        return false;
    std::uint32_t number = 0;
    for (const char digit : text)
        number = number * 10 + static_cast<std::uint32_t>(digit - '0');
    if (!text.empty())
        port = static_cast<std::uint16_t>(number);
    return number <= 0xFFFF;
}

/// "user@host:port": what stands before the last "@" is a name to log in with, not the host.
bool readAuthority(std::string_view authority, WebAddress& address)
{
    if (const auto at = authority.rfind('@'); at != std::string_view::npos)
        authority.remove_prefix(at + 1);
    const auto bracket = authority.rfind(']');
    const auto colon = authority.find(':', bracket == std::string_view::npos ? 0 : bracket);
    const auto host = normalHost(authority.substr(0, colon));
    if (!host)
        return false;
    address.host = *host;
    return colon == std::string_view::npos || readPort(authority.substr(colon + 1), address.port);
}

} // namespace

std::optional<WebAddress> WebAddress::parse(std::string_view text)
{
    if (text.size() > maximumBytes)
        return std::nullopt;
    std::string whole = trimmed(repairUtf8(text));
    if (whole.find(schemeMark) == std::string::npos)
        whole.insert(0, "https://");
    if (hasForbiddenLetter(whole))
        return std::nullopt;

    std::string_view rest = whole;
    const auto mark = rest.find(schemeMark);
    WebAddress address;
    if (!isScheme(rest.substr(0, mark)))
        return std::nullopt;
    address.scheme = lowerCased(rest.substr(0, mark));
    rest.remove_prefix(mark + schemeMark.size());
    rest = rest.substr(0, rest.find('#'));
    if (const auto question = rest.find('?'); question != std::string_view::npos) {
        address.query = rest.substr(question + 1);
        rest = rest.substr(0, question);
    }
    const auto slash = std::min(rest.find('/'), rest.size());
    address.path = rest.substr(slash);
    if (!readAuthority(rest.substr(0, slash), address))
        return std::nullopt;
    return address;
}

bool WebAddress::isLoopback() const
{
    return host == "localhost" || host == "[::1]" || host.ends_with(".localhost") || isLoopbackAddress(host);
}

} // namespace quorvell
