// SPDX-License-Identifier: MIT
// Keys, and what Return does where text is typed.
#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/KeyModifiers.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/words/GuardWords.h"
#include "QuorvellCore/safety/words/JudgedText.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/OneLine.h"

#include <array>
#include <string>

namespace quorvell {

namespace {

struct NamedModifier {
    std::string_view prefix;
    unsigned bit;
};

constexpr auto namedModifiers = std::to_array<NamedModifier>({{"command+", KeyModifiers::command},
    {"cmd+", KeyModifiers::command}, {"control+", KeyModifiers::control}, {"ctrl+", KeyModifiers::control},
    {"option+", KeyModifiers::option}, {"alt+", KeyModifiers::option}, {"shift+", KeyModifiers::shift}});

/// Takes the modifiers off that a key's name begins with.
unsigned modifiersNamedBy(std::string& key)
{
    unsigned named = 0;
    for (bool isFound = true; isFound;) {
        isFound = false;
        for (const NamedModifier& modifier : namedModifiers) {
            if (key.size() <= modifier.prefix.size() || !key.starts_with(modifier.prefix))
                continue;
            key.erase(0, modifier.prefix.size());
            named |= modifier.bit;
            isFound = true;
        }
    }
    return named;
}

ActionRisk quitRisk(unsigned modifiers)
{
    if ((modifiers & KeyModifiers::shift) != 0)
        return ActionRisk::never("That logs you out of your Mac, so only you should do it.");
    if ((modifiers & KeyModifiers::control) != 0)
        return ActionRisk::askFirst("Shall I lock your screen?");
    return ActionRisk::askFirst("Shall I quit this program? Anything unsaved may be lost.");
}

ActionRisk deleteRisk(unsigned modifiers, bool inTextBox)
{
    if ((modifiers & KeyModifiers::shift) != 0)
        return ActionRisk::never("That empties the Trash, so only you should do it.");
    return inTextBox ? ActionRisk::safe() : ActionRisk::never("Only you should delete selected items.");
}

/// While Command is held.
ActionRisk commandRisk(std::string_view key, unsigned modifiers, bool inTextBox)
{
    const bool hasOption = (modifiers & KeyModifiers::option) != 0;
    if (key == "q")
        return quitRisk(modifiers);
    if (key == "w")
        return ActionRisk::askFirst(hasOption ? "Shall I close all these windows?" : "Shall I close this?");
    if (key == "return")
        return ActionRisk::askFirst("Shall I press Command-Return? That often sends or submits.");
    if (key == "d" && modifiers == (KeyModifiers::shift | KeyModifiers::command))
        return ActionRisk::askFirst("Shall I press Shift-Command-D? In Mail that sends the message.");
    if (key == "escape" && hasOption)
        return ActionRisk::askFirst("Shall I open Force Quit? Quitting a program loses anything unsaved.");
    return key == "delete" ? deleteRisk(modifiers, inTextBox) : ActionRisk::safe();
}

/// As names are compared: lower case, one space between words, none at the ends.
std::string comparedName(std::string_view name)
{
    std::string lower = onOneLine(trimmed(lowerCased(name)));
    if (lower.ends_with(".app"))
        lower.erase(lower.size() - 4);
    return lower;
}

} // namespace

ActionRisk SafetyGuard::keyRisk(std::string_view key, unsigned modifiers, bool inTextBox)
{
    std::string name = trimmed(lowerCased(key));
    modifiers |= modifiersNamedBy(name);
    const bool isCommand = (modifiers & KeyModifiers::command) != 0;
    return isCommand ? commandRisk(name, modifiers, inTextBox) : ActionRisk::safe();
}

ActionRisk SafetyGuard::returnInTextBoxRisk(std::string_view label, std::string_view role, std::string_view app,
    std::string_view hint, std::string_view subrole)
{
    if (!ElementRole::isTextEntry(role) || isSearchField(role, subrole, label, hint) || isAddressBar(label))
        return ActionRisk::safe();
    const bool sends = GuardWords::isMessagingApp(comparedName(app))
        || GuardWords::messages().isIn(JudgedText(std::string(label) + ' ' + std::string(hint)));
    return sends ? ActionRisk::askFirst("Shall I send it?") : ActionRisk::safe();
}

bool SafetyGuard::isSearchField(
    std::string_view role, std::string_view subrole, std::string_view label, std::string_view hint)
{
    return role == ElementRole::searchField || subrole == ElementRole::searchField || looksLikeSearch(label, hint);
}

bool SafetyGuard::looksLikeSearch(std::string_view label, std::string_view hint)
{
    const JudgedText words(std::string(label) + ' ' + std::string(hint));
    const auto says = [&](std::string_view word) { return words.lower().find(word) != std::string::npos; };
    return (says("search") || says("find")) && !GuardWords::searchVetoes().isIn(words);
}

bool SafetyGuard::isAddressBar(std::string_view label)
{
    return GuardWords::isAddressBarName(comparedName(label));
}

} // namespace quorvell
