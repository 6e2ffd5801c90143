// SPDX-License-Identifier: MIT
// A request as a plain value; whoever owns the network carries it out.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

struct WebRequest {
    enum class Method { get, post };

    Method method = Method::get;
    std::string url;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    std::chrono::seconds timeout{60}; ///< At most; whoever carries it out may be less patient.

    bool operator==(const WebRequest&) const = default;
};

} // namespace quorvell
