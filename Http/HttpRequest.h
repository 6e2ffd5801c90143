// SPDX-License-Identifier: MIT
// Reads the head of an HTTP/1.1 request. Pure: the bytes so far in, a reading out.
#pragma once

#include "Http/HttpFields.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

/// A request without its body, which follows after `headBytes`.
struct HttpRequest {
    static constexpr std::size_t longestHead = 16 * 1024;
    static constexpr std::size_t longestBody = 16 * 1024 * 1024;

    std::string method{};
    std::string target{}; ///< With its query.
    http_fields::Fields fields{}; ///< Names in lower case; the values of a repeated one are joined by ", ".
    std::size_t headBytes = 0; ///< With the empty line that ends it.
    std::size_t bodyBytes = 0;

    std::string_view path() const { return std::string_view(target).substr(0, target.find('?')); }
    /// Empty when there is none of this name (in lower case).
    std::string_view field(std::string_view name) const { return http_fields::value(fields, name); }
    /// Whether a list of tokens names this one (in lower case), in any case.
    bool fieldHas(std::string_view name, std::string_view token) const { return http_fields::has(fields, name, token); }
    /// The client waits for leave to send its body.
    bool expectsContinue() const { return fieldHas("expect", "100-continue"); }
    /// What is wrong with it as a request for a WebSocket: a status (400 or 426), or 0.
    int upgradeProblem() const;
    /// "Authorization: Bearer KEY"; empty when there is none.
    std::string_view bearer() const;

    bool operator==(const HttpRequest&) const = default;
};

struct [[nodiscard]] HttpReading {
    enum class Kind { incomplete, whole, refused };

    Kind kind = Kind::incomplete;
    HttpRequest request{}; ///< When whole.
    int status = 0; ///< When refused.
    std::string reason{}; ///< A sentence for whoever wrote the client.

    bool operator==(const HttpReading&) const = default;

    /// `whole` as soon as the head is there; the body may still be on its way.
    static HttpReading of(std::string_view bytes);
};

/// Takes as long wherever the texts differ. Nothing equals an empty expectation.
bool isSameSecret(std::string_view given, std::string_view expected);

} // namespace quorvell
