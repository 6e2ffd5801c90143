#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// A lasting fact that the user tells about themselves.
struct FactWords {
    /// "remember that I prefer tea" gives "Prefers tea." Nothing when the words are no such wish. `core` is an
    /// utterance without its opening and closing words.
    static std::optional<std::string> read(std::string_view core);
};

} // namespace quorvell
