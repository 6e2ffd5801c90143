// SPDX-License-Identifier: MIT
// Catches a model's word for an act, or a form for programs, that would be read out.
#include "LocalModel/ModelSentences.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

std::string said(std::string_view text)
{
    ModelSentences sentences;
    std::string all;
    const auto take = [&all](const std::vector<std::string>& some) {
        for (const std::string& sentence : some)
            all += "<" + sentence + ">";
    };
    for (; !text.empty(); text.remove_prefix(1))
        take(sentences.add(text.substr(0, 1)));
    take(sentences.end());
    return all + (sentences.hasClaimed() ? " claimed" : "");
}

} // namespace

TEST(ModelSentences, saysWhatMayBeSaid)
{
    struct Row {
        const char* text;
        const char* said;
    };
    const Row rows[] = {
        {"It is late. Go to bed! Why not?", "<It is late.><Go to bed!><Why not?>"},
        {"Mix 2.5 cups, e.g. of flour.", "<Mix 2.5 cups, e.g. of flour.>"},
        {"1. Boil water.\n2. Wait.", "<1. Boil water.><2. Wait.>"},
        {"no end", "<no end>"},
        {"A\x1b[2Jline\x07.", "<A[2Jline.>"},
        {"Should I set a reminder?", "<Should I set a reminder?>"},
        {"Dentists are open on Monday.", "<Dentists are open on Monday.>"},
        {"I will need to know the day.", "<I will need to know the day.>"},
        {"A table is set with forks.", "<A table is set with forks.>"},
        {"I've set a reminder for five. Sleep well.", "<Sleep well.> claimed"},
        {"I have now added milk.", " claimed"},
        {"Done!", " claimed"},
        {"Your alarm has been set for 7.", " claimed"},
        {"Reminder set.", " claimed"},
        {"The event was successfully deleted.", " claimed"},
        {"Okay, done.", " claimed"},
        {"Everything is set.", " claimed"},
        {"I'll remind you at five.", " claimed"},
        {"Milk was added to your list.", " claimed"},
        {"Your shopping list now has milk.", " claimed"},
        {"That was a hard year.", "<That was a hard year.>"},
        {"Milk is on your list.", "<Milk is on your list.>"},
        {"It was set in Rome.", "<It was set in Rome.>"},
        {"{\"name\": \"set_reminder\", \"arguments\": {}}. Yes.", ""},
        {"```json\n{}\n```", ""},
        {"<tool_call>set_reminder</tool_call>", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(said(row.text), row.said);
    }
    EXPECT_LT(said(std::string(5000, 'a')).find('>'), 700u) << "what has no end is cut";
}

} // namespace quorvell
