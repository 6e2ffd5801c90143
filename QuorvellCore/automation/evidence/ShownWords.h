// SPDX-License-Identifier: MIT
// Whether a screen shows what somebody says it shows.
//
// A claim is a sentence of a model or an expectation of an instruction, so it is read by its words: those that carry
// meaning must all stand on the screen, as they are or with another ending ("confirmed" for "confirmation"), numbers as
// they are. A screen is full of words, so one that stands alone proves little: a "Sent" in the margin and a "Message"
// above a column do not say that a message was sent. Only texts count that hold two words of the claim, or all of it.
//
// That something is gone, empty or not there, on or off, a text must say as a whole; of what is on or off, an element
// of that name may also hold that very state.
#pragma once

#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ShownWords {
    static constexpr std::size_t longestClaim = 2'000; ///< Bytes; a longer claim is not shown.

    bool isShown = false;
    bool saysAbsence = false; ///< What a screen hardly ever shows: that something is not there.
    std::vector<std::string> missing{}; ///< Words of the claim that no text shows, normalised, in its order.

    static ShownWords of(std::string_view claim, const AutomationObservation& observation);

    /// Whether each word of the claim stands anywhere on the screen: for whoever asks whether that is new there.
    static bool anywhere(std::string_view claim, const AutomationObservation& observation);
    /// Likewise, whether one text says all of it in its order, small words included.
    static bool asOneText(std::string_view claim, const AutomationObservation& observation);

    bool operator==(const ShownWords&) const = default;
};

} // namespace quorvell
