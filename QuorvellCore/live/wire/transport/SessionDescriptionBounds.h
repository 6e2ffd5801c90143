// SPDX-License-Identifier: MIT
// What a description of a call (SDP, RFC 8866) may look like before the library that understands it gets to see it.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

/// Far above what any real peer sends; it keeps a hostile one from making the library work.
struct SessionDescriptionBounds {
    static constexpr std::size_t bytes = 64 * 1024;
    static constexpr std::size_t lines = 1'000;
    static constexpr std::size_t lineBytes = 2'048;
    static constexpr std::size_t media = 8; ///< A call needs two: the voice and the channel of texts.
    static constexpr std::size_t candidates = 100;

    /// Lines "letter=value" that begin with the version, within the limits, without control characters.
    static bool hold(std::string_view sdp);
};

} // namespace quorvell
