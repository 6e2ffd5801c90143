// SPDX-License-Identifier: MIT
// Catches requests weighed as something else than they are.
#include "Understanding/requests/RequestEvidence.h"

#include "Understanding/requests/SkillTable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace quorvell {

TEST(RequestEvidence, weighsWhatIsAskedApartFromWhatItIsAbout)
{
    struct Row {
        const char* words;
        std::string_view kind;
        const char* content;
        TimeHints hints = {};
    };
    const Row rows[] = {
        {"dig out what I said about the boiler", "findNote", "the boiler"},
        {"where did I put down the wifi password", "findNote", "the wifi password"},
        {"read me the plumber note", "readNote", "the plumber"},
        {"what does my note about the car say", "readNote", "the car"},
        {"put the recipe for soup in my notes", "keepNote", "the recipe for soup"},
        {"save this: Anna likes lilies", "keepNote", "Anna likes lilies"},
        {"throw away the note about the plumber", "deleteNote", "the plumber"},
        {"note that my calendar is full", "keepNote", "that my calendar is full"},
        {"give me a nudge to find my notes", "remind", "to find my notes"},
        {"reminding me to eat", "remind", "to eat"},
        {"remember that I have a meeting", "remember", "that I have a meeting"},
        {"what have I got to remember", "listReminders", ""},
        {"what's still on my plate", "listReminders", ""},
        {"push the dentist reminder back", "putOffReminder", "the dentist back"},
        {"not now", "putOffReminder", ""},
        {"the laundry is sorted", "finishReminder", "the laundry is"},
        {"get rid of the milk reminder", "finishReminder", "the milk"},
        {"what have I got on Friday in my diary", "listEvents", "Friday", {.hasDay = true}},
        {"what's next on my calendar", "nextEvent", ""},
        {"what's after that", "nextEvent", ""},
        {"remind me to eat instead", "remind", "to eat"},
        {"any gaps on friday", "findTime", "friday", {.hasDay = true}},
        {"find me half an hour tomorrow", "findTime", "half an hour tomorrow", {.hasDay = true, .hasLength = true}},
        {"find the half hour report note", "findNote", "the half hour report", {.hasLength = true}},
        {"bung lunch with Ana in my diary", "addEvent", "lunch with Ana"},
        {"reschedule the vet for 5 pm", "moveEvent", "the vet for 5 pm", {.hasMoment = true}},
        {"bring the haircut forward an hour", "moveEvent", "the haircut an hour", {.hasLength = true}},
        {"call off my lunch", "cancelEvent", "my lunch"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.words);
        const RequestReading reading = RequestReading::of(row.words, SkillTable::cues());
        const auto kinds = RequestEvidence::ranked(reading, row.hints);
        EXPECT_EQ(reading.content, row.content);
        ASSERT_FALSE(kinds.empty());
        EXPECT_EQ(kinds.front()->name, row.kind);
    }
    for (const char* words : {"", "...", "make it louder", "who won the game", "tell me a joke", "open the browser",
             "delete this file", "what is the capital of France", "noteworthy things happen"})
        EXPECT_TRUE(RequestEvidence::ranked(RequestReading::of(words, SkillTable::cues()), {}).empty()) << words;
}

TEST(SkillTable, namesOnlyKindsAndToolsThatThereAreOnce)
{
    std::set<std::string_view> kinds;
    std::set<std::string_view> tools;
    for (const Skill* skill : SkillTable::all()) {
        for (const RequestKind& kind : skill->kinds)
            EXPECT_TRUE(kinds.insert(kind.name).second) << kind.name;
        for (const std::string_view tool : skill->tools)
            EXPECT_TRUE(skill->owns || tools.insert(tool).second) << tool;
    }
    for (const Skill* skill : SkillTable::all()) {
        for (const CueWeights& row : skill->weights) {
            for (const KindWeight& weight : row.weights)
                EXPECT_TRUE(weight.kind.empty() || kinds.contains(weight.kind)) << row.cue.name << " " << weight.kind;
        }
    }
}

} // namespace quorvell
