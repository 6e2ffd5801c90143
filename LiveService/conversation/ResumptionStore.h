// SPDX-License-Identifier: MIT
// Conversations that can be taken up by a later session, while the service runs.
#pragma once

#include "LiveService/conversation/LiveSessionEngine.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// The oldest are forgotten first. Not thread safe; lives on the main thread.
class ResumptionStore {
public:
    static constexpr std::size_t mostKept = 32; ///< A conversation has at most 256 kB.
    static constexpr std::chrono::hours longestKept{2};

    using Time = LiveSessionEngine::Time;

    void put(std::string handle, LiveSessionEngine::State state, Time now);
    std::optional<LiveSessionEngine::State> find(std::string_view handle, Time now);
    /// No use for this one any more: a newer one has taken its place.
    void forget(std::string_view handle);

private:
    struct Kept {
        std::string handle;
        LiveSessionEngine::State state;
        Time since;
    };

    std::deque<Kept> m_kept; ///< Oldest first.
};

} // namespace quorvell
