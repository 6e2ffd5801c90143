#pragma once

#include "QuorvellCore/live/wire/OpenAILiveEvent.h"

#include <optional>
#include <string>

namespace quorvell {

/// How a backend response ended, as the server states it.
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
