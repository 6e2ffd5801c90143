// SPDX-License-Identifier: MIT
// Practice worlds as JSON files: docs/formats/practice.md.
#pragma once

#include "Quorvell/practice/description/PracticeDescription.h"
#include "Quorvell/practice/file/PracticeMistakes.h"

#include <cstddef>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvell {

struct PracticeFile {
    static constexpr std::size_t mostBytes = 256 * 1024;
    static constexpr std::size_t mostApps = 20;
    static constexpr std::size_t mostPlaces = 100; ///< Windows, and pages, of one application.
    static constexpr std::size_t mostElements = 300; ///< Of one window or page.
    static constexpr std::size_t mostFacts = 500;

    /// The mistakes where there is one: a world is taken whole or not at all.
    static std::variant<PracticeDescription, std::vector<PracticeMistake>> parse(std::string_view text);
};

} // namespace quorvell
