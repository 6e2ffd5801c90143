// SPDX-License-Identifier: MIT
// What people, models and files put into search and history: nothing of it may stop the program, and no query
// may mean more than its words.
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NoteIndex.h"
#include "fuzzing.h"

namespace {

using namespace quorvell;

NoteIndex smallIndex()
{
    NoteIndex index;
    index.put({.id = "1", .title = "Dentist", .body = "Call before noon"});
    index.put({.id = "2", .title = "Hidden", .body = "secret", .archived = true});
    return index;
}

} // namespace

void quorvell::search(std::string_view given)
{
    static NoteIndex index = smallIndex();
    const std::string text(given);
    for (const NoteHit& hit : index.find({.words = text}).hits)
        require(hit.id == "1");
    index.put({.id = "3", .title = text, .body = text});
    index.find({.words = text, .reader = NoteQuery::Reader::person});
    index.remove("3");
    const auto versions = NoteHistory::parsed(text);
    require(NoteHistory::parsed(NoteHistory::text(versions)) == versions);
}
