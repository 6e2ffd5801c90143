// SPDX-License-Identifier: MIT
// What in a text counts by itself when it is asked where the text came from. Internal to this folder's sources.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// An address on the web as it stands in a text.
struct NamedSite {
    std::string site; ///< Its host, without "www." and "m.".
    std::string whole; ///< With path, query and fragment.
    bool operator==(const NamedSite&) const = default;
};

/// Values that can be looked for in another text.
struct WordPieces {
    static constexpr std::size_t fewestDigits = 4; ///< Of a number that counts: a year, the end of a card, a code.
    static constexpr std::size_t runLength = 5; ///< Words; shorter runs stand in any two texts.

    std::vector<NamedSite> sites{};
    std::vector<std::string> mails{}; ///< Addresses of mail and names with "@".
    std::vector<std::string> paths{}; ///< Of files.
    std::vector<std::string> numbers{}; ///< Their digits alone.

    static WordPieces of(std::string_view text);

    /// Where a run of words begins in a text that is normalised, with a space at both ends; none in a shorter one.
    static std::vector<std::string_view> runsIn(std::string_view words);
    static std::uint64_t hashOf(std::string_view run);
    static std::optional<NamedSite> siteOf(std::string_view address);
};

} // namespace quorvell
