// SPDX-License-Identifier: MIT
// Judges every action on another application before it runs: harmless, to be asked first, or the user's alone.
//
// Each verdict is made of words and signs of what the action touches, as it is written and as it looks (JudgedText).
// Whoever knows more than one thing about an action asks for each and takes the strictest. Texts in the verdicts are
// spoken as they stand.
#pragma once

#include "QuorvellCore/safety/ActionRisk.h"
#include "QuorvellCore/safety/FileMention.h"

#include <span>
#include <string_view>

namespace quorvell {

class JudgedText;

/// Functions of their arguments; any thread. A verdict costs microseconds, and grows with the length of a text only.
struct SafetyGuard {
    // Pressing

    /// Of an element on the screen. The same in every application; what may be opened at all says activationRisk.
    static ActionRisk risk(std::string_view label, std::string_view role, std::string_view app = {});
    /// The same for a label that was made ready already.
    static ActionRisk risk(const JudgedText& words, std::string_view label, std::string_view role);
    /// Of Return where it presses a button: `label` and `role` are the button's, or of the window (role "AXWindow")
    /// that has one which cannot be seen; that one is always asked about.
    static ActionRisk defaultButtonRisk(std::string_view label, std::string_view role, std::string_view app = {});
    /// A link, or a label that names a site.
    static bool isNavigationLink(std::string_view label, std::string_view role);

    // Typing

    static ActionRisk fieldRisk(std::string_view label, std::string_view role);
    static ActionRisk textRisk(std::string_view text);
    /// What must not leave the computer; `isSecure` where the desktop itself marks the field so.
    static bool isSensitiveValue(
        std::string_view label, std::string_view role, std::string_view value, bool isSecure = false);
    /// Card numbers end in a digit that follows from the others. False for anything but digits.
    static bool luhnValid(std::string_view digits);

    // Keys

    /// `modifiers` are those of KeyModifiers; `key` may name some itself: "command+w".
    static ActionRisk keyRisk(std::string_view key, unsigned modifiers, bool inTextBox);
    /// `hint` is the text that an empty box shows.
    static ActionRisk returnInTextBoxRisk(std::string_view label, std::string_view role, std::string_view app,
        std::string_view hint, std::string_view subrole);
    static bool isSearchField(
        std::string_view role, std::string_view subrole, std::string_view label, std::string_view hint);
    static bool looksLikeSearch(std::string_view label, std::string_view hint);
    static bool isAddressBar(std::string_view label);

    // Applications, sites, files

    static ActionRisk appRisk(std::string_view name);
    /// Of an application that is opened or brought forward by pressing this element.
    static ActionRisk activationRisk(std::string_view app, std::string_view label, std::string_view role);
    /// Of acting in the application in front, which the desktop knows by `identifier`.
    static ActionRisk frontAppRisk(std::string_view identifier, std::string_view windowTitle);
    /// In the desktop's settings moving about may already change something.
    static bool isSettingsNavigation(std::string_view identifier);

    static ActionRisk websiteRisk(std::string_view address);
    /// Safe where the address has no site, which websiteRisk refuses.
    static ActionRisk siteRisk(std::string_view address);
    /// Of Return in the address bar behind this text, which may be an address or words to search for.
    static ActionRisk addressBarRisk(std::string_view text);
    /// `name` with its folders or without.
    static ActionRisk openFileRisk(std::string_view name, FileMention mention);

    // Words

    static bool isAffirmative(std::string_view text);
    /// `word` in `text` as a whole word with one of the endings; the case of letters apart.
    static bool containsWord(std::string_view word, std::string_view text, std::span<const std::string_view> endings);
};

} // namespace quorvell
