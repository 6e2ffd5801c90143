// SPDX-License-Identifier: MIT
// What the fast selector may do.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quorvell {

enum class PimMode {
    off,
    shadow, ///< It is asked beside the planner, to learn how often they agree; nothing is done by its answer.
    active,
};

inline constexpr std::array<PimMode, 3> allPimModes = {PimMode::off, PimMode::shadow, PimMode::active};

/// The name of the enumerator.
std::string_view storedText(PimMode mode);
std::optional<PimMode> pimMode(std::string_view stored);

} // namespace quorvell
