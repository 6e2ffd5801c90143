// SPDX-License-Identifier: MIT
// The header of a note file, line by line, as people and other programs leave it.
#pragma once

#include "QuorvellCore/notebook/NoteHeaderKey.h"
#include "QuorvellCore/text/Instant.h"
#include "QuorvellCore/text/Json.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Looks into the lines it was given, which must outlive it. A value is parsed when it is asked for, and a text without
/// escapes, as nearly all are, without a tree of JSON: a notebook has thousands of them.
class NoteHeaderReader {
public:
    /// Passes over what is no line of a header. Of several lines with one key the last readable one counts.
    void readLine(std::string_view line);

    // Nothing, or empty, where there is no readable line with this key or its value is of another type.
    std::optional<Json> value(NoteHeaderKey key) const;
    std::optional<std::string> text(NoteHeaderKey key) const;
    std::optional<Instant> instant(NoteHeaderKey key) const;
    std::optional<std::int64_t> integer(NoteHeaderKey key) const;
    bool flag(NoteHeaderKey key) const;
    std::vector<std::string> texts(NoteHeaderKey key) const;
    std::vector<std::int64_t> integers(NoteHeaderKey key) const;

private:
    std::optional<std::size_t> positionOf(std::string_view key);

    std::array<std::string_view, noteHeaderKeys.size()> m_values{}; ///< JSON texts; empty where there is no line.
    std::size_t m_next = 0; ///< The key that the next line most likely has.
};

} // namespace quorvell
