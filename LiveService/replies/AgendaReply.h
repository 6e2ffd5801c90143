#pragma once

#include "LiveService/rules/RequestMemory.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <string_view>

namespace quorvell {

/// The wording of the calendar tools' results.
struct AgendaReply {
    /// `tool` is "whats_on", "find_free_time", "add_event" or "change_event".
    static std::string reply(std::string_view tool, const Json& result, const RequestMemory& memory);
};

} // namespace quorvell
