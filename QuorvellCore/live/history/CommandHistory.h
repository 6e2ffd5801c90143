// SPDX-License-Identifier: MIT
// What the user typed before, browsed with the arrow keys.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A text that is typed again moves to the newest place.
class CommandHistory {
public:
    static constexpr std::size_t usualLimit = 100;

    CommandHistory() = default;
    /// Keeps the last `limit` entries.
    explicit CommandHistory(std::vector<std::string> entries, std::size_t limit = usualLimit);

    /// Stores the trimmed text as the newest entry (an equal older one goes) and ends browsing. Empty texts are not
    /// stored; the oldest entries beyond the limit are dropped.
    void add(std::string_view text);

    /// One entry back in time. The first step keeps `current`, what stands in the box, as the draft; at the oldest
    /// entry, and without entries, nothing.
    std::optional<std::string> older(std::string_view current);
    /// One entry forward; past the newest the draft comes back and browsing ends. Nothing when not browsing.
    std::optional<std::string> newer();

    void clear();

    bool isBrowsing() const { return m_cursor.has_value(); }
    const std::vector<std::string>& entries() const { return m_entries; } ///< Oldest first.
    std::size_t limit() const { return m_limit; }
    const std::string& draft() const { return m_draft; }

    bool operator==(const CommandHistory&) const = default;

private:
    void stopBrowsing();
    void dropBeyondLimit();

    std::vector<std::string> m_entries;
    std::size_t m_limit = usualLimit;
    std::optional<std::size_t> m_cursor;
    std::string m_draft;
};

} // namespace quorvell
