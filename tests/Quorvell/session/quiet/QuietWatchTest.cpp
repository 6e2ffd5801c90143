// SPDX-License-Identifier: MIT
// When a conversation is quiet, rests and ends, and when it has a moment for what the program has to tell.
#include "Quorvell/session/quiet/QuietWatch.h"

#include "Quorvell/session/quiet/Announcements.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Verdict = IdleRules::Verdict;

QuietFacts listening()
{
    QuietFacts facts;
    facts.isConnected = facts.isListening = facts.canRest = true;
    return facts;
}

struct QuietWatchTest : testing::Test {
    /// At which second the verdict is first another one than to go on.
    std::pair<int, Verdict> endOfQuiet(const QuietFacts& facts)
    {
        for (int second = 1; second <= 700; ++second) {
            scheduler.advance(1s);
            if (const Verdict verdict = watch.verdict(facts); verdict != Verdict::goOn)
                return {second, verdict};
        }
        return {0, Verdict::goOn};
    }

    VirtualScheduler scheduler;
    WrittenLog log;
    int looks = 0;
    QuietWatch watch{{scheduler, log, [this] { ++looks; }}, {}};
};

TEST_F(QuietWatchTest, whatGoesOnDecidesWhetherItRestsOrEnds)
{
    struct Row {
        const char* name;
        bool QuietFacts::*fact; ///< Turned round from what it is for somebody who is listened to.
        std::pair<int, Verdict> end;
    };
    const Row rows[] = {
        {"a turn", &QuietFacts::isTurnOpen, {121, Verdict::stop}},
        {"a voice", &QuietFacts::isVoiceSounding, {121, Verdict::stop}},
        {"the user", &QuietFacts::isUserSpeaking, {121, Verdict::stop}},
        {"words to come", &QuietFacts::areWordsAwaited, {121, Verdict::stop}},
        {"a tool", &QuietFacts::isToolRunning, {121, Verdict::stop}},
        {"a consent", &QuietFacts::isConsentPending, {121, Verdict::stop}},
        {"a message", &QuietFacts::isMessageWaiting, {121, Verdict::stop}},
        {"no line", &QuietFacts::isConnected, {121, Verdict::stop}},
        {"no recogniser", &QuietFacts::canRest, {121, Verdict::stop}},
        {"something highlighted", &QuietFacts::isHighlighted, {241, Verdict::stop}},
        {"nobody listens", &QuietFacts::isListening, {601, Verdict::stop}},
        {"an action", &QuietFacts::isActing, {0, Verdict::goOn}},
        {"the device speaks", &QuietFacts::isDeviceSpeaking, {0, Verdict::goOn}},
    };
    watch.noteActivity();
    EXPECT_EQ(endOfQuiet(listening()), std::pair(16, Verdict::rest));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QuietFacts facts = listening();
        facts.*row.fact = !(facts.*row.fact);
        watch.noteActivity();
        EXPECT_EQ(endOfQuiet(facts), row.end);
        EXPECT_EQ(watch.reason(facts),
            facts.isHighlighted ? "quiet for a while with something highlighted" : "quiet for a while");
    }
    QuietFacts facts = listening();
    watch.noteActivity();
    watch.postpone(10s);
    EXPECT_EQ(endOfQuiet(facts), std::pair(26, Verdict::rest));
    facts.doze = Doze::waking;
    EXPECT_EQ(endOfQuiet(facts).second, Verdict::goOn);
    facts.doze = Doze::dozing;
    watch.noteActivity();
    EXPECT_EQ(endOfQuiet(facts), std::pair(301, Verdict::stop));
    EXPECT_EQ(watch.reason(facts), "quiet for a while, resting");
}

TEST_F(QuietWatchTest, looksEverySecondUntilTheEnd)
{
    watch.begin();
    watch.noteConsent(QuietWatch::Consent::pending);
    bool isThere = true;
    watch.showTarget("button", [&] { return isThere; });
    scheduler.advance(3s);
    EXPECT_EQ(looks, 3);
    EXPECT_EQ(watch.sinceLastLook(), 2s) << "the computer slept, or did not look";
    scheduler.advance(1s);
    EXPECT_EQ(watch.sinceLastLook(), 1s);
    EXPECT_TRUE(watch.isHighlighted());
    isThere = false;
    scheduler.advance(1s);
    EXPECT_FALSE(watch.isHighlighted());
    EXPECT_TRUE(log.has("target_gone"));
    watch.showTarget("button", nullptr);
    watch.end();
    EXPECT_FALSE(watch.isHighlighted() || watch.isConsentPending());
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
}

TEST(Announcements, waitForAMomentAndAfterPatienceOnlyForSpeech)
{
    struct Row {
        const char* name;
        bool QuietFacts::*fact;
        bool isDueSoon;
        bool isDueLater;
    };
    const Row rows[] = {
        {"quiet", &QuietFacts::isConnected, true, true},
        {"a turn is open", &QuietFacts::isTurnOpen, false, true},
        {"a tool runs", &QuietFacts::isToolRunning, false, true},
        {"the voice sounds", &QuietFacts::isVoiceSounding, false, false},
        {"the user speaks", &QuietFacts::isUserSpeaking, false, false},
    };
    Announcements announcements;
    EXPECT_FALSE(announcements.isDue(listening(), 1h));
    for (std::size_t count = 0; count <= Announcements::most; ++count)
        announcements.add(std::to_string(count), SessionTime(count));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QuietFacts facts = listening();
        facts.*row.fact = true;
        EXPECT_EQ(announcements.isDue(facts, 30s), row.isDueSoon);
        EXPECT_EQ(announcements.isDue(facts, 31s), row.isDueLater);
        facts.isConnected = false;
        EXPECT_FALSE(announcements.isDue(facts, 31s));
    }
    const auto told = announcements.take();
    ASSERT_EQ(told.size(), Announcements::most);
    EXPECT_EQ(told.front(), "1");
    EXPECT_TRUE(announcements.isEmpty());
}

} // namespace
} // namespace quorvell
