// SPDX-License-Identifier: MIT
// Appends header lines to the text of a note file, in the order of the calls.
#pragma once

#include "QuorvellCore/notebook/NoteHeaderKey.h"
#include "QuorvellCore/text/Instant.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Fields that are absent, empty or false have no line, except those that are written by writeJson.
class NoteHeaderWriter {
public:
    explicit NoteHeaderWriter(std::string& text)
        : m_text(text)
    {
    }

    void writeJson(NoteHeaderKey key, const Json& value)
    {
        m_text.append(storedText(key)).append(": ").append(dumpSortedJson(value)).append("\n");
    }
    void write(NoteHeaderKey key, std::string_view value) { writeJson(key, Json(value)); }
    void write(NoteHeaderKey key, Instant value) { write(key, isoText(value)); }
    template <typename Value> void write(NoteHeaderKey key, const std::optional<Value>& value)
    {
        if (value)
            write(key, *value);
    }
    template <typename Value> void write(NoteHeaderKey key, const std::vector<Value>& values)
    {
        if (!values.empty())
            writeJson(key, Json(values));
    }
    void writeIfTrue(NoteHeaderKey key, bool value)
    {
        if (value)
            writeJson(key, Json(true));
    }

private:
    std::string& m_text;
};

} // namespace quorvell
