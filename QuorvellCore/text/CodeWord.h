// SPDX-License-Identifier: MIT
// What another program gives as a code, kind or id, where it goes into a record that must hold nothing else.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

/// The text where it looks like one: 1 to `longestCodeWord` letters, digits, "_", "-", "." and ":". Else "other", for
/// it may repeat what somebody said or typed. Empty stays empty.
std::string codeWord(std::string_view text);

constexpr std::size_t longestCodeWord = 64; ///< Bytes.

} // namespace quorvell
