// SPDX-License-Identifier: MIT
// Any bytes are either no note or a note that survives being written and read again unchanged, and its header says what
// the plain way of reading it says: every value parsed as JSON, the last readable one of each key kept.
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/notebook/NoteHeaderReader.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

#include <map>

using namespace quorvell;

namespace {

std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t");
    return start == text.npos ? "" : text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

void readHeaderBothWays(std::string_view text)
{
    NoteHeaderReader header;
    std::map<std::string_view, Json> plain;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view line = text.substr(start, end - start);
        header.readLine(line);
        const std::size_t colon = line.find(':');
        if (colon != line.npos)
            if (auto value = parseJson(withoutBlanks(line.substr(colon + 1)), {.maximumDepth = 16}))
                plain[withoutBlanks(line.substr(0, colon))] = std::move(*value);
        start = end + 1;
    }
    for (std::size_t index = 0; index < noteHeaderKeys.size(); ++index) {
        const auto key = static_cast<NoteHeaderKey>(index);
        const auto known = plain.find(storedText(key));
        const auto value = known == plain.end() ? std::nullopt : std::optional(known->second);
        const auto found = value ? readString(*value) : std::nullopt;
        require(header.value(key) == value && header.text(key) == found);
        require(header.instant(key) == parseIsoText(found.value_or("")));
    }
}

} // namespace

void quorvell::search(std::string_view text)
{
    const Instant now{std::chrono::milliseconds(1'795'251'600'000)}; // in November 2026
    readHeaderBothWays(text);
    const auto note = NoteFile::decode(text, now);
    if (!note)
        return;
    require(NoteFile::decode(NoteFile::encode(*note), now) == note);
    for (const auto& name : {NoteFile::fileName(*note), NoteFile::longFileName(*note, 2)})
        require(name.size() <= 255 && name.find_first_of(std::string_view("/\0", 2)) == name.npos
            && !name.starts_with('.'));
    (void)note->searchText();
    (void)note->plainText();
}
