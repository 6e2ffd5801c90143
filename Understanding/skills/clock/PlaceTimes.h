// SPDX-License-Identifier: MIT
// What the clocks show, here and elsewhere. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct PlaceTimes {
    /// Each is an answer; nothing where something else is asked. `phrase` as ClockPhrase gives it, `core` as it was
    /// said.
    static std::optional<std::string> current(const std::string& phrase, const LocalTime& around);
    static std::optional<std::string> difference(const std::string& phrase, const LocalTime& around);
    static std::optional<std::string> zone(const std::string& phrase, const LocalTime& around);
    static std::optional<std::string> converted(std::string_view core, const LocalTime& around);
    /// In a place that was asked back for; what no place is is told.
    static std::string in(std::string_view place, const LocalTime& around);
    /// Whether the question lacks the place: "what time is it in a city".
    static bool lacksPlace(const std::string& phrase);
};

} // namespace quorvell
