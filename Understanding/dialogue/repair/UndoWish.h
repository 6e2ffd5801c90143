// SPDX-License-Identifier: MIT
// What of the things that the assistant did somebody wants taken back, done again, or told.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct UndoWish {
    enum class Kind {
        last, ///< The last `count` requests.
        before, ///< The one before the last.
        everything,
        named, ///< What `words` say.
        redo,
        tellLast, ///< "What did you just do?"
        tellAll,
        tellWhether, ///< "Did you do it?"
    };

    Kind kind = Kind::last;
    std::size_t count = 1; ///< 1 to 50.
    std::string words{};

    /// Nothing for words that say anything else. "Delete it" is none: that may be the thing which was talked about.
    static std::optional<UndoWish> read(std::string_view core);
    /// "Cancel that", "forget it": the last act where it was just done, else what was talked about.
    static bool isOfWhatWasJustDone(std::string_view core);

    bool operator==(const UndoWish&) const = default;
};

} // namespace quorvell
