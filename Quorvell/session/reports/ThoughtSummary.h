// SPDX-License-Identifier: MIT
// What a model lets be known of its thinking, while it comes in.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

/// It is shown, and is no part of what was said.
class ThoughtSummary {
public:
    static constexpr std::size_t most = 8'000; ///< Bytes; beyond it the oldest lines go.

    /// An empty piece begins a new thought.
    void add(std::string_view delta);
    void clear() { m_text.clear(); }

    bool isEmpty() const { return m_text.empty(); }
    const std::string& text() const { return m_text; }
    /// The newest line that says something, without the marks of headings and emphasis.
    std::string newestLine() const;

    bool operator==(const ThoughtSummary&) const = default;

private:
    std::string m_text;
};

} // namespace quorvell
