// SPDX-License-Identifier: MIT
// When the clocks of one time zone change, and by how much they are ahead of UTC in between.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

struct ZoneTable {
    static constexpr std::size_t maximumBytes = 64 * 1024;

    struct Change {
        std::int64_t at = 0; ///< Seconds since 1970 UTC.
        std::int32_t before = 0; ///< Seconds ahead of UTC until then.
        std::int32_t after = 0;

        bool operator==(const Change&) const = default;
    };

    std::int32_t first = 0; ///< Seconds ahead of UTC before the first change.
    std::vector<Change> changes; ///< In order.

    /// From a compiled file of the time zone database (TZif, RFC 8536), with its rule for the years to come written
    /// out until 2400. Nothing for any other bytes, and for files that count leap seconds.
    static std::optional<ZoneTable> parse(std::string_view file);

    std::chrono::seconds offsetAt(std::chrono::sys_seconds instant) const;
    /// Of a time that a change skips or repeats, the offset before the change.
    std::chrono::seconds offsetAtLocal(std::chrono::local_seconds time) const;

    bool operator==(const ZoneTable&) const = default;
};

} // namespace quorvell
