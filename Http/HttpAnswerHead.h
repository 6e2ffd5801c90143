// SPDX-License-Identifier: MIT
// Reads the head of an HTTP/1.1 answer. Pure: the bytes so far in, a reading out.
#pragma once

#include "Http/HttpFields.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorvell {

/// An answer without its body, which follows after `headBytes`.
struct HttpAnswerHead {
    static constexpr std::size_t longestHead = 16 * 1024;

    int status = 0;
    http_fields::Fields fields{};
    std::size_t headBytes = 0; ///< With the empty line that ends it.
    std::optional<std::size_t> bodyBytes{}; ///< Absent: the body ends with the connection.

    std::string_view field(std::string_view name) const { return http_fields::value(fields, name); }
    bool fieldHas(std::string_view name, std::string_view token) const { return http_fields::has(fields, name, token); }
};

struct [[nodiscard]] HttpAnswerReading {
    enum class Kind { incomplete, whole, notUnderstood };

    Kind kind = Kind::incomplete;
    HttpAnswerHead head{}; ///< When whole.

    /// `whole` as soon as the head is there; the body may still be on its way.
    static HttpAnswerReading of(std::string_view bytes);
};

} // namespace quorvell
