// SPDX-License-Identifier: MIT
// How a backend response ended, as the server states it.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"

#include <optional>
#include <string>

namespace quorvell {

struct OpenAIResponseEnd {
    enum class Status { completed, failed, incomplete, cancelled };

    std::string responseID;
    Status status = Status::completed;
    std::optional<openai_event::BackendUsage> usage;
    std::optional<std::string> serviceTier;
    std::string detail{}; ///< Why it is incomplete ("max_output_tokens"), or what failed, in a sentence.

    bool operator==(const OpenAIResponseEnd&) const = default;
};

} // namespace quorvell
