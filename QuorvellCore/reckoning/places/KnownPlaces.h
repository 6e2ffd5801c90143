// SPDX-License-Identifier: MIT
// Places that no time zone is named after, and countries whose zones ICU lists without saying which are the main ones.
#pragma once

#include <span>
#include <string_view>

namespace quorvell {

struct KnownPlaces {
    struct Row {
        std::string_view zones; ///< Apart by "|"; each with the city that stands for it, where that is not its own
                                ///< name: "Zone=City".
        std::string_view names; ///< In lower case without accents, apart by "|".
    };

    static std::span<const Row> cities(); ///< One zone each.
    static std::span<const Row> regions(); ///< States, countries, coasts.
    static std::span<const Row> zones(); ///< "eastern time", "gmt".
};

} // namespace quorvell
