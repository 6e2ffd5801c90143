// SPDX-License-Identifier: MIT
// Catches a verb that no skill knows beside the matter it is used of, and one taken for a wish that is somebody's task.
#include "Understanding/words/DeedWords.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace quorvell {

namespace {

/// Every verb in every frame, "~" in its place; an empty plain verb leaves all as it is.
void checkVerbs(std::initializer_list<std::string_view> verbs, std::initializer_list<std::string_view> frames,
    std::string_view plain)
{
    for (const std::string_view verb : verbs) {
        for (const std::string_view frame : frames) {
            const auto filled = [&](std::string_view with) {
                std::string text(frame);
                return text.replace(text.find('~'), 1, with);
            };
            EXPECT_EQ(DeedWords::plain(filled(verb)), filled(plain.empty() ? verb : plain)) << verb;
        }
    }
}

} // namespace

TEST(DeedWords, haveOnePlainVerbForEachMatter)
{
    checkVerbs({"key in", "Draft", "launch", "put up"},
        {"~ a meeting with Priya on friday", "~ bananas to my grocery list",
            "please ~ dentist in my calendar for friday"},
        "add");
    checkVerbs({"keep", "log", "arrange", "fix up", "jot down"},
        {"~ an alarm for 5 am", "can you ~ a reminder to call the vet", "~ alarm at 4 in the morning"}, "set");
    checkVerbs({"save", "compose", "enter", "organize"}, {"~ a list called camping gear", "~ a new list for the party"},
        "create");
    checkVerbs({"void", "revoke", "rid me of"}, {"~ yoga class", "~ my lunch with Ana on friday"}, "delete");
    checkVerbs({"scratch", "drop", "kill", "throw out"}, {"~ my 6:30 alarm", "~ the reminder to call mom", "~ my list"},
        "delete");
    checkVerbs({"omit", "cut out", "forget"}, {"~ eggs from my grocery list"}, "remove");
    checkVerbs({"retrieve", "update me on", "inform me of"},
        {"~ my calendar for friday", "~ all my lists", "~ my meetings tomorrow"}, "show me");
    checkVerbs({"amend", "bump", "replan"}, {"~ my lunch with Ana to saturday", "~ my 6:30 alarm to 6:45"}, "move");
    EXPECT_EQ(DeedWords::plain("set my 6:30 alarm to 6:45"), "move my 6:30 alarm to 6:45");
}

TEST(DeedWords, standInFront)
{
    EXPECT_EQ(DeedWords::plain("dentist appointment delete"), "delete dentist appointment");
    EXPECT_EQ(DeedWords::plain("milk remove from my list"), "remove milk from my list");
    EXPECT_EQ(DeedWords::plain("meeting tomorrow 3 pm set"), "set meeting tomorrow 3 pm");
    EXPECT_EQ(DeedWords::plain("my grocery list show"), "show me my grocery list");
}

TEST(DeedWords, leaveTasksAndTalkAlone)
{
    checkVerbs({"fix", "book", "arrange"}, {"~ the roof on my to do list", "~ the roof on friday"}, "");
    checkVerbs({"feed", "cut", "forget", "drop"}, {"~ the cat on friday at 4 pm", "~ it"}, "");
    checkVerbs({"keep", "save", "put"}, {"~ my alarm", "~ the list"}, "");
    checkVerbs({"drop me", "report"}, {"~ a reminder to call mom"}, "");
    checkVerbs({"get", "put"}, {"~ eggs off my grocery list"}, "");
    checkVerbs({"edit", "transfer"}, {"~ my note", "~ the money to my account"}, "");
    for (const std::string words : {"is the alarm set", "what did I delete", "I had the meeting moved", "never mind"})
        EXPECT_EQ(DeedWords::plain(words), words);
}

} // namespace quorvell
