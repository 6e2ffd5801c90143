// SPDX-License-Identifier: MIT
// Catches what is put into the calendar, set or written down though nobody asked for it, or at a time nobody named.
#include "RuleBench.h"
#include "Understanding/requests/RequestMood.h"

#include <gtest/gtest.h>

#include <vector>

namespace quorvell {

namespace {

RuleSurroundings withCalendar()
{
    RuleSurroundings around = surroundings(); // A Saturday, 1 PM.
    around.tools.insert({"whats_on", "find_free_time", "add_event", "change_event", "remember_about_them"});
    return around;
}

std::string after(const std::vector<const char*>& words)
{
    const RuleSurroundings around = withCalendar();
    RuleStep step{std::string(), {}};
    for (const char* said : words)
        step = RequestRules::answerWords(said, step.memory, around);
    return shown(step);
}

struct Row {
    std::vector<const char*> words;
    std::string expected;
};

void check(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words.back());
        EXPECT_EQ(after(row.words), row.expected);
    }
}

std::string onDay(const std::string& day)
{
    return R"(whats_on {"from":")" + day + R"(","to":")" + day + "\"}";
}

} // namespace

TEST(CarefulRequests, aQuestionNeverWrites)
{
    const std::string friday = onDay("2026-11-27");
    const std::string reminders = R"(set_reminder {"list":true})";
    const std::string nothing = "All right. I have changed nothing.";
    const std::string lunch = "Should I put Lunch into your calendar, on Friday the 27th of November at 1 PM?";
    check({
        {{"do I have a meeting on friday at 3 pm"}, friday},
        {{"show me my calendar for friday at 3 pm"}, friday},
        {{"did I put the dentist in my calendar for friday at 3 pm"}, friday},
        {{"why is there lunch in my calendar on friday at 1 pm?"}, friday},
        {{"what happens if I put lunch in my calendar on friday at 1 pm"}, friday},
        {{"what's on my calendar between 2 and 4 pm tomorrow"}, onDay("2026-11-22")},
        {{"where is my meeting at 9AM?"}, R"(whats_on {"from":"2026-11-21","to":"2026-12-22"})"},
        {{"is there a reminder to call mum tomorrow at 5 pm"}, reminders},
        {{"have you set a reminder to call mum tomorrow at 5 pm?"}, reminders},
        {{"confirm I have set an alarm for 6 AM"}, reminders},
        {{"don't put lunch in my calendar on friday at 1 pm"}, nothing},
        {{"put lunch in my calendar on friday at 1 pm? no, don't"}, nothing},
        {{"I forgot to put lunch in my calendar on friday at 1 pm"}, lunch},
        {{"I didn't put lunch in my calendar on friday at 1 pm"}, lunch},
        {{"put lunch in my calendar on friday at 1 pm?"}, lunch},
        {{"put lunch in my calendar on friday at 1 pm?", "yes"},
            R"(add_event {"title":"Lunch","start":"2026-11-27 13:00"})"},
        {{"put lunch in my calendar on friday at 1 pm?", "no"}, "Okay, I will not do that."},
        {{"call a taxi tonight at 5 pm"}, "Should I set a reminder for that?"},
        {{"please keep quiet for the next hour"}, after({"sing a song"})},
        {{"what do you know about me"}, after({"sing a song"})},
    });
}

TEST(CarefulRequests, aPoliteWishStaysOne)
{
    const std::string lunch = R"(add_event {"title":"Lunch","start":"2026-11-27 13:00"})";
    check({
        {{"could you put lunch in my calendar on friday at 1 pm?"}, lunch},
        {{"can we put lunch in my calendar on friday at 1 pm?"}, lunch},
        {{"would you mind putting lunch in my calendar on friday at 1 pm?"}, lunch},
        {{"is it possible to put lunch in my calendar on friday at 1 pm?"}, lunch},
        {{"can you remind me to eat at 6 pm?"}, R"(set_reminder {"text":"remind me to eat at 6 pm"})"},
        {{"don't let me forget to feed the cat tonight"},
            R"(set_reminder {"text":"remind me to feed the cat tonight"})"},
    });
    for (const char* words : {"remind me about the meeting", "what about 6 pm?", "when I get home, remind me",
             "do the dishes", "tell me tomorrow at 9 am to stretch", "can the dentist wait until monday",
             "I put the key under the pot, remember that", "give me a nudge at 5 pm",
             "the dentist, can we make that friday?"})
        EXPECT_EQ(moodOf(words), RequestMood::wish) << words;
}

TEST(CarefulRequests, asksForADateOfWhichOnlyAPartWasUnderstood)
{
    const std::string when = "I am not sure which time you mean. When is it?";
    const std::string atOne = "On which day is it, at 1 PM?";
    const auto added = [](const std::string& title, const std::string& rest) {
        return R"(add_event {"title":")" + title + R"(","start":")" + rest + "}";
    };
    check({
        {{"put lunch in my calendar on sunday 20 march at 1 pm"}, atOne},
        {{"put lunch in my calendar on wensday at 1 pm"}, atOne},
        {{"put lunch in my calendar on wensday at 1 pm", "wednesday"}, added("Lunch", R"(2026-11-25 13:00")")},
        {{"put lunch in my calendar on 31 november at 1 pm"}, atOne},
        {{"put lunch in my calendar yesterday at 1 pm"}, atOne},
        {{"put lunch in my calendar on friday before 1 pm"}, when},
        {{"put gym in my calendar on monday and wednesday at 8 am"}, "On which day is it, at 8 AM?"},
        {{"put gym in my calendar on friday at 8 am and 8 pm"}, when},
        {{"put the electrician in my calendar this weekend"}, when},
        {{"put lunch in my calendar tomorrow at 25:00"}, when},
        {{"put lunch in my calendar on saturday 20 march at 1 pm"}, added("Lunch", R"(2027-03-20 13:00")")},
        {{"put lunch in my calendar on 20 march 2028 at 1 pm"}, added("Lunch", R"(2028-03-20 13:00")")},
        {{"put lunch in my calendar on 2026-12-09 at 1 pm"}, added("Lunch", R"(2026-12-09 13:00")")},
        {{"put sun cream shopping in my calendar on friday at 1 pm"}, atOne},
    });
}

TEST(CarefulRequests, readsHowLongAnEventLasts)
{
    check({
        {{"put a 30 minute call with Bob in my calendar on friday at 1 pm"},
            R"(add_event {"title":"Call with Bob","start":"2026-11-27 13:00","minutes":30})"},
        {{"put a 30 minute call with Bob in my calendar", "friday at 1 pm"},
            R"(add_event {"title":"Call with Bob","start":"2026-11-27 13:00","minutes":30})"},
        {{"put a trip to Rome in my calendar from friday to sunday"},
            R"(add_event {"title":"Trip to Rome","start":"2026-11-27","end":"2026-11-29","all_day":true})"},
        {{"put a holiday in my calendar from the 10th to the 14th of december"},
            R"(add_event {"title":"Holiday","start":"2026-12-10","end":"2026-12-14","all_day":true})"},
        {{"put a holiday in my calendar", "from the 10th to the 14th of december"},
            R"(add_event {"title":"Holiday","start":"2026-12-10","end":"2026-12-14","all_day":true})"},
        {{"put a trip in my calendar from friday to sunday at 5 pm"}, "On which day is it, at 5 PM?"},
    });
}

} // namespace quorvell
