// Any bytes are either no note or a note that survives being written and read again unchanged.
#include "QuorvellCore/notebook/NoteFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quorvell;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Instant now{std::chrono::milliseconds(1'795'251'600'000)}; // in November 2026
    const auto note = NoteFile::decode({reinterpret_cast<const char*>(data), size}, now);
    if (!note)
        return 0;
    if (NoteFile::decode(NoteFile::encode(*note), now) != note)
        std::abort();
    for (const auto& name : {NoteFile::fileName(*note), NoteFile::longFileName(*note, 2)})
        if (name.size() > 255 || name.find_first_of(std::string_view("/\0", 2)) != name.npos || name.starts_with('.'))
            std::abort();
    (void)note->searchText();
    (void)note->plainText();
    return 0;
}
