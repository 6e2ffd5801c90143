// SPDX-License-Identifier: MIT
// Catches hours and names that were heard badly and acted on, and questions about doubts that do not matter.
#include "Understanding/requests/HeardRules.h"

#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using Trouble = HeardDoubts::Trouble;

struct Said {
    const char* words;
    HeardDoubts doubts{};
    const char* answer;
};

void checkTalk(const char* name, const std::vector<Said>& talk)
{
    SCOPED_TRACE(name);
    RequestMemory memory;
    for (const Said& said : talk) {
        const RuleStep step = HeardRules::answer(said.words, said.doubts, memory, withCalendar());
        EXPECT_EQ(shown(step), said.answer) << said.words;
        memory = step.memory;
    }
}

} // namespace

TEST(HeardRules, asksWhichHourBeforeAnythingIsSet)
{
    const Said doubtful{"remind me at 8:50 pm to feed the cat", {.orElse = {"remind me at 8:15 pm to feed the cat"}},
        "Did you say 8:50 pm, or 8:15 pm?"};
    const char* const second = R"(set_reminder {"text":"remind me at 8:15 pm to feed the cat"})";
    checkTalk("the hour", {doubtful, {"8:15", {}, second}});
    checkTalk("in other words", {doubtful, {"no i said 8:15 pm", {}, second}});
    checkTalk("its place", {doubtful, {"the second one", {}, second}});
    checkTalk(
        "another hour", {doubtful, {"9:10", {}, R"(set_reminder {"text":"remind me at 9:10 pm to feed the cat"})"}});
    checkTalk("neither", {doubtful, {"neither", {}, "Then please say it again."}});
    checkTalk("a bare yes chooses nothing",
        {doubtful, {"yes", {}, "Sorry, I could not understand that. Did you say 8:50 pm, or 8:15 pm?"}});
    checkTalk("another request",
        {doubtful, {"what's on tomorrow", {}, R"(whats_on {"from":"2026-11-22","to":"2026-11-22"})"}});
    checkTalk("the answer is in doubt too",
        {doubtful,
            {"8:50", {.orElse = {"8:15"}},
                "I am still not sure. Please say which one: the first is 8:50 pm, the second is 8:15 pm."},
            {"the second", {}, second}});
    checkTalk("half of the day",
        {{"remind me at 9 am to eat", {.orElse = {"remind me at 9 pm to eat"}}, "Did you say 9 am, or 9 pm?"}});
    checkTalk("three readings",
        {{"remind me in 50 minutes to stretch",
            {.orElse = {"remind me in 15 minutes to stretch", "remind me in 60 minutes to stretch"}},
            "Did you say 50 minutes, 15 minutes, or 60 minutes?"}});
}

TEST(HeardRules, asksForANameAndDoesNothingOnABadLine)
{
    const char* const lunch = "put lunch with donna in my calendar on friday at 1 pm";
    checkTalk("a name",
        {{lunch, {.faintNames = {"donna"}}, "Did you say Donna?"},
            {"yes", {}, R"(add_event {"title":"Lunch with donna","start":"2026-11-27 13:00"})"}});
    checkTalk("noise",
        {{lunch, {.trouble = Trouble::noise},
            "I hear you badly, there is too much noise around you. I have changed nothing. Please say it "
            "again, or type it."}});
    checkTalk("a telephone",
        {{lunch, {.trouble = Trouble::telephone},
            "I hear you badly, as over a telephone line. I have changed nothing. Please say it "
            "again, or type it."}});
}

TEST(HeardRules, asksForADayOrAnHourThatWasHeardAsSomethingElse)
{
    const Said fence{"remind me on the fence at 3 pm to order the paint", {},
        "I heard \"on the fence\" where a day or an hour belongs. Is that right?"};
    const char* const said = R"(set_reminder {"text":"remind me on the fence at 3 pm to order the paint"})";
    const char* const meant = R"(set_reminder {"text":"remind me friday at 3 pm to order the paint"})";
    checkTalk("it was said so", {fence, {"yes", {}, said}});
    checkTalk("the day", {fence, {"on friday", {}, meant}});
    checkTalk("the day after a no", {fence, {"no friday", {}, meant}});
    checkTalk("the day is in doubt too",
        {fence,
            {"on friday", {.orElse = {"on sunday"}},
                "I am not sure what you said, so I have changed nothing. Please say it again."}});
    const std::pair<const char*, const char*> asked[] = {
        {"set a reminder for a dentist at 3 pm to buy milk", "for a dentist"},
        {"wake me up on the fence at 6 am", "on the fence"},
        {"schedule a meeting on wins day at 11 am", "on wins day"},
        {"remind me on friday adding a m to pay the rent", "adding a m"},
    };
    for (const auto& [words, piece] : asked)
        EXPECT_EQ(shown(HeardRules::answer(words, {}, {}, withCalendar())),
            "I heard \"" + std::string(piece) + "\" where a day or an hour belongs. Is that right?");
    for (const char* words : {"remind me about the party at 5 pm", "remind me to go to the fence at 3 pm",
             "remind me at work tomorrow at 5 pm to print the form", "remind me at 5 pm to call ana to say hello",
             "set a reminder for my son at 3 pm to take his pills", "schedule a meeting on budgets today at 11 am",
             "set an alarm for 6 am", "alarm at 3 pm to pick up kids"})
        EXPECT_EQ(shown(HeardRules::answer(words, {}, {}, withCalendar())).find("I heard"), std::string::npos) << words;
}

TEST(HeardRules, letsDoubtsPassThatDoNotMatter)
{
    checkTalk("a question",
        {{"what do i have on sunday", {.orElse = {"what do i have on monday"}, .trouble = Trouble::noise},
            R"(whats_on {"from":"2026-11-22","to":"2026-11-22"})"}});
    checkTalk("small talk", {{"thank you", {.faintNames = {"you"}, .trouble = Trouble::unclear}, "You are welcome."}});
    checkTalk("a reading that nobody says",
        {{"remind me tonight at 9:30 to eat", {.orElse = {"remind me nine at 9:30 to eat"}},
            R"(set_reminder {"text":"remind me tonight at 9:30 to eat"})"}});
    checkTalk("no doubts",
        {{"remind me tomorrow at 5 pm to eat", {}, R"(set_reminder {"text":"remind me tomorrow at 5 pm to eat"})"}});
}

} // namespace quorvell
