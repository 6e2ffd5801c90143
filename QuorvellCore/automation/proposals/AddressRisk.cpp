// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/proposals/AddressRisk.h"

#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/places/FileKind.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

/// "mailto", "https"; empty where none stands in front.
std::string schemeOf(std::string_view address)
{
    const auto end = address.find_first_of(":/?#");
    if (end == std::string_view::npos || end == 0 || address[end] != ':')
        return {};
    // "example.com:8080" is a host and its port.
    const std::string scheme = asciiLowerCased(address.substr(0, end));
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789+-";
    return scheme.find_first_not_of(letters) == std::string::npos ? scheme : std::string();
}

/// Words of addresses that do something as soon as they are opened.
constexpr auto actingWords = std::to_array<std::string_view>({"delete", "remove", "erase", "unsubscribe", "subscribe",
    "confirm", "logout", "signout", "order", "purchase", "buy", "submit", "cancel", "deactivate", "approve",
    "authorize", "accept", "send", "vote", "install", "uninstall", "reset", "transfer", "donate", "pay"});

/// "delete" in "/photos/delete?id=7" and in "?action=delete-all", but not in the title of an article.
std::optional<std::string_view> actingWordIn(std::string_view behindHost)
{
    constexpr std::string_view parts = "/?&=#;";
    constexpr std::string_view words = "-_.+%";
    constexpr int mostWords = 2;
    for (std::size_t start = 0; start < behindHost.size();) {
        const std::size_t end = std::min(behindHost.find_first_of(parts, start), behindHost.size());
        std::optional<std::string_view> found;
        int count = 0;
        for (std::size_t word = start; word < end && count <= mostWords; ++count) {
            const std::size_t stop = std::min({behindHost.find_first_of(words, word), end});
            if (const std::string_view said = behindHost.substr(word, stop - word); isOneOf(actingWords, said))
                found = said;
            word = stop + 1;
        }
        if (found && count <= mostWords)
            return found;
        start = end + 1;
    }
    return std::nullopt;
}

ActionRisk actingRisk(const JudgedAddress& judged)
{
    const std::string text = asciiLowerCased(judged.text);
    const auto host = text.find("://") + 3;
    const auto behind = std::min(text.find_first_of("/?#", host), text.size());
    const auto word = actingWordIn(std::string_view(text).substr(behind));
    if (!word)
        return ActionRisk::safe();
    return ActionRisk::askFirst("Shall I open " + SpokenLabel::quoted(judged.text) + "? Its address says \""
        + std::string(*word) + "\", so it may do that at once.");
}

} // namespace

ActionRisk addressRisk(std::string_view address)
{
    const auto judged = JudgedAddress::read(address);
    if (!judged)
        return SafetyGuard::websiteRisk(address);
    const ActionRisk risk = ActionRisk::strictest(SafetyGuard::websiteRisk(address), actingRisk(*judged));
    const std::string_view path = std::string_view(judged->path).substr(0, judged->path.find('#'));
    if (fileKind(path) != FileKind::program)
        return risk;
    return ActionRisk::strictest(risk,
        ActionRisk::askFirst("That downloads " + SpokenLabel::quoted(fileNameOf(path))
            + ", which can run or install things. Shall I go ahead?"));
}

std::optional<LinkTarget> LinkTarget::of(std::string_view written, std::string_view page)
{
    const std::string address = trimmed(written);
    const std::string scheme = schemeOf(address);
    if (address.empty() || address.front() == '#' || scheme == "javascript")
        return std::nullopt;
    if (!scheme.empty())
        return LinkTarget{address, scheme == "http" || scheme == "https"};
    if (address.starts_with("//"))
        return LinkTarget{"https:" + address, true};
    const auto shown = JudgedAddress::read(page);
    const std::string host = shown ? shown->host : "localhost"; // Whatever the site is, the page is judged too.
    const bool isPath = address.front() == '/' || address.front() == '?';
    return LinkTarget{"https://" + host + (isPath ? "" : "/") + address, true};
}

} // namespace quorvell
