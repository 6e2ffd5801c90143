// SPDX-License-Identifier: MIT
// Any JSON is either no note or a note that survives being written and read again unchanged.
#include "QuorvellCore/notebook/NoteJson.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quorvell;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto json = parseJson({reinterpret_cast<const char*>(data), size});
    const auto note = json ? NoteJson::decode(*json) : std::nullopt;
    if (!note)
        return 0;
    if (NoteJson::decode(NoteJson::encode(*note)) != note)
        std::abort();
    const auto sent = parseJson(dumpJson(NoteJson::encode(*note)));
    if (!sent || NoteJson::decode(*sent) != note)
        std::abort();
    (void)note->searchText();
    (void)note->plainText();
    return 0;
}
