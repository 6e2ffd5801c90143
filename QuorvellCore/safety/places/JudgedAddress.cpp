// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/places/JudgedAddress.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/SiteMatch.h"
#include "QuorvellCore/text/web/WebAddress.h"

#include <algorithm>
#include <vector>

namespace quorvell {

namespace {

bool isNumber(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool hasWhiteSpace(std::string_view text)
{
    for (std::size_t position = 0; position < text.size();)
        if (isWhiteSpace(nextCodePoint(text, position)))
            return true;
    return false;
}

/// Only what stands at the front is a scheme: "example.com/?to=https://example.org" has none.
std::string withScheme(std::string_view address)
{
    const auto mark = address.find("://");
    const bool isScheme = mark != std::string_view::npos && address.find_first_of("/?#@.") > mark;
    return isScheme ? std::string(address) : "https://" + std::string(address);
}

bool hasLoginName(std::string_view address)
{
    const auto start = address.find("://") + 3;
    const auto end = address.find_first_of("/?#", start);
    return address.substr(start, end == std::string_view::npos ? end : end - start).find('@') != std::string_view::npos;
}

std::vector<std::string_view> labelsOf(std::string_view host)
{
    std::vector<std::string_view> labels;
    for (std::size_t start = 0; start <= host.size();) {
        const std::size_t end = std::min(host.find('.', start), host.size());
        labels.push_back(host.substr(start, end - start));
        start = end + 1;
    }
    return labels;
}

bool isPlainLabel(std::string_view label)
{
    constexpr std::size_t longest = 63; // RFC 1035
    return !label.empty() && label.size() <= longest
        && label.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-_") == std::string_view::npos;
}

/// Browsers take a host for a number when its last label is one, and read "0x7f.1" and "017.1" as such too.
bool isPlainIpv4(const std::vector<std::string_view>& labels)
{
    return labels.size() == 4 && std::all_of(labels.begin(), labels.end(), [](std::string_view label) {
        constexpr std::string_view largest = "255";
        const bool isWritten = isNumber(label) && (label.size() == 1 || label.front() != '0');
        return isWritten && (label.size() < largest.size() || (label.size() == largest.size() && label <= largest));
    });
}

bool isPlainHost(std::string_view host)
{
    constexpr std::size_t longest = 253; // RFC 1035
    if (host == "localhost")
        return true;
    const auto labels = labelsOf(host);
    if (host.size() > longest || labels.size() < 2 || !std::all_of(labels.begin(), labels.end(), isPlainLabel))
        return false;
    const bool isNumeric = isNumber(labels.back()) || labels.back().starts_with("0x");
    return !isNumeric || isPlainIpv4(labels);
}

} // namespace

std::optional<JudgedAddress> JudgedAddress::read(std::string_view address)
{
    if (address.size() > WebAddress::maximumBytes)
        return std::nullopt;
    JudgedAddress judged;
    judged.text = withScheme(trimmed(address));
    const auto parsed = WebAddress::parse(judged.text);
    if (!parsed || (parsed->scheme != "http" && parsed->scheme != "https") || hasWhiteSpace(judged.text)
        || hasLoginName(judged.text))
        return std::nullopt;
    judged.host = parsed->host;
    if (judged.host.ends_with('.'))
        judged.host.pop_back();
    if (!isPlainHost(judged.host))
        return std::nullopt;
    judged.site = SiteMatch::strip(judged.host);
    judged.path = SiteMatch::path(judged.text);
    if (const auto mark = judged.text.find('#'); mark != std::string::npos)
        judged.path += lowerCased(judged.text.substr(mark));
    return judged;
}

} // namespace quorvell
