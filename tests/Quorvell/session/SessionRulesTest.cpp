// SPDX-License-Identifier: MIT
// The small rules of a session, each as a table.
#include "Quorvell/session/connection/ReconnectBackoff.h"
#include "Quorvell/session/connection/Rotation.h"
#include "Quorvell/session/hearing/HeldSpeech.h"
#include "Quorvell/session/reports/ThoughtSummary.h"
#include "Quorvell/session/tools/HelpModeSwitch.h"
#include "Quorvell/session/turn/ConversationMemory.h"
#include "Quorvell/session/turn/SpokenReply.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

TEST(ReconnectBackoff, countsAfreshOnlyAfterASteadyConnection)
{
    ReconnectBackoff backoff;
    for (int attempt = 1; attempt <= 5; ++attempt)
        EXPECT_EQ(backoff.next(0, {}), 500ms); // What the random part adds is at least nothing.
    EXPECT_EQ(backoff.next(0, {}), std::nullopt);
    backoff.connected(100s);
    backoff.lost(129'999ms, {});
    backoff.lost(500s, {}); // It was not connected meanwhile.
    EXPECT_EQ(backoff.attempts, 5);
    backoff.connected(500s);
    backoff.lost(530s, {});
    EXPECT_EQ(backoff.next(7, {}), 1s); // A bad source of chance does no harm.
}

TEST(Rotation, isWantedForTheFirstCauseAndComplainsOnce)
{
    Rotation rotation;
    rotation.noteAge(0s, 25min, {});
    rotation.noteContext(0.8, 25min, {});
    EXPECT_FALSE(rotation.isDeferredTooLong(25h, {}));
    EXPECT_FALSE(rotation.rotationWanted);
    rotation.noteContext(0.81, 20min, {});
    rotation.noteAge(0s, 25min + 1ms, {});
    EXPECT_EQ(rotation.cause, "context");
    EXPECT_FALSE(rotation.isDeferredTooLong(21min, {}));
    EXPECT_TRUE(rotation.isDeferredTooLong(21min + 1ms, {}));
    EXPECT_FALSE(rotation.isDeferredTooLong(22min, {}));
}

TEST(SpokenReply, onlyWholeWordsThatSoundedAreHeard)
{
    SpokenReply inStep; // Each piece comes with its sound.
    inStep.addWords("Once upon ");
    inStep.addSound(1s);
    inStep.addWords("a time.");
    inStep.addSound(1s);
    SpokenReply ahead; // All words come first.
    ahead.addWords("Grüße ");
    ahead.addWords("aus Köln am Rhein");
    ahead.addSound(2s);
    SpokenReply mute;
    mute.addWords("Not a sound");
    struct Row {
        const SpokenReply& reply;
        std::chrono::milliseconds played;
        const char* heard;
    };
    for (const Row& row : {Row{inStep, 0s, ""}, {inStep, 399ms, ""}, {inStep, 600ms, "Once"},
             {inStep, 1s, "Once upon "}, {inStep, 1500ms, "Once upon a"}, {inStep, 2s, "Once upon a time."},
             {inStep, 9s, "Once upon a time."}, {ahead, 1ms, ""}, {ahead, 600ms, "Grüße"}, {ahead, 1s, "Grüße aus"},
             {ahead, 1999ms, "Grüße aus Köln am"}, {ahead, 2s, "Grüße aus Köln am Rhein"}, {mute, 5s, ""}}) {
        SCOPED_TRACE(row.played.count());
        EXPECT_EQ(row.reply.heard(row.played), row.heard);
    }
    EXPECT_EQ(ahead.text(), "Grüße aus Köln am Rhein");
}

MicGateOutput chunk(std::uint8_t mark)
{
    return MicGateOutput::sound({Bytes{mark, 0}});
}

TEST(HeldSpeech, isGivenOnceToEachConnectionUntilAnswered)
{
    HeldSpeech held;
    std::string given;
    const auto take = [&](const MicGateOutput& output) {
        given += output.isEndMark() ? '|' : static_cast<char>(output.chunk->pcm[0]);
    };
    const auto givenSince = [&] {
        held.giveTo(take);
        return std::exchange(given, {});
    };
    held.add(chunk('a'));
    EXPECT_EQ(givenSince(), "a");
    held.connectionLost();
    held.add(MicGateOutput::endMark());
    EXPECT_EQ(givenSince(), "a|");
    held.add(chunk('c'));
    held.answered(); // What was not given yet is a new request.
    EXPECT_EQ(givenSince(), "c");
    for (std::size_t count = 0; count < HeldSpeech::most; ++count)
        held.add(chunk('x'));
    EXPECT_TRUE(held.isCutOff());
    EXPECT_EQ(held.size(), HeldSpeech::most);
    EXPECT_EQ(givenSince().size(), HeldSpeech::most);
    held.answered(); // Amid a sentence: what follows of it would make no sense by itself.
    held.add(chunk('d'));
    EXPECT_TRUE(held.isCutOff());
    givenSince();
    held.speechBegan();
    EXPECT_FALSE(held.isCutOff());
    held.add(chunk('e'));
    held.add(MicGateOutput::endMark());
    givenSince();
    held.speechBegan();
    held.add(chunk('f'));
    givenSince();
    held.earlierAnswered();
    held.connectionLost();
    EXPECT_EQ(givenSince(), "f");
}

TEST(ConversationMemory, knowsWhatIsSettledAndWhatIsStillAsked)
{
    ConversationMemory memory;
    memory.userAsked("one");
    memory.assistantSaid("One moment.");
    EXPECT_EQ(memory.settledMark(), 0U);
    EXPECT_TRUE(memory.settled().empty());
    EXPECT_EQ(memory.openRequests(), "one");
    EXPECT_EQ(memory.openReplies(), "One moment.");
    memory.userAsked("two");
    EXPECT_EQ(memory.openRequests(), "one two");
    memory.settle();
    EXPECT_EQ(memory.openRequests(), "");
    const auto mark = memory.settledMark();
    memory.userAsked("three");
    memory.settle();
    EXPECT_EQ(memory.settledSince(mark), (std::vector<LiveHistoryEntry>{{"user", "three"}}));
    EXPECT_EQ(memory.settled().size(), 4U);
    for (int count = 0; count < 200; ++count)
        memory.assistantSaid("more");
    EXPECT_EQ(memory.settled().size(), ConversationMemory::most);
    EXPECT_EQ(memory.settledSince(mark).size(), ConversationMemory::most); // The rest is forgotten.
}

TEST(HelpModeSwitch, onlyTheNewestWishOfTheUserCounts)
{
    RecentRequests requests;
    requests.heard("do it for me", 0s);
    requests.heard("what is on the screen", 10s);
    EXPECT_FALSE(HelpModeSwitch::judge("guide", HelpMode::guide, requests).mode);
    RecentRequests changed = requests;
    changed.heard("no, just show me", 20s);
    EXPECT_FALSE(HelpModeSwitch::judge("do", HelpMode::auto_, changed).mode);
    EXPECT_EQ(HelpModeSwitch::judge("guide", HelpMode::auto_, changed).mode, HelpMode::guide);
    EXPECT_EQ(HelpModeSwitch::judge("do", HelpMode::do_, requests).mode, HelpMode::do_); // Asked for, so accepted.
    EXPECT_FALSE(HelpModeSwitch::judge("do", HelpMode::guide, requests).mode);
    EXPECT_FALSE(HelpModeSwitch::judge(std::nullopt, HelpMode::guide, changed).mode);
}

TEST(ThoughtSummary, keepsTheNewestOfWhatIsBounded)
{
    ThoughtSummary thought;
    EXPECT_EQ(thought.newestLine(), "");
    thought.add("");
    thought.add("**First**\n\n \n");
    EXPECT_EQ(thought.newestLine(), "First");
    for (int count = 0; count < 5'000; ++count)
        thought.add("größer\n");
    EXPECT_LE(thought.text().size(), ThoughtSummary::most);
    EXPECT_TRUE(thought.text().starts_with("größer"));
    thought.add(std::string(2 * ThoughtSummary::most, 'x'));
    EXPECT_EQ(thought.text(), std::string(ThoughtSummary::most, 'x'));
}

} // namespace
} // namespace quorvell
