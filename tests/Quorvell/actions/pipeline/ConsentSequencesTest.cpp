// SPDX-License-Identifier: MIT
// In whatever order things happen, an action that needs a yes runs at most once, and only after its own.
#include "ActionBench.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace quorvell {

namespace {

enum class Happening {
    question,
    yes,
    no,
    lateYes,
    doubleYes,
    bargeIn,
    screenChange,
    cancel,
    stop,
    modeChange,
};
constexpr int happenings = 10;

/// The model tries to carry it out after everything that happens. What is to come of it is worked out beside it, from
/// the promises alone.
class Sequence {
public:
    Sequence()
    {
        m_bench.screen.duration = std::chrono::milliseconds(0);
        m_bench.screen.add("AXButton", "Send");
        m_bench.screen.add("AXButton", "Close");
        // What is done shows, or it would be taken for going in circles.
        m_bench.screen.effect = [this](const ScreenAction&) {
            m_bench.screen.look_.observation.candidates[1].value += "sent ";
            return ScreenOutcome{};
        };
    }

    /// False as soon as more or less was done than is right.
    bool happens(Happening what)
    {
        bring(what);
        confirm();
        return m_bench.screen.acts.size() == m_due && m_bench.screen.wasForLatestLook;
    }

private:
    bool isThere() { return m_bench.screen.look_.observation.candidates[0].label == "Send"; }

    void bring(Happening what)
    {
        switch (what) {
        case Happening::question:
            m_bench.look();
            m_bench.press("Send");
            if (isThere()) {
                m_bench.consent.assistantSaid(ActionBench::question("Send"));
                m_isAsked = true;
            }
            return;
        case Happening::yes:
            return say("yes");
        case Happening::no:
            say("no");
            return;
        case Happening::lateYes:
            m_bench.scheduler.advance(PendingAction::longestWait + std::chrono::minutes(1));
            m_isAsked = false;
            return say("yes");
        case Happening::doubleYes:
            say("yes");
            confirm();
            return say("yes");
        case Happening::bargeIn:
            m_bench.watch.userBargedIn();
            m_isAsked = false;
            return;
        case Happening::screenChange:
            m_bench.screen.look_.observation.candidates[0].label = isThere() ? "Send to all" : "Send";
            return;
        case Happening::cancel:
            m_bench.gate.cancel();
            return;
        case Happening::stop:
            m_bench.watch.stopped();
            m_isAsked = false;
            return;
        case Happening::modeChange:
            m_mode = m_mode == HelpMode::do_ ? HelpMode::auto_ : HelpMode::do_;
            m_bench.watch.modeChanged(m_mode);
            m_isAsked = false;
            return;
        }
    }
    void say(const std::string& words)
    {
        m_bench.type(words);
        if (m_isAsked && words == "yes" && isThere())
            ++m_due;
        m_isAsked = false; // Whatever they answered, it is used up by the attempt that follows.
    }
    void confirm()
    {
        m_bench.pipeline.confirm("confirm", [](const auto&) {});
        m_bench.scheduler.settle();
    }

    ActionBench m_bench;
    HelpMode m_mode = HelpMode::do_;
    bool m_isAsked = false;
    std::size_t m_due = 0;
};

std::string nameOfSequence(const std::vector<Happening>& sequence)
{
    constexpr std::array<const char*, happenings> names = {"question", "yes", "no", "late yes", "double yes",
        "barge-in", "screen change", "cancel", "stop", "mode change"};
    std::string name;
    for (const Happening what : sequence)
        name += std::string(names[static_cast<std::size_t>(what)]) + ", ";
    return name;
}

/// All continuations of `start` by `more` happenings.
int tryAll(const std::vector<Happening>& start, int more)
{
    int count = 1;
    for (int index = 0; index < more; ++index)
        count *= happenings;
    for (int number = 0; number < count; ++number) {
        std::vector<Happening> sequence = start;
        for (int index = 0, rest = number; index < more; ++index, rest /= happenings)
            sequence.push_back(static_cast<Happening>(rest % happenings));
        Sequence run;
        for (const Happening what : sequence)
            if (!run.happens(what)) {
                ADD_FAILURE() << nameOfSequence(sequence);
                return number;
            }
    }
    return count;
}

} // namespace

// Six at a time take seconds; a sanitizer's build looks at five.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int isSlow = 1;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr int isSlow = 1;
#else
constexpr int isSlow = 0;
#endif
#else
constexpr int isSlow = 0;
#endif

TEST(ActionPipeline, runsOnceAfterItsOwnYesInEveryOrder)
{
    EXPECT_EQ(tryAll({}, 4), 10'000);
    for (const Happening second : {Happening::question, Happening::yes, Happening::no, Happening::lateYes})
        tryAll({Happening::question, second}, 4 - isSlow);
}

/// The rest of those of six that begin with a question: ctest runs them beside the ones above.
TEST(ActionPipeline, runsOnceAfterItsOwnYesInEveryOtherOrder)
{
    for (const Happening second : {Happening::doubleYes, Happening::bargeIn, Happening::screenChange, Happening::cancel,
             Happening::stop, Happening::modeChange})
        tryAll({Happening::question, second}, 4 - isSlow);
}

} // namespace quorvell
