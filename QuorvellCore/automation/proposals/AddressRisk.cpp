// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/proposals/AddressRisk.h"

#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/places/FileKind.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

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

} // namespace

ActionRisk addressRisk(std::string_view address)
{
    const ActionRisk risk = SafetyGuard::websiteRisk(address);
    const auto judged = JudgedAddress::read(address);
    if (!judged)
        return risk;
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
