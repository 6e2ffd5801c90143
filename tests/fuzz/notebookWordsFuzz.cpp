// SPDX-License-Identifier: MIT
// What people, models and files put into search and history: nothing of it may stop the program, and no query
// may mean more than its words.
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NoteIndex.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace quorvell;

void check(bool holds)
{
    if (!holds)
        std::abort();
}

NoteIndex smallIndex()
{
    NoteIndex index;
    index.put({.id = "1", .title = "Dentist", .body = "Call before noon"});
    index.put({.id = "2", .title = "Hidden", .body = "secret", .archived = true});
    return index;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static NoteIndex index = smallIndex();
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const NoteHit& hit : index.find({.words = text}).hits)
        check(hit.id == "1");
    index.put({.id = "3", .title = text, .body = text});
    index.find({.words = text, .reader = NoteQuery::Reader::person});
    index.remove("3");
    const auto versions = NoteHistory::parsed(text);
    check(NoteHistory::parsed(NoteHistory::text(versions)) == versions);
    return 0;
}
