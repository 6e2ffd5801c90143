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
        length, ///< To last `minutes`, or until `value`.
        copy, ///< To have the same once more, `value` says when.
        clashes, ///< What is at the same time as something else.
        repeats, ///< Whether, or which, comes back.
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
    bool rings = false; ///< Of remind: by an alarm.
    int minutes = 0;
    bool isUsualLead = false; ///< Of remind: nobody said how long before.
    bool isRelative = false; ///< Of length: `minutes` are added to what it lasts, or taken off below 0.
    std::string value{};
    std::string anchor{}; ///< The name of an event that bounds the time: "after the staff meeting".
    bool isAfterAnchor = false; ///< Behind it, else before it.
    std::optional<DateParts> hour{}; ///< "At 1 PM", where nobody named a day.
    std::string otherwise{}; ///< What is said where nothing is found, in place of the usual.
    bool isForModel = false; ///< A bigger model may know what `otherwise` says is not known here.
    bool isElsewhere = false; ///< There is nothing like it where it was said to be: it is looked for at other times.
    std::string missed{}; ///< Says what is not there, in front of what is.
    bool isOfSeries = false; ///< Only what comes back.
    std::string fallback{}; ///< Of remind: what the reminder is of where no such event is there, in their words.

    bool operator==(const EventSearch&) const = default;
};

} // namespace quorvell
