// SPDX-License-Identifier: MIT
// One line of the event log.
#pragma once

#include "QuorvellCore/text/Instant.h"
#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct LogEntry {
    static constexpr std::size_t longestLine = 8 * 1024; ///< Bytes; what is longer was not written by this program.
    static constexpr std::size_t longestNote = 160; ///< User-perceived characters of the details that are shown.

    Instant at{};
    std::string event;
    std::string program; ///< Which run of the program wrote it.
    std::string details; ///< The other members, readable and on one line: "close code: 1006, after 204 ms".
    std::string raw; ///< The line as it stands.

    /// Nothing for a line that is none.
    static std::optional<LogEntry> read(std::string_view line);

    bool operator==(const LogEntry&) const = default;
};

} // namespace quorvell
