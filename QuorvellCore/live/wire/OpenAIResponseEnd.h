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

    bool operator==(const OpenAIResponseEnd&) const = default;
};

} // namespace quorvell
