// SPDX-License-Identifier: MIT
// What came back of a request, and what it is to whoever asked. Pure.
#pragma once

#include "QuorvellCore/automation/engine/http/DecisionError.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Secrets.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <variant>

namespace quorvell {

struct PostReply {
    static constexpr std::size_t longestBody = 1024 * 1024; ///< Bytes. A decision has a few hundred.
    static constexpr std::size_t longestHead = 64 * 1024; ///< Bytes, with whatever heads and trailers are in between.
    static constexpr std::size_t longestReason = 200; ///< User-perceived characters of a service's own words.

    enum class End {
        whole,
        cancelled,
        timedOut,
        unknownName,
        noConnection,
        noProxy, ///< The one that the user's network asks for is not there, or does not let the request through.
        notTrusted, ///< The certificate is not the host's, or nobody vouches for it.
        brokenOff,
        notHTTP,
    };

    End end = End::whole;
    int status = 0;
    std::string body{};
    bool isTooLarge = false; ///< Beyond a bound; `body` is its beginning.
    std::optional<std::chrono::seconds> retryAfter{};

    /// The JSON object that a status of 200 to 299 came with; else what went wrong, in a sentence that names the host.
    std::variant<Json, DecisionError> judged(
        const std::string& host, std::chrono::milliseconds timeout, const Secrets& secrets) const;
};

} // namespace quorvell
