// SPDX-License-Identifier: MIT
// What is looked for in the calendar, and what is done with what is found.
#pragma once

#include "Understanding/time/SpokenDays.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct EventSearch {
    enum class Aim {
        none, ///< Nothing is looked for by this.
        tell,
        confirm, ///< Whether it is there.
        when,
        where,
        who,
        ends, ///< How long it lasts.
        cancel,
        remind, ///< `minutes` before it begins, of it or to do `value`.
        rename, ///< To `value`.
        place, ///< At `value` from now on.
    };

    Aim aim = Aim::none;
    std::string name{}; ///< As it was said; empty for any event.
    std::string noun{}; ///< "meeting", where they called it that.
    std::optional<SpokenDays> days{}; ///< Nothing where nobody named any.
    bool isUnclear = false; ///< The words say more of the time than was understood.
    bool isAll = false; ///< Every one that fits.
    bool isNext = false; ///< The first that is still to come.
    bool isLast = false; ///< The last one of `days`.
    bool isBack = false; ///< One that is over.
    bool isWide = false; ///< A whole year is looked through, since less was not enough.
    int minutes = 0;
    std::string value{};

    bool operator==(const EventSearch&) const = default;
};

} // namespace quorvell
