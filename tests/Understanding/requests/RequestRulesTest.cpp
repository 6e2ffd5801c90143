// SPDX-License-Identifier: MIT
// Catches requests that lead to the wrong tool call, question or answer.
#include "RuleBench.h"
#include "Understanding/skills/notes/NoteRules.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

std::string answer(std::string_view words, const RequestMemory& memory = {})
{
    return shown(RequestRules::answerWords(words, memory, surroundings()));
}

std::string remind(const std::string& text)
{
    return "set_reminder {\"text\":\"" + text + "\"}";
}

std::string keep(const std::string& title, const std::string& text)
{
    return "keep_note {\"title\":\"" + title + "\",\"text\":\"" + text + "\"}";
}

std::string find(const std::string& query)
{
    return "find_in_notebook {\"query\":\"" + query + "\"}";
}

constexpr const char* cannot =
    "That needs an online model. On this computer, I can set reminders, and I can save, find "
    "and read your notes.";

} // namespace

TEST(RequestRules, turnsRequestsIntoToolCalls)
{
    struct Row {
        const char* words;
        std::string expected;
    };
    const Row rows[] = {
        {"remind me tomorrow at 5 pm to call the dentist", remind("remind me tomorrow at 5 pm to call the dentist")},
        {"Hey Quorvell, could you please remind me to call Anna at 6pm?", remind("remind me to call Anna at 6pm")},
        {"okay quorvell remind me about the meeting on friday", remind("remind me about the meeting on friday")},
        {"set a reminder for tomorrow at 9 am to water the garden",
            remind("remind me tomorrow at 9 am to water the garden")},
        {"set me a reminder to pay the rent on the 1st", remind("remind me to pay the rent on the 1st")},
        {"add a reminder for the dentist tomorrow at noon", remind("remind me the dentist tomorrow at noon")},
        {"Reminder: buy milk at 17:00", remind("remind me buy milk at 17:00")},
        {"I need a reminder to renew my passport next week", remind("remind me to renew my passport next week")},
        {"i'd like to be reminded of the party on saturday", remind("remind me about the party on saturday")},
        {"i want you to remind me at 5 pm to stretch", remind("remind me at 5 pm to stretch")},
        {"don't let me forget to feed the cat tonight", remind("remind me to feed the cat tonight")},
        {"make sure i don't forget to take the bins out every monday",
            remind("remind me to take the bins out every monday")},
        {"remember to call mum at 6 pm", remind("remind me to call mum at 6 pm")},
        {"I must not forget to send the letter tomorrow", remind("remind me to send the letter tomorrow")},
        {"tomorrow at 5 pm please remind me to call the dentist",
            remind("remind me to call the dentist tomorrow at 5 pm")},
        {"at 7 am tomorrow remind me to take my medicine", remind("remind me to take my medicine at 7 am tomorrow")},
        {"wake me up at 7 am", remind("remind me to wake up at 7 am")},
        {"in 20 minutes check the oven", remind("remind me in 20 minutes check the oven")},
        {"every monday take the bins out", remind("remind me every monday take the bins out")},
        {"Call Mum tomorrow at 5 pm", remind("remind me Call Mum tomorrow at 5 pm")},
        {"remind me to find my notes about tax tomorrow", remind("remind me to find my notes about tax tomorrow")},
        {"remind me in twenty five minutes to eat", remind("remind me in 25 minutes to eat")},
        {"remind me on march fifth at 5 pm to eat", remind("remind me on march 5th at 5 pm to eat")},
        {"at 5:30 pm call mum", remind("remind me at 5:30 pm call mum")},
        {"remind me to call the dentist", remind("remind me to call the dentist")},
        {"hey quorvell, would you mind reminding me to eat at 6 pm please, thank you so much?",
            remind("remind me to eat at 6 pm")},
        {"remind me about my eye test on thursday at 2 pm", remind("remind me about my eye test on thursday at 2 pm")},

        {"note that the wifi password is blue river", keep("Wifi password", "The wifi password is blue river")},
        {"Make a note: the spare key is under the pot.", keep("Spare key", "The spare key is under the pot")},
        {"take a note that Anna likes tulips", keep("Anna likes tulips", "Anna likes tulips")},
        {"please write down that my size is 42", keep("Size", "My size is 42")},
        {"remember that the car is in the second row", keep("Car", "The car is in the second row")},
        {"remember my locker number is 217", keep("Locker number", "My locker number is 217")},
        {"jot down milk eggs and bread", keep("Milk eggs and bread", "Milk eggs and bread")},
        {"make a note to ask Ben about the boat", keep("Ask Ben about the boat", "Ask Ben about the boat")},
        {"new note the gate code is 4711", keep("Gate code", "The gate code is 4711")},
        {"note to self be kind", keep("Be kind", "Be kind")},
        {"add the recipe for soup to my notes", keep("The recipe for soup", "The recipe for soup")},
        {"make a note called shopping saying milk and eggs", keep("Shopping", "Milk and eggs")},
        {"write this down: it is late and everybody went home already today",
            keep("It is late and everybody went", "It is late and everybody went home already today")},

        {"find my note about the wifi password", find("wifi password")},
        {"search my notes for garden", find("garden")},
        {"look in my notebook for the spare key", find("spare key")},
        {"find the gate code in my notes", find("gate code")},
        {"do I have a note about Anna?", find("Anna")},
        {"what did i write about the boat", find("boat")},
        {"what do my notes say about soup", find("soup")},
        {"what does my note about the car say", find("car")},
        {"show me my notes about the trip", find("trip")},
        {"what have i got about taxes", find("taxes")},
        {"read me my note about the trip", find("trip")},
        {"read my last note", "find_in_notebook {\"query\":\"\",\"limit\":1}"},
        {"show my notes", "find_in_notebook {\"query\":\"\",\"limit\":20}"},
        {"what are my reminders", "set_reminder {\"list\":true}"},
        {"what reminders do i have tomorrow", "set_reminder {\"list\":true}"},

        {"remind me", "What do you want to be reminded of, and when?"},
        {"please take a note", "What do you want to write down?"},
        {"read it to me", "What are you looking for?"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(answer(row.words), row.expected);
    }
}

TEST(RequestRules, answersWithoutATool)
{
    struct Row {
        const char* words;
        std::string expected;
    };
    const Row rows[] = {
        {"hello", "Hello. What can I do for you?"},
        {"Hey Quorvell!", "Hello. What can I do for you?"},
        {"thank you very much", "You are welcome."},
        {"goodbye", "Goodbye."},
        {"what can you do?",
            "I can set reminders, and I can save, find and read your notes. For example: remind me "
            "tomorrow at 5 PM to call the dentist."},
        {"what time is it", "It is 1 PM."},
        {"what day is it today", "Today is Saturday the 21st of November."},
        {"never mind", "Okay."},
        {"say that again", "I have not said anything yet."},
        {"what's the weather tomorrow", cannot},
        {"tell me a joke", cannot},
        {"open the browser", cannot},
        {"tomorrow is my birthday", cannot},
        {"who won the game on sunday", cannot},
        {"I have a meeting tomorrow at 5 pm", cannot},
        {"send an email to Ben tomorrow", cannot},
        {"noteworthy things happen", cannot},
        {"do you remember that day", cannot},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(answer(row.words), row.expected);
    }
    EXPECT_EQ(answer("repeat that", {.lastReply = "You are welcome."}), "You are welcome.");
}

TEST(RequestRules, callsOnlyToolsThatTheSessionOffers)
{
    RuleSurroundings around = surroundings();
    around.tools = {"keep_note"};
    const auto said = [&](const char* words) { return shown(RequestRules::answerWords(words, {}, around)); };
    EXPECT_EQ(said("remind me at 5 pm to rest"), "I cannot set reminders in this conversation.");
    EXPECT_EQ(said("find my note about tea"), "I cannot look into your notebook in this conversation.");
    EXPECT_EQ(said("what is the capital of France"), "That needs an online model. On this computer, I can save notes.");
    EXPECT_EQ(said("note that tea is out"), keep("Tea", "Tea is out"));
}

TEST(RequestRules, settlesWhichTimeIsMeant)
{
    const RequestMemory memory{.pending = {.kind = &ReminderQuestions::whichTime,
                                   .question = "Which?",
                                   .task = "Call the dentist",
                                   .repeat = "daily",
                                   .choices = {{{2026, 11, 22, 5, 0}, "Sunday 22 November at 5 AM"},
                                       {{2026, 11, 22, 17, 0}, "Sunday 22 November at 5 PM"}}},
        .request = "remind me tomorrow at 5 to call the dentist"};
    const auto reminder = [](const char* date) {
        return std::string("set_reminder {\"task\":\"Call the dentist\",\"date\":\"") + date
            + "\",\"repeat\":\"daily\"}";
    };
    struct Row {
        const char* words;
        std::string expected;
    };
    const Row rows[] = {
        {"the afternoon", reminder("2026-11-22 17:00")},
        {"in the morning please", reminder("2026-11-22 05:00")},
        {"5 pm", reminder("2026-11-22 17:00")},
        {"5pm.", reminder("2026-11-22 17:00")},
        {"five in the evening", reminder("2026-11-22 17:00")},
        {"17:00", reminder("2026-11-22 17:00")},
        {"half past five in the afternoon", reminder("2026-11-22 17:30")},
        {"at 5 a.m.", reminder("2026-11-22 05:00")},
        {"the first one", reminder("2026-11-22 05:00")},
        {"the 2nd one", reminder("2026-11-22 17:00")},
        {"the later one", reminder("2026-11-22 17:00")},
        {"no, 6 pm", reminder("2026-11-22 18:00")},
        {"make it 6:30 in the morning", reminder("2026-11-22 06:30")},
        {"noon", reminder("2026-11-22 12:00")},
        {"never mind", "Okay, I will not do that."},
        {"no", "Okay, I will not do that."},
        {"banana", "Sorry, I could not understand that. Which?"},
        {"5", "Sorry, I could not understand that. Which?"},
        {"the fourth of july", "Sorry, I could not understand that. Which?"},
        {"thank you", "You are welcome."},
        {"remind me to buy milk at 6 pm", remind("remind me to buy milk at 6 pm")},
        {"note that tea is out", keep("Tea", "Tea is out")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(answer(row.words, memory), row.expected);
    }
    RequestMemory once = memory;
    once.pending.repeat.clear();
    EXPECT_EQ(answer("on monday at 6 pm", once), remind("remind me to call the dentist on monday at 6 pm"));
}

TEST(RequestRules, completesAReminderOverSeveralTurns)
{
    const RequestMemory noTime{.pending = {.kind = &ReminderQuestions::when, .question = "When?", .task = "Call mum"},
        .request = "remind me to call mum"};
    EXPECT_EQ(answer("let's say tomorrow at 5 pm", noTime), remind("remind me to call mum tomorrow at 5 pm"));
    EXPECT_EQ(answer("6", noTime), remind("remind me to call mum at 6"));
    EXPECT_EQ(answer("in half an hour", noTime), remind("remind me to call mum in half an hour"));
    EXPECT_EQ(answer("remind me tomorrow at 9 am", noTime), remind("remind me to call mum tomorrow at 9 am"));
    EXPECT_EQ(answer("remind me to eat at 9 am", noTime), remind("remind me to eat at 9 am"));
    EXPECT_EQ(answer("blue", noTime), "Sorry, I could not understand that. When?");

    const RequestMemory noTask{
        .pending = {.kind = &ReminderQuestions::task, .question = "What?", .date = DateParts{2026, 11, 22, 17, 0}}};
    const std::string expected = "set_reminder {\"task\":\"Call mum\",\"date\":\"2026-11-22 17:00\"}";
    for (const char* words : {"call mum", "to call mum", "it's about call mum", "remind me to call mum"})
        EXPECT_EQ(answer(words, noTask), expected) << words;

    const RequestMemory nothing{.pending = {.kind = &ReminderQuestions::whole, .question = "What and when?"}};
    EXPECT_EQ(answer("to call mum at 6 pm", nothing), remind("remind me to call mum at 6 pm"));

    const RequestMemory noText{.pending = {.kind = &NoteRules::whatToWrite, .question = "What?"}};
    EXPECT_EQ(answer("the boat is blue", noText), keep("Boat", "The boat is blue"));
}

TEST(RequestRules, choosesAmongTheNotesFound)
{
    const RequestMemory memory{.pending = {.kind = &NoteRules::whichOne, .question = "Which?"},
        .found = {{.id = "a1", .title = "Garden plan", .skill = "notes"},
            {.id = "b2", .title = "House plan", .skill = "notes"},
            {.id = "c3", .title = "Wifi password", .skill = "notes"}}};
    struct Row {
        const char* words;
        const char* expected;
    };
    const Row rows[] = {
        {"the first one", "read_note {\"id\":\"a1\"}"},
        {"read the second one", "read_note {\"id\":\"b2\"}"},
        {"number 3", "read_note {\"id\":\"c3\"}"},
        {"the second", "read_note {\"id\":\"b2\"}"},
        {"the last one", "read_note {\"id\":\"c3\"}"},
        {"the one about the garden", "read_note {\"id\":\"a1\"}"},
        {"wifi", "read_note {\"id\":\"c3\"}"},
        {"the plan", "Sorry, I could not understand that. Which?"},
        {"the fifth one", "Sorry, I could not understand that. Which?"},
        {"none of them", "Okay, I will not do that."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        EXPECT_EQ(answer(row.words, memory), row.expected);
    }
    // Later on, nothing being asked any more.
    EXPECT_EQ(answer("read the second one", {.found = memory.found}), "read_note {\"id\":\"b2\"}");
    EXPECT_EQ(
        answer("read it", {.found = {{.id = "z9", .title = "Tea", .skill = "notes"}}}), "read_note {\"id\":\"z9\"}");
    EXPECT_EQ(answer("read it", {.found = memory.found}), "Which one should I read?");
}

TEST(RequestRules, givesUpAQuestionAfterTwoAnswersThatFitNothing)
{
    RequestMemory memory{
        .pending = {.kind = &ReminderQuestions::when, .question = "When?"}, .request = "remind me to eat"};
    const auto first = RequestRules::answerWords("blue", memory, surroundings());
    const auto second = RequestRules::answerWords("green", first.memory, surroundings());
    EXPECT_EQ(shown(second), cannot);
    EXPECT_EQ(second.memory.pending, PendingQuestion());
}

TEST(RequestRules, goesOnFromAToolsResult)
{
    const ToolRequest search{"find_in_notebook", R"({"query":"tea"})"};
    const std::string one = R"({"status":"found","count":1,"notes":[{"id":"a1","title":"Tea","snippet":"Green"}]})";
    RequestMemory memory{.purpose = RequestMemory::SearchPurpose::read};
    EXPECT_EQ(shown(RequestRules::answerResult(search, one, memory, surroundings())), "read_note {\"id\":\"a1\"}");

    memory.purpose = RequestMemory::SearchPurpose::tell;
    const auto told = RequestRules::answerResult(search, one, memory, surroundings());
    EXPECT_EQ(shown(told), "There is one note. It is called Tea. It says: Green.");
    EXPECT_EQ(answer("read it", told.memory), "read_note {\"id\":\"a1\"}");

    const ToolRequest reminder{"set_reminder", R"({"text":"remind me at 5 to eat"})"};
    const std::string which = R"({"status":"which_time","task":"Eat","choices":[
        {"date":"2026-11-21 17:00","when":"Saturday 21 November at 5 PM"},
        {"date":"2026-11-22 05:00","when":"Sunday 22 November at 5 AM"}]})";
    const auto asked = RequestRules::answerResult(reminder, which, {}, surroundings());
    EXPECT_EQ(answer("the afternoon", asked.memory), R"(set_reminder {"task":"Eat","date":"2026-11-21 17:00"})");

    const auto broken = RequestRules::answerResult(reminder, "[1", {}, surroundings());
    EXPECT_EQ(shown(broken), "That did not work.");
}

} // namespace quorvell
