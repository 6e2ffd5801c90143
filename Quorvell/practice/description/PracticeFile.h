// SPDX-License-Identifier: MIT
// Practice worlds as JSON files: docs/formats/practice.md.
#pragma once

#include "Quorvell/practice/description/PracticeDescription.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvell {

struct PracticeMistake {
    std::string place; ///< Such as "apps[0].windows[1].elements[3].role"; empty: the file as a whole.
    std::string sentence;

    bool operator==(const PracticeMistake&) const = default;
};

struct PracticeFile {
    static constexpr std::size_t mostBytes = 256 * 1024;
    static constexpr std::size_t mostApps = 20;
    static constexpr std::size_t mostPlaces = 100; ///< Windows and pages of one application.
    static constexpr std::size_t mostElements = 300; ///< Of one window or page.
    static constexpr std::size_t mostFacts = 500;
    static constexpr std::size_t mostInList = 100; ///< Effects, conditions, options, menus, steps ...
    static constexpr std::size_t longestText = 8 * 1024; ///< Bytes.
    static constexpr std::size_t mostMistakes = 20; ///< Told at once.

    /// The mistakes where there is one: a world is taken whole or not at all.
    static std::variant<PracticeDescription, std::vector<PracticeMistake>> parse(std::string_view text);
};

} // namespace quorvell
