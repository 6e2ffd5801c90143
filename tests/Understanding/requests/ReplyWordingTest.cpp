// SPDX-License-Identifier: MIT
// Catches replies that misstate what a tool did.

#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;

std::string reply(const ToolRequest& call, std::string_view result, const RequestMemory& memory = {})
{
    return shown(RequestRules::answerResult(call, result, memory, surroundings()));
}

std::string reminderReply(const char* words, const char* result)
{
    return reply({"set_reminder", std::string(R"({"text":")") + words + "\"}"}, result);
}

} // namespace

TEST(ReplyWording, confirmsReminders)
{
    struct Row {
        const char* name;
        const char* words;
        const char* result;
        const char* expected;
    };
    const Row rows[] = {
        {"with to", "remind me tomorrow at 5 pm to call Anna",
            R"({"status":"set","id":"0123456789ab","task":"Call Anna","date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM","has_time":true})",
            "I will remind you to call Anna on Sunday the 22nd of November at 5 PM."},
        {"about a thing", "remind me about the meeting at 4 pm",
            R"({"status":"set","task":"The meeting","when":"Friday 27 November at 4 PM"})",
            "I will remind you about the meeting on Friday the 27th of November at 4 PM."},
        {"a thing without a word before it", "remind me the dentist at 4 pm",
            R"({"status":"set","task":"The dentist","when":"Friday 27 November at 4 PM"})",
            "I will remind you about the dentist on Friday the 27th of November at 4 PM."},
        {"that", "remind me that the rent is due on the 1st",
            R"({"status":"set","task":"The rent is due","when":"Tuesday 1 December at 9 AM"})",
            "I will remind you that the rent is due on Tuesday the 1st of December at 9 AM."},
        {"a name keeps its capital", "remind me about Anna's party at 4 pm",
            R"({"status":"set","task":"Anna's party","when":"Friday 27 November at 4:30 PM"})",
            "I will remind you about Anna's party on Friday the 27th of November at 4:30 PM."},
        {"repeating", "remind me to take the bins out every monday",
            R"({"status":"set","task":"Take the bins out","when":"Monday 23 November at 9 AM","repeat":"weekly:2","repeat_words":"Every Monday"})",
            "I will remind you to take the bins out every Monday, starting on Monday the 23rd of November at 9 AM."},
        {"put off, and still repeating", "make it 8",
            R"({"status":"deferred","task":"Take the bins out","when":"Monday 23 November at 8 PM","repeat":"weekly:2","repeat_words":"Every Monday"})",
            "I will remind you to take the bins out on Monday the 23rd of November at 8 PM, and every Monday."},
        {"put off to another day than its own", "move it to tuesday",
            R"({"status":"deferred","task":"Take the bins out","date":"2026-11-24 09:00","when":"Tuesday 24 November at 9 AM","repeat":"weekly:2","repeat_words":"Every Monday"})",
            "I will remind you to take the bins out this time on Tuesday the 24th of November at 9 AM, and then again "
            "every "
            "Monday."},
        {"narrow space before PM", "remind me to eat at 5:30 pm",
            "{\"status\":\"set\",\"task\":\"Eat\",\"when\":\"Monday 23 November at 5:30\u202fPM\"}",
            "I will remind you to eat on Monday the 23rd of November at 5:30 PM."},
        {"words of another form stay", "remind me to eat", R"({"status":"set","task":"Eat","when":"today at 17:00"})",
            "I will remind you to eat today at 17:00."},
        {"which time, one day", "remind me tomorrow at 5 to eat",
            R"({"status":"which_time","task":"Eat","choices":[{"date":"2026-11-22 05:00","when":"a"},{"date":"2026-11-22 17:00","when":"b"}]})",
            "Do you mean 5 in the morning or 5 in the afternoon?"},
        {"which time, two days", "remind me at 5 to eat",
            R"({"status":"which_time","task":"Eat","choices":[{"date":"2026-11-21 17:00","when":"Saturday 21 November at 5 PM"},{"date":"2026-11-22 05:00","when":"Sunday 22 November at 5 AM"}]})",
            "Do you mean Saturday the 21st of November at 5 PM, or Sunday the 22nd of November at 5 AM?"},
        {"no time", "remind me to call mum", R"({"status":"needs_time","task":"Call mum","message":"Ask when."})",
            "When should I remind you to call mum?"},
        {"no task", "remind me at 5 pm",
            R"({"status":"needs_task","date":"2026-11-21 17:00","when":"Saturday 21 November at 5 PM"})",
            "What do you want to be reminded of?"},
        {"error", "remind me at 5 pm to eat", R"({"error":"the notebook is locked by another program"})",
            "The notebook is locked by another program."},
        {"words for a model alone", "remind me at 5 pm to eat",
            R"({"error":"Nothing was changed. Call set_reminder with list. Then give when_back or later."})",
            "Nothing was changed."},
        {"no object", "remind me at 5 pm to eat", "null", "That did not work."},
        {"wrong types", "remind me", R"({"status":7,"task":[],"when":{}})", "I will remind you."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(reminderReply(row.words, row.result), row.expected);
    }
}

TEST(ReplyWording, keepsTheUsersWordsOverFollowUps)
{
    const ToolRequest call{"set_reminder", R"({"task":"The meeting","date":"2026-11-22 17:00"})"};
    const RequestMemory memory{.request = "remind me of the meeting at 5"};
    EXPECT_EQ(reply(call, R"({"status":"set","task":"The meeting","when":"Sunday 22 November at 5 PM"})", memory),
        "I will remind you about the meeting on Sunday the 22nd of November at 5 PM.");
}

TEST(ReplyWording, tellsOfNotes)
{
    struct Row {
        const char* name;
        const char* tool;
        Purpose purpose;
        const char* result;
        const char* expected;
    };
    const Row rows[] = {
        {"kept", "keep_note", Purpose::tell, R"({"status":"kept","id":"a1","title":"Tea"})",
            "I have made a note of that."},
        {"nothing", "find_in_notebook", Purpose::tell, R"({"status":"found","count":0,"notes":[]})",
            "I found nothing about tea."},
        {"no notes at all", "find_in_notebook", Purpose::listNotes, R"({"status":"found","count":0,"notes":[]})",
            "There are no notes in your notebook."},
        {"several", "find_in_notebook", Purpose::tell,
            R"({"status":"found","count":5,"notes":[{"id":"a","title":"Tea"},{"id":"b","title":"Tea pot?"},{"id":"c","title":"Cup"},{"id":"d","title":"Milk"}]})",
            "There are 5 notes. The first is called Tea. The second is called Tea pot? The third is called Cup. Which "
            "one "
            "should I read?"},
        {"reminders", "set_reminder", Purpose::tell,
            R"({"status":"reminders","reminders":[{"task":"Eat","date":"2026-11-22 17:00"},{"task":"Rest","date":"x","overdue":true}]})",
            "You have 2 reminders. Eat, on Sunday the 22nd of November at 5 PM. Rest, overdue."},
        {"a reminder that repeats", "set_reminder", Purpose::tell,
            R"({"status":"reminders","reminders":[{"task":"Eat","date":"2026-11-23 20:00","repeat_words":"Every Monday"}]})",
            "You have one reminder. Eat, on Monday the 23rd of November at 8 PM, every Monday."},
        {"no reminders", "set_reminder", Purpose::tell, R"({"status":"reminders","reminders":7})",
            "You have no reminders."},
        {"several fit", "set_reminder", Purpose::tell,
            R"({"status":"which_reminder","reminders":[{"task":"Call mum"},{"task":"Call Ben"}]})",
            "Several fit: Call mum, Call Ben. Which one do you mean?"},
        {"done for now", "set_reminder", Purpose::tell,
            R"({"status":"done","task":"Water the garden","next":"Monday 23 November at 9 AM"})",
            "Done: water the garden. I will remind you again on Monday the 23rd of November at 9 AM."},
        {"a day", "whats_on", Purpose::tell,
            R"({"status":"agenda","items":[{"kind":"event","title":"Lunch","start":"2026-11-22 13:00","place":"Cafe"},
                {"kind":"reminder","title":"Eat","start":"2026-11-22 17:30"}]})",
            "There are 2 things. Lunch, on Sunday the 22nd of November at 1 PM, Cafe. A reminder, Eat, on Sunday the "
            "22nd of November at 5:30 PM."},
        {"free", "find_free_time", Purpose::tell,
            R"({"status":"free","slots":[{"start":"2026-11-22 09:00","end":"2026-11-22 11:30"},{"start":"2026-11-22 14:00","end":"2026-11-22 15:00"}]})",
            "You are free on Sunday the 22nd of November from 9 AM to 11:30 AM, or from 2 PM to 3 PM."},
        {"never free", "find_free_time", Purpose::tell, "{}", "I found no free time."},
        {"added over another", "add_event", Purpose::tell,
            R"({"status":"added","title":"Lunch with Ana","start":"2026-11-27 13:00","conflicts":[{"title":"Gym"}]})",
            "I have put Lunch with Ana into your calendar, on Friday the 27th of November at 1 PM. That is at the same "
            "time as Gym."},
        {"added in the past, over a reminder", "add_event", Purpose::tell,
            R"({"status":"added","title":"Gym","start":"2026-11-20 08:00","reminders":[{"title":"Pay rent"}],"past":true})",
            "I have put Gym into your calendar, on Friday the 20th of November at 8 AM. Your reminder “Pay rent” comes "
            "meanwhile. Mind that this is already past."},
        {"added as a series", "add_event", Purpose::tell,
            R"({"status":"added","repeat_words":"Every Monday","title":"Yoga","start":"2026-11-23 18:00"})",
            "I have put Yoga into your calendar, every Monday, starting on Monday the 23rd of November at 6 PM."},
        {"asked first", "change_event", Purpose::tell, R"({"status":"needs_confirmation","title":"Gym"})",
            "Should I really delete Gym?"},
        {"a fact", "remember_about_them", Purpose::tell, R"({"status":"remembered"})", "I will remember that."},
        {"read", "read_note", Purpose::read, R"({"status":"read","id":"a","title":"Tea","text":"Green, loose"})",
            "It is called Tea. It says: Green, loose."},
        {"a title that is the text", "read_note", Purpose::read, R"({"title":"Tea is out","text":"Tea is out."})",
            "It says: Tea is out."},
        {"broken list", "find_in_notebook", Purpose::tell, R"({"notes":"none"})", "I found nothing about tea."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(reply({row.tool, R"({"query":"tea"})"}, row.result, {.purpose = row.purpose}), row.expected);
    }
    const std::string longNote = R"({"title":"Long","text":")" + std::string(3000, 'a') + " b\"}";
    EXPECT_LT(reply({"read_note", "{}"}, longNote, {}).size(), 700u);
}

TEST(ReplyWording, saysWhenAnEventBeganAndEnds)
{
    const SpokenDays tomorrow{{2026, 11, 22, 0, 0, true}, {2026, 11, 22, 0, 0, true}, "tomorrow"};
    const SpokenDays dated{{2026, 12, 9, 0, 0, true}, {2026, 12, 9, 0, 0, true}, "the 9th of december"};
    struct Row {
        ToolRequest call;
        const char* result;
        SpokenDays days;
        const char* expected;
    };
    const ToolRequest list{"whats_on", "{}"};
    const ToolRequest lasting{"add_event", R"({"minutes":120})"};
    const Row rows[] = {
        {list, R"({"items":[{"title":"Drinks","start":"2026-11-21 23:00","end":"2026-11-22 02:00"}]})", tomorrow,
            "There is one thing tomorrow. Drinks, since today at 11 PM."},
        {list, R"({"items":[{"title":"Holiday","start":"2026-11-19","end":"2026-11-24"}]})", tomorrow,
            "There is one thing tomorrow. Holiday, since Thursday the 19th of November."},
        {list, "{}", dated, "There is nothing in your calendar on the 9th of December."},
        {lasting, R"({"status":"added","title":"Lunch","start":"2026-11-27 14:00","end":"2026-11-27 16:00"})", {},
            "I have put Lunch into your calendar, on Friday the 27th of November at 2 PM, until 4 PM."},
        {{"add_event", R"({"end":"2026-11-29"})"},
            R"({"status":"added","title":"Trip","start":"2026-11-27","end":"2026-11-29"})", {},
            "I have put Trip into your calendar, on Friday the 27th of November, until Sunday the 29th of November."},
        {{"add_event", "{}"}, R"({"status":"added","title":"Lunch","start":"2028-03-20 13:00"})", {},
            "I have put Lunch into your calendar, on Monday the 20th of March at 1 PM, in 2028."},
    };
    for (const Row& row : rows)
        EXPECT_EQ(reply(row.call, row.result, {.days = row.days}), row.expected);
}

} // namespace quorvell
