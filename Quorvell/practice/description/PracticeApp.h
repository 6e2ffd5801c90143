// SPDX-License-Identifier: MIT
// An application of a practice world: its windows, its menus, and of a browser its pages.
#pragma once

#include "Quorvell/practice/description/PracticeElement.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// A window, or what a browser shows under an address.
struct PracticePlace {
    std::string name{}; ///< Of a window: one for each of the world. Of a page: its address.
    std::string title{};
    std::string text{}; ///< What can be read there; empty: the labels and values of what is shown.
    std::vector<PracticeElement> elements{};
    std::map<std::string, PracticeEffects> keys{}; ///< By key as AutomationAction::supportedKeys names it.
    PracticeEffects opened{}; ///< When it comes up.
    bool isDialog = false; ///< Escape closes it.
    std::string redirect{}; ///< Of a page: another address, shown in its stead.
    std::chrono::milliseconds loading{}; ///< Of a page: how long nothing of it is there.

    bool operator==(const PracticePlace&) const = default;
};

struct PracticeMenuItem {
    std::vector<std::string> path{}; ///< Outermost first.
    PracticeConditions shownWhen{};
    PracticeConditions enabledWhen{};
    PracticeEffects chosen{};

    bool operator==(const PracticeMenuItem&) const = default;
};

struct PracticeApp {
    std::string name{};
    std::string identifier{}; ///< As the desktop knows it.
    std::string start{}; ///< Of its windows, or the address of a page in a browser; empty in a browser: an empty tab.
    bool isBrowser = false;
    bool opens = true; ///< False: nothing ever comes of opening it.
    std::chrono::milliseconds opening{};
    PracticeEffects opened{};
    std::vector<PracticePlace> windows{};
    std::vector<PracticePlace> pages{};
    std::vector<PracticeMenuItem> menus{};
    std::string searchPage{}; ///< Of a browser: shown for words in its address bar; they become the fact "searched".
    std::optional<PracticeElement> addressBar{}; ///< Of a browser; its fact is the address.

    bool operator==(const PracticeApp&) const = default;
};

} // namespace quorvell
