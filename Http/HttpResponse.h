// SPDX-License-Identifier: MIT
// Builds answers to HTTP/1.1 requests. Pure.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// One answer; the connection ends with it.
struct HttpResponse {
    int status = 200;
    std::string contentType = "application/json";
    std::string body;
    std::string allow{}; ///< With 405: the method that is served, "GET".
    int retryAfterSeconds = 10; ///< With 429 and 503: when it may be tried again.

    /// A refusal: {"error": {"message": reason, "type": ..., "code": code}}. `reason` is a sentence for whoever wrote
    /// the client.
    static HttpResponse refusal(int status, std::string_view reason, std::string_view code = {});

    std::string bytes() const;
    /// The head of an event stream, whose length is not known beforehand.
    static std::string eventStreamHead();

    bool operator==(const HttpResponse&) const = default;
};

} // namespace quorvell
