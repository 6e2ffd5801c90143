// SPDX-License-Identifier: MIT
// How much of a screen is taken in. A page may hold any number of elements, with texts of any length.
#pragma once

#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

struct ObservationBounds {
    static constexpr std::size_t mostCandidates = 5'000; ///< A screen of 2,000 is an ordinary one.
    static constexpr std::size_t mostBytes = 4 * 1024 * 1024; ///< Of the texts of all elements.
    static constexpr std::size_t longestName = 4'096; ///< Bytes of an id, a role or a label.
    static constexpr std::size_t longestValue =
        16'384; ///< User-perceived characters: four times what is typed at once.
    static constexpr std::size_t longestTitle =
        1'000; ///< Characters of the application's name and of a window's title.
    static constexpr std::size_t longestPage = 64 * 1024; ///< Bytes of an address; one that is longer has no site.

    /// Cuts the observation to these and returns a sentence for the model about each kind of thing that is missing.
    ///
    /// An element whose name is too long is left out whole: what is cut away could be what its press is judged by. So
    /// is one that shares its id with an element that was left out, since an action could then no longer be seen to
    /// mean two.
    [[nodiscard]] static std::vector<std::string> keep(AutomationObservation& observation);

    /// Keeps the first `most` user-perceived characters, in at most 4 bytes for each; true when something was cut off.
    static bool cut(std::string& text, std::size_t most);
};

} // namespace quorvell
