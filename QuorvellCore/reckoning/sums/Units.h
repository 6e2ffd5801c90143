// SPDX-License-Identifier: MIT
// Units of measure and what they come to in one another. Pure.
#pragma once

#include "QuorvellCore/reckoning/sums/ExactNumber.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct Unit {
    enum class Kind { length, mass, volume, area, speed, time, data, energy, pressure, power, temperature };

    Kind kind = Kind::length;
    std::string_view one; ///< "mile"
    std::string_view many; ///< "miles"
    long long numerator = 1; ///< So much of its kind's base unit it is, as a fraction.
    long long denominator = 1;
    /// Of temperatures: what is added to a reading before it is multiplied, as a fraction of 100.
    long long shiftHundredths = 0;
};

struct Units {
    /// By any of its names, one or several: "km", "kilometres", "degrees fahrenheit". Null for what is none.
    static const Unit* named(std::string_view name);
    /// Nothing where the two measure different things.
    static std::optional<ExactNumber> convert(const ExactNumber& amount, const Unit& from, const Unit& to);
    /// "1 mile", "2.5 cups"
    static std::string text(const ExactNumber& amount, const Unit& unit);
};

} // namespace quorvell
