// SPDX-License-Identifier: MIT
// A lasting fact that the user tells about themselves.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct FactWords {
    enum class Certainty {
        told, ///< The user said that it is about them.
        likely, ///< It was to be remembered, as many things are.
    };

    /// "that I prefer tea" gives "Prefers tea." Nothing when the words are no such fact.
    static std::optional<std::string> read(std::string_view content, Certainty certainty);
    /// Whether the words tell something, and are nothing to do: "Leo wears size 38".
    static bool isStatement(std::string_view content);
    /// "the pin is 4711": nothing that may be written down anywhere.
    static bool isSecret(std::string_view content);
};

} // namespace quorvell
