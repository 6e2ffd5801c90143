// SPDX-License-Identifier: MIT
// Whoever the session calls may report at once, from inside the call: the session hears of it afterwards, in order.
#include "SessionBench.h"

namespace quorvell {
namespace {

class SessionReentryTest : public SessionBench {
protected:
    /// Reports once, from inside the first call that begins with `call`. Nobody hears of it before that has returned.
    void reportDuring(const std::string& call, std::function<void(FakeLiveConnection&)> reports)
    {
        during = [this, call, reports = std::move(reports)](FakeLiveConnection& line, const std::string& made) {
            if (!made.starts_with(call) || std::exchange(hasReported, true))
                return;
            const Lines heardBefore = observer.lines;
            const SessionPhase phase = controller->phase();
            reports(line);
            EXPECT_EQ(observer.lines, heardBefore);
            EXPECT_EQ(controller->phase(), phase);
        };
    }
    bool hasReported = false;
};

TEST_F(SessionReentryTest, hearsOfWhatALineReportsOnceItsOwnCallHasReturned)
{
    const auto closes = [](FakeLiveConnection& line) { line.closeWith({.code = 1006, .reason = "gone"}); };
    const auto calls = [](FakeLiveConnection& line) {
        line.report(live_event::ToolCall{{{"c1", "keep_note", Json::object()}}});
    };
    struct Row {
        const char* name;
        const char* call; ///< In which the line reports
        std::function<void(FakeLiveConnection&)> reports; ///< this,
        std::function<void()> led; ///< and what made the session call it.
        Lines said;
    };
    const auto typed = [this] { type("hi"); };
    const Row rows[] = {
        {"closes as it is written to", "message", closes, typed, {"typed: hi", "reconnecting"}},
        {"calls a tool as it is written to", "message", calls, typed,
            {"typed: hi", "call keep_note", R"(result {"status":"kept"})"}},
        {"calls a tool and closes", "message",
            [=](FakeLiveConnection& line) {
                calls(line);
                closes(line);
            },
            typed, {"typed: hi", "call keep_note", R"(result {"status":"kept"})", "reconnecting"}},
        {"closes as it is given sound", "audio", closes, [this] { speak(); }, {"reconnecting"}},
        {"closes as it is given a result", "tool", closes, [this] { callTool("c1", "keep_note"); },
            {"call keep_note", R"(result {"status":"kept"})", "reconnecting"}},
        {"is closed at once when told to", "close", closes, [this] { controller->stop("enough"); },
            {"idle", "ended enough"}},
        {"is closed at once for a rest", "close", closes, [this] { scheduler.advance(16s); }, {"dozing"}},
    };
    registry.add("keep_note", [](const LiveFunctionCall&, ToolReply reply) { // Answers from inside the call, too.
        reply.answer({{"status", "kept"}});
    });
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        hasReported = false;
        reportDuring(row.call, row.reports);
        makeActive();
        row.led();
        EXPECT_TRUE(hasReported);
        EXPECT_EQ(saidSince(), row.said);
        during = nullptr;
        scheduler.advance(600ms);
        if (controller->phase() == SessionPhase::active && controller->doze() == Doze::awake)
            becomeReady();
        controller->stop("enough");
        if (!FakeLiveConnection::living.empty())
            wire->closeWith({});
        scheduler.settle();
        EXPECT_EQ(controller->phase(), SessionPhase::idle);
        EXPECT_EQ(FakeLiveConnection::living.size(), 0U);
        EXPECT_EQ(scheduler.pendingTimers(), 0U);
    }
}

TEST_F(SessionReentryTest, wakesOnWordsThatAreHeardWhileItGoesToRest)
{
    makeActive();
    dozeListener.during = [this] {
        dozeListener.noticeOnset();
        dozeListener.hear("what time is it");
    };
    scheduler.advance(16s);
    becomeReady();
    EXPECT_TRUE(lastSent().starts_with("message [Quorvell app event] They just said: “what time is it”."));
    EXPECT_EQ(saidSince(), (Lines{"dozing", "spoken: what time is it", "waking", "awake"}));
}

} // namespace
} // namespace quorvell
