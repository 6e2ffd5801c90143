// SPDX-License-Identifier: MIT
// Catches what was said or typed, joined wrongly, kept too long or not forgotten.
#include "QuorvellCore/live/history/CommandHistory.h"
#include "QuorvellCore/live/history/RecentRequests.h"
#include "QuorvellCore/live/history/Transcript.h"
#include "QuorvellCore/live/history/TypedMessage.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

using Strings = std::vector<std::string>;
using std::chrono::milliseconds;

TEST(Transcript, joinsFinishedPiecesAndThePartialOne)
{
    using Piece = Transcript::Piece;
    Transcript transcript;
    transcript.add("remi", Piece::partial);
    transcript.add("remind me", Piece::partial);
    EXPECT_EQ(transcript.text(), "remind me");
    transcript.add(" remind me \n", Piece::final_);
    EXPECT_EQ(transcript.text(), "remind me");
    transcript.add("tomorrow", Piece::partial);
    EXPECT_EQ(transcript.text(), "remind me tomorrow");
    transcript.add("  ", Piece::final_);
    EXPECT_EQ(transcript.finished, Strings{"remind me"}) << "a blank final piece ends the partial one and adds nothing";
    EXPECT_EQ(transcript.text(), "remind me");
    EXPECT_FALSE(transcript.isEmpty());
    EXPECT_TRUE(Transcript{}.isEmpty());
}

TEST(TypedMessage, knowsPastesAndBlanks)
{
    const TypedMessage message{{{"see ", false}, {"this", true}}, false};
    EXPECT_EQ(message.text(), "see this");
    EXPECT_TRUE(message.hasPaste());
    EXPECT_FALSE(message.isEmpty());
    EXPECT_TRUE((TypedMessage{{{" ", false}, {"\n", true}}, false}.isEmpty()));
}

TEST(CommandHistory, holdsNoTextTwiceAndNoMoreThanItsLimit)
{
    CommandHistory history({"a", "b", "c", "d"}, 3);
    EXPECT_EQ(history.entries(), (Strings{"b", "c", "d"}));
    history.add("  b ");
    EXPECT_EQ(history.entries(), (Strings{"c", "d", "b"}));
    history.add("e");
    EXPECT_EQ(history.entries(), (Strings{"d", "b", "e"}));
    history.add(" \n ");
    EXPECT_EQ(history.entries().size(), 3u);
    CommandHistory roomy({"a", "b"}, 10);
    roomy.add("a");
    EXPECT_EQ(roomy.entries(), (Strings{"b", "a"}));
}

TEST(CommandHistory, browsesAndBringsTheDraftBack)
{
    CommandHistory history({"first", "second"}, 10);
    EXPECT_FALSE(history.newer());
    EXPECT_EQ(history.older("dra"), "second");
    EXPECT_EQ(history.older("edited"), "first");
    EXPECT_FALSE(history.older("edited"));
    EXPECT_EQ(history.draft(), "dra") << "only the first step keeps what stood in the box";
    EXPECT_EQ(history.newer(), "second");
    EXPECT_EQ(history.newer(), "dra");
    EXPECT_FALSE(history.isBrowsing());
    EXPECT_EQ(history.older("again"), "second");
    history.add(" ");
    EXPECT_FALSE(history.isBrowsing());
    EXPECT_EQ(history.draft(), "");
    history.clear();
    EXPECT_FALSE(history.older("x"));
    EXPECT_FALSE(history.isBrowsing());
}

TEST(RecentRequests, joinsPiecesOfOneRequest)
{
    const std::tuple<const char*, std::vector<int>, Strings> rows[] = {
        {"1.2 s apart", {0, 1200}, {"0 1"}},
        {"exactly 1.5 s apart", {0, 1500}, {"0 1"}},
        {"2 s apart", {0, 2000}, {"0", "1"}},
        {"by the last piece", {0, 1200, 2400}, {"0 1 2"}},
        {"91 s old is gone", {0, 91000}, {"1"}},
        {"90 s old is kept", {0, 90000}, {"0", "1"}},
        {"only the last eight", {0, 5000, 10000, 15000, 20000, 25000, 30000, 35000, 40000, 45000},
            {"2", "3", "4", "5", "6", "7", "8", "9"}},
    };
    for (const auto& [name, times, expected] : rows) {
        RecentRequests recent;
        for (std::size_t index = 0; index < times.size(); ++index)
            recent.heard(" " + std::to_string(index) + " ", milliseconds(times[index]));
        Strings texts;
        for (const auto& request : recent.requests)
            texts.push_back(request.text);
        EXPECT_EQ(texts, expected) << name;
        EXPECT_EQ(recent.lastHeard, milliseconds(times.back()));
    }
}

TEST(RecentRequests, takesEachTypedLineForARequestOfItsOwn)
{
    RecentRequests recent;
    recent.typed("switch to guide mode", milliseconds(0));
    recent.requests.front().used.insert("set_mode");
    recent.typed(" switch to do mode ", milliseconds(100));
    recent.typed(" ", milliseconds(200));
    ASSERT_EQ(recent.requests.size(), 2u);
    EXPECT_EQ(recent.requests.back().text, "switch to do mode");
    EXPECT_TRUE(recent.requests.back().used.empty());
}

TEST(RecentRequests, letsNoWordOfALongSpeechCountForTooLong)
{
    RecentRequests recent;
    for (int second = 0; second <= 91; ++second)
        recent.heard(second == 0 ? "do it for me" : "and", std::chrono::seconds(second));
    ASSERT_FALSE(recent.requests.empty());
    EXPECT_EQ(recent.requests.front().text.find("do it"), std::string::npos);
    recent.heard("switch to guide mode", milliseconds(91'500));
    recent.heard("", milliseconds(150'000));
    ASSERT_FALSE(recent.requests.empty()) << "its last words count for a minute";
    EXPECT_NE(recent.requests.back().text.find("guide mode"), std::string::npos);
}

TEST(RecentRequests, forgetsEvenWhenNothingWasSaid)
{
    RecentRequests recent;
    recent.heard("turn it up", milliseconds(0));
    recent.requests.front().used.insert("quick_action");
    recent.heard("  ", milliseconds(1000));
    ASSERT_EQ(recent.requests.size(), 1u);
    EXPECT_EQ(recent.requests.front().updated, milliseconds(0));
    recent.heard("", milliseconds(90001));
    EXPECT_TRUE(recent.requests.empty());
}

} // namespace quorvell
