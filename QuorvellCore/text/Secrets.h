// SPDX-License-Identifier: MIT
// Words that are never shown and never recorded, such as the keys of services.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A value.
struct Secrets {
    static constexpr std::size_t shortest = 8; ///< Bytes. A shorter one is no secret, and stands in other words.
    static constexpr std::string_view inTheirPlace = "(key)";

    std::vector<std::string> words;

    /// The text with each of them replaced.
    std::string blanked(std::string text) const;

    bool operator==(const Secrets&) const = default;
};

} // namespace quorvell
