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
        length, ///< To last `minutes`.
    };

    Aim aim = Aim::none;
    std::string name{}; ///< As it was said; empty for any event.
    std::string noun{}; ///< "meeting", where they called it that.
    std::optional<SpokenDays> days{}; ///< Nothing where nobody named any.
    bool isUnclear = false; ///< The words say more of the time than was understood.
    bool isAll = false; ///< Every one that fits.
    bool isNext = false; ///< The first that is still to come.
    bool isLast = false; ///< The last one of `days`.
    std::size_t place = 0; ///< The second one of `days` is 2; 0 where none was counted.
    std::string except{}; ///< The name of what is not meant: "all but the dentist".
    bool isSpan = false; ///< How long it is until then is asked.
    bool isLoose = false; ///< Nothing says that it stands in the calendar: it may be a reminder as well.
    bool isBack = false; ///< One that is over.
    bool isWide = false; ///< A whole year is looked through, since less was not enough.
    int minutes = 0;
    std::string value{};

    bool operator==(const EventSearch&) const = default;
};

} // namespace quorvell
