// SPDX-License-Identifier: MIT
// Any JSON is either no note or a note that survives being written and read again unchanged.
#include "QuorvellCore/notebook/NoteJson.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

void quorvell::search(std::string_view text)
{
    const auto json = parseJson(text);
    const auto note = json ? NoteJson::decode(*json) : std::nullopt;
    if (!note)
        return;
    require(NoteJson::decode(NoteJson::encode(*note)) == note);
    const auto sent = parseJson(dumpJson(NoteJson::encode(*note)));
    require(sent && NoteJson::decode(*sent) == note);
    (void)note->searchText();
    (void)note->plainText();
}
