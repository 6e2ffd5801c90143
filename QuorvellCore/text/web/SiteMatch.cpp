// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/web/SiteMatch.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/web/WebAddress.h"

namespace quorvell {

namespace {

bool isUnder(std::string_view host, std::string_view site)
{
    return host == site
        || (host.size() > site.size() && host.ends_with(site) && host[host.size() - site.size() - 1] == '.');
}

int nonEmptyLabels(std::string_view host)
{
    int count = 0;
    bool isInLabel = false;
    for (const char letter : host) {
        if (letter != '.' && !isInLabel)
            ++count;
        isInLabel = letter != '.';
    }
    return count;
}

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

/// Undoes "%41" but for the letters that would change where the path ends or what a later escape means.
std::string withoutEscapes(std::string_view path)
{
    std::string result;
    for (std::size_t index = 0; index < path.size(); ++index) {
        const int high = path[index] == '%' && index + 2 < path.size() ? hexValue(path[index + 1]) : -1;
        const int low = high >= 0 ? hexValue(path[index + 2]) : -1;
        const char letter = static_cast<char>(high * 16 + low);
        if (low < 0 || std::string_view("/?#%").find(letter) != std::string_view::npos) {
            result += path[index];
            continue;
        }
        result += letter;
        index += 2;
    }
    return repairUtf8(result);
}

} // namespace

std::optional<std::string> SiteMatch::host(std::string_view address)
{
    const std::string text = lowerCased(trimmed(address));
    if (text.empty() || text.find(' ') != std::string::npos)
        return std::nullopt;
    const auto parsed = WebAddress::parse(text);
    if (!parsed || (parsed->scheme != "http" && parsed->scheme != "https") || parsed->host.empty())
        return std::nullopt;
    if (parsed->host.find('.') == std::string::npos && parsed->host != "localhost")
        return std::nullopt;
    return strip(parsed->host);
}

std::string SiteMatch::strip(std::string_view host)
{
    std::string stripped = lowerCased(host);
    for (const std::string_view prefix : {"www.", "m."}) {
        if (stripped.starts_with(prefix) && nonEmptyLabels(stripped) > 2)
            stripped.erase(0, prefix.size());
    }
    return stripped;
}

std::string SiteMatch::path(std::string_view address)
{
    const auto parsed = WebAddress::parse(address);
    if (!parsed || parsed->path == "/")
        return {};
    return lowerCased(withoutEscapes(parsed->path));
}

bool SiteMatch::sameSite(std::string_view a, std::string_view b)
{
    const auto site = host(a);
    const auto other = host(b);
    return site && other && isUnder(*other, *site);
}

bool SiteMatch::alreadyShowing(std::string_view address, const PageLocation& page)
{
    if (!page.site || (!page.loaded && page.title.empty()))
        return false;
    const auto wanted = host(address);
    const auto shown = host(*page.site);
    return wanted && shown && isUnder(*shown, *wanted) && path(page.address) == path(address);
}

} // namespace quorvell
