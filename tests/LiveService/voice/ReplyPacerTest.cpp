// SPDX-License-Identifier: MIT
// Catches replies handed out faster or slower than they are heard, or beside their words.
#include "LiveService/voice/ReplyPacer.h"

#include "LiveService/voice/SpokenText.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using std::chrono::milliseconds;

constexpr int rate = 24000;

std::vector<std::int16_t> sound(milliseconds length)
{
    return std::vector<std::int16_t>(static_cast<std::size_t>(rate * length.count() / 1000), 100);
}

struct HandedOut {
    std::string words;
    milliseconds sound{};
};

HandedOut take(ReplyPacer& pacer, milliseconds now)
{
    HandedOut result;
    for (const PacedPiece& piece : pacer.due(now)) {
        if (const auto* words = std::get_if<std::string>(&piece))
            result.words += *words + "|";
        else
            result.sound += milliseconds(std::get<1>(piece).size() * 1000 / rate);
    }
    return result;
}

} // namespace

TEST(ReplyPacer, staysALittleAheadOfTheListener)
{
    ReplyPacer pacer(rate);
    pacer.beginSentence("One two three four five six.");
    EXPECT_FALSE(pacer.nextDue());
    pacer.append(sound(milliseconds(1000)));
    pacer.endSentence();
    pacer.endReply();

    const auto first = take(pacer, milliseconds(5000));
    EXPECT_EQ(first.sound, ReplyPacer::ahead);
    EXPECT_EQ(first.words, "One two three|");
    EXPECT_EQ(pacer.nextDue(), milliseconds(5000));
    EXPECT_EQ(take(pacer, milliseconds(5001)).sound, milliseconds(40));
    EXPECT_EQ(take(pacer, milliseconds(5100)).sound, milliseconds(80));
    std::string words;
    milliseconds last{};
    while (const auto next = pacer.nextDue()) {
        last = *next + milliseconds(1);
        words += take(pacer, last).words;
    }
    EXPECT_EQ(words, " four five six.|");
    EXPECT_FALSE(pacer.isSpeaking());
    EXPECT_EQ(pacer.spoken(), milliseconds(1000));
    EXPECT_NEAR(static_cast<double>(last.count()), 5000 + 1000 - 200, 45);
}

TEST(ReplyPacer, waitsForASlowVoiceWithoutRushingAfterwards)
{
    ReplyPacer pacer(rate);
    pacer.beginSentence("Well.");
    pacer.append(sound(milliseconds(40)));
    EXPECT_EQ(take(pacer, milliseconds(0)).sound, milliseconds(40));
    pacer.append(sound(milliseconds(1000)));
    EXPECT_EQ(take(pacer, milliseconds(3000)).sound, ReplyPacer::ahead);
}

TEST(ReplyPacer, givesTheWordsOfAReplyWithoutSound)
{
    ReplyPacer pacer(rate);
    for (const char* sentence : {"One.", "Two three four five."}) {
        pacer.beginSentence(sentence);
        pacer.endSentence();
    }
    EXPECT_EQ(take(pacer, milliseconds(0)).words, "");
    pacer.endReply();
    EXPECT_EQ(take(pacer, milliseconds(0)).words, "One.| Two three four| five.|");
    EXPECT_FALSE(pacer.isSpeaking());
}

TEST(ReplyPacer, breaksOff)
{
    ReplyPacer pacer(rate);
    pacer.beginSentence("One two three four five six.");
    pacer.append(sound(milliseconds(1000)));
    take(pacer, milliseconds(0));
    pacer.breakOff();
    EXPECT_FALSE(pacer.isSpeaking());
    EXPECT_EQ(take(pacer, milliseconds(0)).sound, milliseconds(0));
    EXPECT_EQ(pacer.spoken(), ReplyPacer::ahead);
    pacer.beginSentence("Seven.");
    pacer.append(sound(milliseconds(40)));
    EXPECT_EQ(take(pacer, milliseconds(0)).words, "Seven.|") << "the client has nothing left to play";
}

TEST(SpokenText, findsSentences)
{
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"", {}},
        {"One. Two! Three? Four", {"One.", "Two!", "Three?", "Four"}},
        {"Come at 5 p.m. please. Thanks.", {"Come at 5 p.m. please.", "Thanks."}},
        {"Dr. Jones pays 3.50 to J. Smith.", {"Dr. Jones pays 3.50 to J. Smith."}},
        {"It is 5 p.m. Go home.", {"It is 5 p.m.", "Go home."}},
        {"a list:\nmilk\n\neggs", {"a list:", "milk", "eggs"}},
    };
    for (const auto& [text, sentences] : rows)
        EXPECT_EQ(SpokenText::sentences(text), sentences) << text;
    std::string endless;
    for (int count = 0; count < 400; ++count)
        endless += "ü";
    for (const std::string& sentence : SpokenText::sentences(endless))
        EXPECT_EQ(sentence.size() % 2, 0u) << "a character was cut";
}

TEST(SpokenText, sharesASentenceOutInGroups)
{
    EXPECT_EQ(
        SpokenText::groups("I will remind you to eat."), (std::vector<std::string>{"I will remind", " you to eat."}));
    EXPECT_EQ(SpokenText::voiced("*Buy milk* at 17:30, not 18:00"), "Buy milk  at 5:30 PM, not 6 PM");
}

} // namespace quorvell
