// SPDX-License-Identifier: MIT
// Catches requests weighed as something else than they are.
#include "Understanding/requests/RequestEvidence.h"

#include "Understanding/words/RequestWords.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvell {

TEST(RequestEvidence, weighsWhatIsAskedApartFromWhatItIsAbout)
{
    using enum RequestKind;
    const struct Row {
        const char* words;
        RequestKind kind;
        const char* content;
        TimeHints hints = {};
    } rows[] = {
        {"dig out what I said about the boiler", findNote, "the boiler"},
        {"where did I put down the wifi password", findNote, "the wifi password"},
        {"read me the plumber note", readNote, "the plumber"},
        {"what does my note about the car say", readNote, "the car"},
        {"put the recipe for soup in my notes", keepNote, "the recipe for soup"},
        {"save this: Anna likes lilies", keepNote, "Anna likes lilies"},
        {"throw away the note about the plumber", deleteNote, "the plumber"},
        {"note that my calendar is full", keepNote, "that my calendar is full"},
        {"give me a nudge to find my notes", remind, "to find my notes"},
        {"reminding me to eat", remind, "to eat"},
        {"remember that I have a meeting", remember, "that I have a meeting"},
        {"what have I got to remember", listReminders, ""},
        {"what's still on my plate", listReminders, ""},
        {"push the dentist reminder back", putOffReminder, "the dentist back"},
        {"not now", putOffReminder, ""},
        {"the laundry is sorted", finishReminder, "the laundry is"},
        {"get rid of the milk reminder", finishReminder, "the milk"},
        {"what have I got on Friday in my diary", listEvents, "Friday", {.hasDay = true}},
        {"what's next on my calendar", nextEvent, ""},
        {"what's after that", nextEvent, ""},
        {"remind me to eat instead", remind, "to eat"},
        {"any gaps on friday", findTime, "friday", {.hasDay = true}},
        {"find me half an hour tomorrow", findTime, "half an hour tomorrow", {.hasDay = true, .hasLength = true}},
        {"find the half hour report note", findNote, "the half hour report", {.hasLength = true}},
        {"bung lunch with Ana in my diary", addEvent, "lunch with Ana"},
        {"reschedule the vet for 5 pm", moveEvent, "the vet for 5 pm", {.hasMoment = true}},
        {"bring the haircut forward an hour", moveEvent, "the haircut an hour", {.hasLength = true}},
        {"call off my lunch", cancelEvent, "my lunch"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const RequestReading reading = RequestReading::of(row.words);
        const auto kinds = RequestEvidence::ranked(reading, row.hints);
        EXPECT_EQ(reading.content, row.content);
        ASSERT_FALSE(kinds.empty());
        EXPECT_EQ(static_cast<int>(kinds.front()), static_cast<int>(row.kind));
    }
    for (const char* words : {"", "...", "make it louder", "who won the game", "tell me a joke", "open the browser",
             "delete this file", "what is the capital of France", "noteworthy things happen"})
        EXPECT_TRUE(RequestEvidence::ranked(RequestReading::of(words), {}).empty()) << words;
}

TEST(RequestWords, takesContractionsApartAndKeepsWhatWasSaid)
{
    const RequestWords words("What’s on, don't say \"Ana's\" lunch at 5 p.m.");
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index)
        text += std::string(words.at(index)) + (words.endsClause(index) ? "| " : " ");
    EXPECT_EQ(text, "what is on| do not say anas| lunch at 5 p.m ");
    EXPECT_EQ(words.said(6, 99), "Ana's\" lunch at 5 p.m.");
    EXPECT_EQ(RequestWords("").said(), "");
}

} // namespace quorvell
