// SPDX-License-Identifier: MIT
// Faults: a note that is found where another one stands, or not at all, after notes came, went and moved.
#include "Quorvell/notebook/NoteList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace quorvell {

namespace {

Note noteCreatedAt(int number, int second)
{
    return {.id = "note " + std::to_string(number), .created = Instant(std::chrono::seconds(second))};
}

void expectInOrder(const NoteList& list, const std::map<std::string, Note>& expected)
{
    ASSERT_EQ(list.notes().size(), expected.size());
    EXPECT_TRUE(std::is_sorted(list.notes().begin(), list.notes().end(),
        [](const Note& left, const Note& right) { return left.created > right.created; }));
    for (const auto& [id, note] : expected) {
        const Note* const found = list.find(id);
        ASSERT_TRUE(found) << id;
        EXPECT_EQ(*found, note);
    }
}

} // namespace

TEST(NoteList, findsEveryNoteAfterAnyChanges)
{
    std::mt19937 chance(20261122);
    const auto below = [&chance](unsigned end) { return static_cast<int>(chance() % end); };
    NoteList list;
    std::map<std::string, Note> expected;
    for (int round = 0; round < 300; ++round) {
        // One at a time, or so many that all are sorted anew.
        std::vector<Note> changed;
        std::vector<std::string> gone;
        for (int count = round % 3 == 0 ? 12 : 1; count > 0; --count) {
            const Note note = noteCreatedAt(below(60), below(40));
            if (std::ranges::find(changed, note.id, &Note::id) == changed.end())
                changed.push_back(note);
        }
        if (const std::string id = "note " + std::to_string(below(60));
            std::ranges::find(changed, id, &Note::id) == changed.end())
            gone.push_back(id);
        for (const Note& note : changed)
            expected[note.id] = note;
        for (const std::string& id : gone)
            expected.erase(id);
        list.apply(changed, gone);
        ASSERT_NO_FATAL_FAILURE(expectInOrder(list, expected)) << "round " << round;
        for (const std::string& id : gone)
            EXPECT_FALSE(list.find(id));
    }
}

} // namespace quorvell
