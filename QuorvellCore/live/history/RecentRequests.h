// SPDX-License-Identifier: MIT
// What the user asked for lately, so that actions can be traced back to the user's own words.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Times are the session's: milliseconds since an arbitrary start.
struct RecentRequests {
    using Time = std::chrono::milliseconds;

    static constexpr Time joinWithin{1500}; ///< Recognition delivers one request in several pieces.
    /// What goes on for longer is a request anew, so that its last words count for a minute at least.
    static constexpr Time longest{30'000};
    static constexpr Time keptFor{90'000}; ///< After its first words.
    static constexpr std::size_t most = 8;

    struct Request {
        Time at{0};
        std::string text;
        std::set<std::string> used; ///< What has already acted on the request.
        Time updated{0}; ///< When its last piece was heard; at first `at`.
        bool operator==(const Request&) const = default;
    };

    std::vector<Request> requests; ///< Oldest first.
    std::optional<Time> lastHeard;

    /// Adds to the last request or begins one, then forgets what is too old or too many. A piece without words only
    /// does the forgetting.
    void heard(std::string_view text, Time at);

    /// As `heard`, but what is typed is one whole request, however soon it follows the last.
    void typed(std::string_view text, Time at);

    bool operator==(const RecentRequests&) const = default;

private:
    void join(std::string words, Time at);
    void forget(Time now);
};

} // namespace quorvell
