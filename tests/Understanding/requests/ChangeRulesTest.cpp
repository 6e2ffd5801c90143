// SPDX-License-Identifier: MIT
// Catches requests that change the wrong reminder or event, or change without asking.
#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ChangeRules, changesRemindersAndKnowsTheCalendar)
{
    checkConversations("changes.txt", withCalendar());
}

TEST(ChangeRules, takesItForWhatWasLastSetOrKept)
{
    checkConversations("followUps.txt", withCalendar());
}

TEST(ChangeRules, changesWhatStandsInAList)
{
    checkConversations("lists.txt", withCalendar(),
        {{"=reminders",
             R"({"status":"reminders","reminders":[{"id":"r1","task":"Call mum","date":"2026-11-22 17:00"},{"id":"r2","task":"Rest","date":"2026-11-23 09:00"}]})"},
            {"=agenda",
                R"({"status":"agenda","items":[{"kind":"event","id":"e1","title":"Vet","start":"2026-11-22 15:00","end":"2026-11-22 16:00"},{"kind":"reminder","id":"r1","title":"Call mum","start":"2026-11-22 17:00"}]})"},
            {"=notes", R"({"status":"found","notes":[{"id":"a","title":"Tea"},{"id":"b","title":"Cup"}]})"},
            {"=yoga",
                R"({"status":"agenda","items":[{"kind":"event","id":"y#1","title":"Yoga","start":"2026-11-21 09:00","end":"2026-11-21 10:00","repeats":true},{"kind":"event","id":"y#2","title":"Yoga","start":"2026-11-23 18:00","end":"2026-11-23 19:00","repeats":true},{"kind":"event","id":"y#3","title":"Yoga","start":"2026-11-30 18:00","end":"2026-11-30 19:00","repeats":true}]})"},
            {"=lunch",
                R"({"status":"agenda","items":[{"kind":"event","id":"e1","title":"Lunch with Ana","start":"2026-11-27 13:00","end":"2026-11-27 14:30"},{"kind":"event","id":"e2","title":"Lunch with Ben","start":"2026-11-28 12:00","end":"2026-11-28 13:00"},{"kind":"reminder","id":"r1","title":"Lunch box","start":"2026-11-28 12:00"}]})"},
            {"=nothingDue", nothingDue}});
}

} // namespace quorvell
