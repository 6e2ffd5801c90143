// SPDX-License-Identifier: MIT
// Applications, sites and files that are to be opened.
#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SavedFileCheck.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/places/DesktopPlace.h"
#include "QuorvellCore/safety/places/FileKind.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/safety/places/MoneySites.h"
#include "QuorvellCore/safety/words/GuardWords.h"
#include "QuorvellCore/safety/words/JudgedText.h"
#include "QuorvellCore/safety/words/LabelPatterns.h"
#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>
#include <string>

namespace quorvell {

namespace {

/// What follows them in an address bar runs or is shown with the rights of the page, even behind a space.
constexpr auto runningSchemes = std::to_array<std::string_view>({"javascript", "vbscript", "data", "file"});

/// Words of search engines that look like schemes: "site:example.com".
constexpr auto searchOperators =
    std::to_array<std::string_view>({"site", "intitle", "inurl", "filetype", "define", "related"});

std::string withoutEnding(std::string text, std::string_view ending)
{
    if (asciiLowerCased(text).ends_with(ending))
        text.erase(text.size() - ending.size());
    return text;
}

/// "javascript:", "https:", but not the "Re: " of words to search for.
bool beginsWithScheme(std::string_view lower)
{
    const auto colon = lower.find(':');
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789+.-";
    if (colon == std::string_view::npos || lower.find_first_not_of(letters) != colon)
        return false;
    const std::string_view scheme = lower.substr(0, colon);
    const bool isWord = colon + 1 == lower.size() || lower.substr(colon + 1, 1) == " ";
    return isOneOf(runningSchemes, scheme) || (!isWord && !isOneOf(searchOperators, scheme));
}

ActionRisk siteRiskOf(const JudgedAddress& address)
{
    if (!MoneySites::isMoneySite(address.host) && !MoneySites::isAccountPage(address))
        return ActionRisk::safe();
    return ActionRisk::askFirst(
        "This is " + address.site + ", where things can move money or change your account. Shall I go ahead?");
}

} // namespace

ActionRisk SafetyGuard::appRisk(std::string_view name)
{
    if (!GuardWords::forbiddenPrograms().isIn(JudgedText(name)))
        return ActionRisk::safe();
    return ActionRisk::never(SpokenLabel::shown(withoutEnding(trimmed(name), ".app"))
        + " can change important things or let someone into the computer, so I won't open it for you.");
}

ActionRisk SafetyGuard::activationRisk(std::string_view app, std::string_view label, std::string_view role)
{
    return ActionRisk::strictest(
        appRisk(app), role == ElementRole::window ? defaultButtonRisk(label, role, app) : risk(label, role, app));
}

ActionRisk SafetyGuard::frontAppRisk(std::string_view identifier, std::string_view windowTitle)
{
    if (!isSettingsNavigation(identifier))
        return ActionRisk::safe();
    // A window without a title may be any of them.
    if (SpokenLabel::shown(windowTitle).empty() || GuardWords::guardedSettings().isIn(JudgedText(windowTitle)))
        return ActionRisk::never("This window is for your Mac's security, passwords or installing things, so only you "
                                 "should use it.");
    return ActionRisk::askFirst("This changes your Mac's settings. Shall I go ahead?");
}

bool SafetyGuard::isSettingsNavigation(std::string_view identifier)
{
    return desktopPlaceOfApp(identifier) == DesktopPlace::settings;
}

ActionRisk SafetyGuard::websiteRisk(std::string_view address)
{
    const auto judged = JudgedAddress::read(address);
    if (!judged)
        return ActionRisk::never("That doesn't look like a normal web address.");
    if (hasLongNumber(judged->text))
        return ActionRisk::askFirst("That link carries personal details. Shall I open it?");
    return siteRiskOf(*judged);
}

ActionRisk SafetyGuard::siteRisk(std::string_view address)
{
    const auto judged = JudgedAddress::read(address);
    return judged ? siteRiskOf(*judged) : ActionRisk::safe();
}

ActionRisk SafetyGuard::addressBarRisk(std::string_view text)
{
    return beginsWithScheme(trimmed(lowerCased(text))) || JudgedAddress::read(text) ? websiteRisk(text)
                                                                                    : ActionRisk::safe();
}

ActionRisk SafetyGuard::openFileRisk(std::string_view name, FileMention mention)
{
    const std::string opening = "Opening " + SpokenLabel::quoted(fileNameOf(name));
    if (SavedFileCheck::isUnfinished(fileNameOf(name)))
        return ActionRisk::never(opening + " has to wait until it has been downloaded.");
    switch (fileKind(name)) {
    case FileKind::program:
        return ActionRisk::never(opening + " can run or install things, so you should open it yourself.");
    case FileKind::other:
        return ActionRisk::askFirst(opening + " may do more than show it. Shall I go ahead?");
    case FileKind::document:
        break;
    }
    if (mention == FileMention::byUser)
        return ActionRisk::safe();
    return ActionRisk::askFirst(opening + " is not something that you asked for by its name. Shall I go ahead?");
}

} // namespace quorvell
