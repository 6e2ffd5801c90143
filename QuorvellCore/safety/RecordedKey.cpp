// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/RecordedKey.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

struct OtherName {
    std::string_view written;
    std::string_view recorded;
};

/// In the order in which they are recorded. Ctrl does on this desktop what Command does elsewhere.
constexpr auto modifierNames =
    std::to_array<OtherName>({{"command", "command"}, {"cmd", "command"}, {"ctrl", "command"}, {"control", "command"},
        {"option", "option"}, {"opt", "option"}, {"alt", "option"}, {"shift", "shift"}});
constexpr auto recordedModifiers = std::to_array<std::string_view>({"command", "option", "shift"});

constexpr auto keyNames = std::to_array<OtherName>({{"enter", "return"}, {"kp enter", "return"}, {"esc", "escape"},
    {"backspace", "delete"}, {"back space", "delete"}, {"del", "delete"}, {"forward delete", "delete"}, {" ", "space"},
    {"spacebar", "space"}, {"space bar", "space"}, {"pageup", "page up"}, {"prior", "page up"}, {"pgup", "page up"},
    {"pagedown", "page down"}, {"next", "page down"}, {"pgdn", "page down"}, {"arrow left", "left"},
    {"arrowleft", "left"}, {"left arrow", "left"}, {"arrow right", "right"}, {"arrowright", "right"},
    {"right arrow", "right"}, {"arrow up", "up"}, {"arrowup", "up"}, {"up arrow", "up"}, {"arrow down", "down"},
    {"arrowdown", "down"}, {"down arrow", "down"}, {"+", "plus"}, {"=", "plus"}, {"equal", "plus"}, {"-", "minus"}});

template <std::size_t size>
std::string_view recordedIn(const std::array<OtherName, size>& table, std::string_view written)
{
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const OtherName& name) { return name.written == written; });
    return found == table.end() ? std::string_view() : found->recorded;
}

/// Takes one modifier off the front; empty where there is none, or where nothing would be left.
std::string_view takenModifier(std::string& key)
{
    const auto end = key.find_first_of("+-", 1);
    if (end == std::string::npos || end + 1 >= key.size())
        return {};
    const std::string_view modifier = recordedIn(modifierNames, trimmed(key.substr(0, end)));
    if (!modifier.empty())
        key = key.size() - end > 2 ? trimmed(key.substr(end + 1)) : key.substr(end + 1);
    return modifier;
}

bool isKeyName(std::string_view key)
{
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789 ";
    return !key.empty() && (characterCount(key) == 1 || key.find_first_not_of(letters) == std::string_view::npos);
}

} // namespace

std::optional<std::string> recordedKey(std::string_view text)
{
    constexpr std::size_t longest = 64; // Bytes; no chord is as long.
    if (text.size() > longest)
        return std::nullopt;
    std::string key = lowerCased(text);
    key = key == " " ? key : trimmed(key);
    if (key.size()
        > 2) // Within a name only ("page_up"): in front, at the end and alone it is the underscore's own key.
        std::replace(key.begin() + 1, key.end() - 1, '_', ' ');
    std::array<bool, recordedModifiers.size()> isHeld{};
    for (std::string_view modifier = takenModifier(key); !modifier.empty(); modifier = takenModifier(key)) {
        const auto place = std::find(recordedModifiers.begin(), recordedModifiers.end(), modifier);
        isHeld[static_cast<std::size_t>(place - recordedModifiers.begin())] = true;
    }
    if (const std::string_view known = recordedIn(keyNames, key); !known.empty())
        key = known;
    if (!isKeyName(key))
        return std::nullopt;
    std::string recorded;
    for (std::size_t index = 0; index < isHeld.size(); ++index) {
        if (isHeld[index])
            (recorded += recordedModifiers[index]) += '+';
    }
    return recorded + key;
}

} // namespace quorvell
