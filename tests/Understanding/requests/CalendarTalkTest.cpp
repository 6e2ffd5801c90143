// SPDX-License-Identifier: MIT
// Catches events that are looked for, deleted or put in otherwise than they were asked for.
#include "RuleBench.h"
#include "Understanding/requests/SkillTable.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(CalendarTalk, doesWithEventsWhatWasAsked)
{
    checkConversations("calendar.txt", withCalendar(),
        {{"=week",
             R"({"status":"agenda","items":[{"kind":"event","id":"s","title":"Sales meeting","start":"2026-11-23 10:00","end":"2026-11-23 11:00","place":"Room 4"},{"kind":"event","id":"t","title":"Sales meeting preparation","start":"2026-11-24 10:00","end":"2026-11-24 11:00"},{"kind":"event","id":"d","title":"Dentist","start":"2026-11-25 09:00","end":"2026-11-25 09:30"},{"kind":"event","id":"y#1","title":"Yoga","start":"2026-11-25 18:00","end":"2026-11-25 19:00","repeats":true},{"kind":"reminder","id":"r1","title":"Pay rent","start":"2026-11-26 09:00"},{"kind":"event","id":"l","title":"Lunch with Ana","start":"2026-11-27 13:00","end":"2026-11-27 14:00"},{"kind":"event","id":"c","title":"Concert","start":"2026-11-28 20:00","end":"2026-11-28 22:30","place":"Town hall"}]})"},
            {"=monday",
                R"({"status":"agenda","items":[{"kind":"event","id":"s","title":"Sales meeting","start":"2026-11-23 10:00","end":"2026-11-23 11:00"},{"kind":"reminder","id":"r1","title":"Pay rent","start":"2026-11-23 12:00"},{"kind":"event","id":"y#1","title":"Yoga","start":"2026-11-23 18:00","end":"2026-11-23 19:00","repeats":true}]})"},
            {"=none", R"({"status":"agenda","items":[]})"}});
}

TEST(CalendarTalk, saysWhatWasDone)
{
    struct Row {
        const char* call;
        const char* result;
        const char* done;
    };
    const Row rows[] = {
        {"{}", R"({"status":"added","title":"Lunch","start":"2026-11-27 13:00"})",
            "put Lunch into your calendar, on Friday the 27th of November at 1 PM"},
        {R"({"changes":{"start":"2026-11-27 13:00"}})",
            R"({"status":"changed","title":"Lunch","start":"2026-11-27 13:00"})",
            "moved Lunch to Friday the 27th of November at 1 PM"},
        {R"({"changes":{"place":"Here"}})", R"({"status":"changed","title":"Lunch"})",
            "changed Lunch in your calendar"},
        {"{}", R"({"status":"deleted","title":"Lunch"})", "deleted Lunch from your calendar"},
        {"{}", R"({"status":"deleted","count":3,"items":[]})", "deleted 3 events from your calendar"},
        {"{}", R"({"status":"needs_confirmation","title":"Lunch"})", ""},
        {"{}", R"({"error":"No."})", ""},
    };
    const Skill& skill = *SkillTable::ofCall({"change_event", "{}"});
    for (const Row& row : rows)
        EXPECT_EQ(skill.whatWasDone({"change_event", row.call}, *ToolResult::parse(row.result)), row.done);
}

} // namespace quorvell
