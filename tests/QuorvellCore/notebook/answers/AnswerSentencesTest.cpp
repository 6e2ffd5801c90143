// SPDX-License-Identifier: MIT
// Catches answers that the notebook does not give, and ones that it gives and that are passed over.
#include "QuorvellCore/notebook/answers/AnswerSentences.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

std::vector<Note> someNotes()
{
    return {
        {.id = "wifi",
            .title = "Wifi password",
            .body = "The wifi password is blue river 7. Ask Tom for the guest one."},
        {.id = "boiler",
            .title = "Boiler",
            .body = "# Reset\nHold the red button for 5 seconds.\nThen wait until the lamp is green.\n# Pressure\nKeep "
                    "it at 1.5 bar."},
        {.id = "plumber", .title = "Plumber", .body = "Bob the plumber was here on 3 May. His phone is 555 0102."},
        {.id = "heating", .title = "Heating", .body = "The plumber said that the pump is 12 years old."},
        {.id = "key",
            .title = "House",
            .body = "- I put the spare key under the third flower pot.\n- [ ] paint the fence"},
        {.id = "ana", .title = "Ana's birthday is on 3 June"},
        {.id = "likes", .kind = NoteKind::aboutMe, .title = "Likes coriander.", .confirmed = true},
        {.id = "shoes", .kind = NoteKind::aboutMe, .title = "Their shoe size is 43.", .confirmed = true},
        {.id = "dentist", .title = "Dentist", .body = "Dr. Meier, Long Street 4. Opens at 8."},
        {.id = "hat", .title = "Ben's hat size", .body = "Ben's hat size is 58."},
        {.id = "tea", .kind = NoteKind::howTo, .title = "Make tea", .steps = {"Boil water", "Pour it on the leaves"}},
    };
}

TEST(AnswerSentences, areTheOnesThatHoldTheAnswer)
{
    const struct Row {
        const char* question;
        const char* answers; ///< "id: text", apart by " | "; "~id" for those that come near.
    } rows[] = {
        {"what is the wifi password", "wifi: The wifi password is blue river 7."},
        {"whats the wi-fi password?", "wifi: The wifi password is blue river 7."},
        {"wifi pasword", "wifi: The wifi password is blue river 7."},
        {"how do I reset the boiler",
            "boiler: Hold the red button for 5 seconds. Then wait until the lamp is green. Keep it at 1.5 bar."},
        {"what pressure should the boiler have", "boiler: Keep it at 1.5 bar."},
        {"what is the plumber's number", "plumber: His phone is 555 0102."},
        {"what did I say about the plumber",
            "plumber: Bob the plumber was here on 3 May. | heating: The plumber said that the pump is 12 years old."},
        {"where did I put the spare keys", "key: I put the spare key under the third flower pot."},
        {"when is anas birthday", "ana: Ana's birthday is on 3 June"},
        {"do I like coriander", "likes: Likes coriander."},
        {"what size shoes do I wear", "shoes: Their shoe size is 43."},
        {"who is my dentist", "dentist: Dr. Meier, Long Street 4."},
        {"how do I make tea", "tea: 1. Boil water. 2. Pour it on the leaves"},
        {"what's my shoe size", "shoes: Their shoe size is 43."},
        {"what's Ben's hat size", "hat: Ben's hat size is 58."},
        {"what is Mila's hat size", ""},
        {"what is my hat size", ""},
        {"what is the door password", "~wifi "},
        {"when is tom's birthday", "~wifi "},
        {"who is the president", ""},
        {"what is it", ""},
        {"", ""},
    };
    const auto notes = someNotes();
    for (const Row& row : rows) {
        const AnswersFound found = AnswerSentences::find(QuestionWords::of(row.question), notes);
        std::string answers;
        for (const AnswerSentence& sentence : found.sentences)
            answers += (answers.empty() ? "" : " | ") + notes[sentence.note].id + ": " + sentence.text;
        for (const std::size_t near : found.near)
            answers += "~" + notes[near].id + " ";
        EXPECT_EQ(answers, row.answers) << row.question;
    }
}

TEST(AnswerSentences, areBounded)
{
    const Note endless{.id = "1", .title = "key", .body = std::string(1'000'000, 'x') + " key"};
    const Note broken{.id = "2", .body = "the key \xff\xfe is \xc3"};
    const auto found = AnswerSentences::find(QuestionWords::of("where is the key"), std::vector<Note>(50, endless));
    EXPECT_LE(found.sentences.size(), AnswerSentences::mostSentences);
    EXPECT_LE(AnswerSentences::find(QuestionWords::of("key"), {broken}).sentences.at(0).text.size(), 40U);
    EXPECT_LE(
        QuestionWords::of(std::string(100'000, 'k') + " one two three four five six seven eight nine ten").terms.size(),
        QuestionWords::most);
}

} // namespace
} // namespace quorvell
