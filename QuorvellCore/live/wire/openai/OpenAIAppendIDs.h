// SPDX-License-Identifier: MIT
// What an appended text belongs to.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

/// An absent id is left out of the message.
struct OpenAIAppendIDs {
    std::optional<std::string> delegationID; ///< The delegation that is running.
    std::optional<std::string> eventID; ///< Comes back in an "error" event when the server refuses the message.

    bool operator==(const OpenAIAppendIDs&) const = default;
};

} // namespace quorvell
