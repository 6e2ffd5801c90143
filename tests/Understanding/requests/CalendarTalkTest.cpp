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

/// The first step that words lead to.
std::string firstStep(const char* words)
{
    return shown(RequestRules::answerWords(words, {}, withCalendar()));
}

TEST(CalendarTalk, looksForTheSameHoweverItIsPut)
{
    struct Row {
        const char* typed;
        const char* plain;
    };
    const Row rows[] = {
        {"I forgot when the dentist is", "when is the dentist"},
        {"any idea when my lunch with Ana is", "when is my lunch with Ana"},
        {"dentist when", "when is the dentist"},
        {"dentist appointment", "when is my dentist appointment"},
        {"meeting time", "when is the meeting"},
        {"address of the dentist", "where is the dentist"},
        {"today any meeting is there", "any meeting is there today"},
        {"first event next week", "what is my first event next week"},
        {"when am I done on friday", "what is my last event on friday"},
        {"number of events tomorrow", "how many events tomorrow"},
        {"what's up tomorrow", "what is on my calendar tomorrow"},
        {"schedule friday", "what is on my calendar friday"},
        {"upcoming", "what are my upcoming events"},
        {"I have nothing on friday, right", "do I have anything on friday"},
        {"do I see Ana tomorrow", "do I have anything with Ana tomorrow"},
        {"do I have plans with Ana", "what do I have with Ana"},
        {"is there anything important this week", "what is planned this week"},
        {"do I have time for a walk on friday", "am I free on friday"},
        {"am I double booked on friday", "does anything clash on friday"},
        {"what recurring events do I have", "which meetings repeat"},
        {"any events from three to five", "any events between 3 pm and 5 pm"},
        {"search my calendar for yoga", "search my calendar for the yoga"},
        {"I'm not going to yoga on wednesday", "delete yoga on wednesday"},
        {"there's no yoga this wednesday", "delete yoga this wednesday"},
        {"wednesday's yoga isn't happening", "delete yoga on wednesday"},
        {"Ana cancelled lunch", "delete the event lunch with Ana"},
        {"mark the staff meeting as cancelled", "delete the staff meeting"},
        {"yoga cancel on wednesday", "delete yoga on wednesday"},
        {"I'm on holiday next week, clear my calendar", "clear my calendar next week"},
        {"free up my friday", "delete everything on friday"},
        {"clear tomorrow", "delete everything tomorrow"},
        {"cancel yoga on wednesday only", "delete yoga on wednesday"},
        {"delete my morning meeting tomorrow", "delete my meeting tomorrow morning"},
        {"remove event of tomorrow evening 7", "remove event of tomorrow at 7 pm"},
        {"delete the event named yoga", "delete the yoga event"},
        {"cancel everything except yoga this week", "cancel everything this week"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(firstStep(row.typed), firstStep(row.plain)) << row.typed;
}

TEST(CalendarTalk, takesNothingElseForAQuestionOrARemoval)
{
    struct Row {
        const char* words;
        const char* call; ///< How it begins.
    };
    const Row rows[] = {
        {"do I have to call mum", "find_in_notebook"},
        {"I can't make lunch on friday", "When should it be instead?"},
        {"put a walk after lunch into my calendar on friday at 2 pm", "add_event"},
        {"add a meeting with Ana on friday at 3 pm", "add_event"},
        {"remind me to cancel yoga on friday", "set_reminder"},
        {"tomorrow is my birthday", "Should I put Birthday"},
        {"cancel my alarm for tomorrow", "set_reminder"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(firstStep(row.words).substr(0, std::string(row.call).size()), row.call) << row.words;
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
