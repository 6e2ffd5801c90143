// SPDX-License-Identifier: MIT
// Catches reminders that another program fired and that are told twice or not at all.
#include "Quorvell/reminding/RemindersElsewhere.h"

#include "MemoryNotebook.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using std::chrono::minutes;

class ChangingNotebook : public MemoryNotebook {
public:
    void change(const Note& note)
    {
        list = {note};
        announce({{note.id}, {}});
    }
};

TEST(RemindersElsewhere, tellsOnceWhatTheOwnerHasJustShown)
{
    const Instant now = parseIsoText("2026-11-21T09:00:30Z").value_or(Instant());
    const Instant due = now - std::chrono::seconds(30);
    struct Row {
        const char* name;
        Instant shown;
        bool isOwner = false;
        bool isDone = false;
        int told = 0;
    };
    for (const Row& row : {Row{"just shown", due, false, false, 1}, {"by this program", due, true, false, 0},
             {"done meanwhile", due, false, true, 0}, {"long ago", now - minutes(3), false, false, 0},
             {"to come", now + minutes(1), false, false, 0}}) {
        SCOPED_TRACE(row.name);
        ChangingNotebook notebook;
        notebook.owner = row.isOwner;
        Note note{.id = "0a1b2c3d4e5f", .title = "Call Mum", .remindAt = row.shown};
        notebook.list = {note};
        std::vector<std::string> told;
        const RemindersElsewhere elsewhere(
            {notebook, [now] { return now; }, [] { return *Calendar::create("UTC", "en_GB"); },
                [&](const std::string& sentence) { told.push_back(sentence); }});
        notebook.change(note);
        EXPECT_TRUE(told.empty());
        note.reviewed = row.shown;
        if (row.isDone)
            note.doneAt = now;
        notebook.change(note);
        notebook.change(note); // Edited once more.
        EXPECT_EQ(told, std::vector<std::string>(static_cast<std::size_t>(row.told), "Reminder: Call Mum."));
    }
}

} // namespace
} // namespace quorvell
