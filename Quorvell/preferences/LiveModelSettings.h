// SPDX-License-Identifier: MIT
// Which models hold a conversation and how.
#pragma once

#include "Quorvell/preferences/LiveBackend.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quorvell {

struct LiveModelSettings {
    /// What is absent is left to the service.
    struct Options {
        std::optional<std::string> reasoningEffort{};
        std::optional<std::string> reasoningSummary{};
        std::optional<std::string> serviceTier{};
        std::optional<std::string> verbosity{};
        std::optional<std::int64_t> maxOutputTokens{};

        bool operator==(const Options&) const = default;
    };

    std::string voiceModel{};
    std::string voice{};
    std::string backendModel{}; ///< Also the one model of typed conversations.
    Options options{};

    /// What a backend is asked for where the user names nothing else.
    static LiveModelSettings usual(LiveBackend backend);

    bool operator==(const LiveModelSettings&) const = default;
};

} // namespace quorvell
