// SPDX-License-Identifier: MIT
// How an OpenAI session is reached: the first way that works.
#pragma once

#include <functional>
#include <vector>

namespace quorvell {

struct OpenAIRoute {
    enum class Way { socket, peer };

    std::vector<Way> ways{Way::socket}; ///< Never empty.
    /// Told when a session began on a way, and when media did not get through on one.
    std::function<void(Way way)> worked{};
    std::function<void(Way way)> wasBlocked{};
};

} // namespace quorvell
