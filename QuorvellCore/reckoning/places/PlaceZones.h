// SPDX-License-Identifier: MIT
// Which time zones go with the name of a place: a city, a state, a country or a zone itself. English names, without
// accents.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct PlaceZone {
    std::string place; ///< "New York"
    std::string zone; ///< "America/New_York"

    bool operator==(const PlaceZone&) const = default;
};

struct PlaceZones {
    /// `ownNames` leaves out what takes milliseconds to work out: for words that need not be a place.
    enum class Depth { ownNames, all };

    static constexpr std::size_t mostWords = 8; ///< Of a name that is looked up; no place here has more.

    /// One for a city; the main ones of a country or state with several zones; none for a place that is not known.
    /// "Dallas, Texas" is the city where both names fit together.
    static std::vector<PlaceZone> find(std::string_view words, Depth depth = Depth::all);
};

} // namespace quorvell
