// SPDX-License-Identifier: MIT
// A request without the dress that people put on it. Pure.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct PlainWording {
    static constexpr std::size_t longest = 400; ///< Bytes; a longer text is somebody's own, and stays.

    /// The plain request in what was typed or heard: without an assistant's name, shorthand, slips, thanks and reasons,
    /// and with what stands behind its matter ("milk, put it on the list") in front. What is to be kept stays as it was
    /// written: what stands between quotes, and what is dictated.
    static std::string of(std::string_view said);
};

} // namespace quorvell
