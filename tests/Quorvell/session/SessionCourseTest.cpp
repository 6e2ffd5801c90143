// SPDX-License-Identifier: MIT
// Catches requests that are lost or run twice when connections are lost, mended and replaced, and rests that begin, end
// or wake wrongly. tests/fixtures/session tells the conversations, and what came of each step.
#include "FixtureTable.h"
#include "SessionBench.h"

#include <map>

namespace quorvell {
namespace {

/// One conversation, line by line.
class SessionCourse : public SessionBench {
public:
    SessionCourse() { own({"keep_note", "click", "execute_connected_tool"}); }
    Lines play(const std::string& line)
    {
        const auto [verb, rest] = test::verbAndRest(line);
        const auto found = verbs.find(verb);
        if (found == verbs.end())
            return {"?"};
        m_told.clear();
        found->second(*this, rest);
        return news();
    }

private:
    using Verb = void (*)(SessionCourse&, const std::string&);
    static const std::map<std::string, Verb> verbs;

    void TestBody() override { }

    /// "600ms", "15s", "2min", "1h"
    static std::chrono::milliseconds time(const std::string& text)
    {
        std::size_t end = 0;
        const int count = std::stoi(text, &end);
        const std::string unit = text.substr(end);
        return unit == "ms" ? std::chrono::milliseconds(count)
            : unit == "s"   ? std::chrono::seconds(count)
            : unit == "min" ? std::chrono::minutes(count)
                            : std::chrono::hours(count);
    }
    static std::pair<std::string, std::string> parted(const std::string& text)
    {
        const std::size_t bar = text.find(" | ");
        return {text.substr(0, bar), text.substr(bar + 3)};
    }
    void tell(const std::string& what) { m_told.push_back(what); }
    void tellState()
    {
        constexpr const char* phases[] = {"idle", "connecting", "active"};
        constexpr const char* dozes[] = {"awake", "dozing", "waking"};
        const SessionUsage usage = controller->usage();
        tell(std::string(phases[static_cast<int>(controller->phase())]) + ", "
            + dozes[static_cast<int>(controller->doze())]
            + "; connections: " + std::to_string(FakeLiveConnection::living.size()) + " alive, "
            + std::to_string(usage.reconnections) + " mended, " + std::to_string(usage.rotations) + " replaced, "
            + std::to_string(usage.prepared) + " prepared; rests: " + std::to_string(usage.dozes)
            + "; timers: " + std::to_string(scheduler.pendingTimers()));
    }
    void tellDevice()
    {
        tell(std::string(dozeListener.isListening() ? "listens" : "does not listen") + ", "
            + (dozeListener.bytes > 0 ? "was given sound" : "was given nothing") + ", microphone "
            + (capture.isOpen() ? "open" : "closed") + ", said \"" + synthesiser.said.substr(0, 26) + "\"");
    }
    void tellUsed()
    {
        tell(std::to_string(std::lround(controller->usage().connectedSeconds)) + " s connected, "
            + std::to_string(std::lround(controller->usage().billedSeconds)) + " s billed");
    }
    void tellHistory()
    {
        std::string all;
        for (const LiveHistoryEntry& entry : wire->setup.history)
            all += (all.empty() ? "" : " / ") + entry.role + ": " + entry.text;
        tell("history: " + (all.empty() ? "none" : all));
    }
    void exchange(const std::string& question, const std::string& answer)
    {
        wire->report(live_event::InputTranscript{question});
        hearAssistant(answer, 1s);
        wire->report(live_event::BackendIdle{});
        scheduler.advance(2s);
    }
    /// What the user was shown, what went over the line, and what else changed since the last line.
    Lines news()
    {
        Lines all = saidSince();
        const auto note = [&](int now, int& known, const char* what) {
            if (std::exchange(known, now) != now)
                all.push_back(what + std::to_string(now));
        };
        if (std::exchange(m_connections, connectionsMade) != connectionsMade) {
            all.push_back("connection " + std::to_string(connectionsMade));
            m_chunks = 0;
        }
        if (wire.isThere()) {
            for (const std::string& sent : sentSince())
                all.push_back("sends " + shown(sent));
            note(wire->audioChunks, m_chunks, "sends sound, chunks: ");
        }
        all.insert(all.end(), m_told.begin(), m_told.end());
        return all;
    }
    static std::string shown(const std::string& sent)
    {
        constexpr std::size_t most = 140;
        if (sent.starts_with("open"))
            return sent.substr(0, sent.find(" click"));
        return sent.size() > most ? sent.substr(0, most) + "..." : sent;
    }

    Lines m_told;
    int m_connections = 0;
    int m_chunks = 0;
};

using Text = const std::string&;
using Course = SessionCourse&;

const std::map<std::string, SessionCourse::Verb> SessionCourse::verbs{
    // The conversation: one that rests when it is quiet, one that does not, one that is not connected yet.
    {"begin", [](Course it, Text) { it.makeActive(); }},
    {"beginAwake",
        [](Course it, Text) {
            SessionSettings settings;
            settings.restsWhenQuiet = false;
            it.makeActive(settings);
        }},
    {"make", [](Course it, Text) { it.make(); }},
    {"beginAgain", [](Course it, Text) { it.controller->begin(); }},
    {"stop", [](Course it, Text reason) { it.controller->stop(reason); }},
    {"gone", [](Course it, Text) { it.controller.reset(); }},
    {"wait", [](Course it, Text length) { it.scheduler.advance(time(length)); }},
    {"sleep", [](Course it, Text length) { it.scheduler.sleep(time(length)); }},
    {"jitter", [](Course it, Text share) { it.jitter = std::stod(share); }},
    // The user.
    {"types", [](Course it, Text words) { it.type(words); }},
    {"typesSilently",
        [](Course it, Text words) {
            it.controller->submitTyped({{{words}}, false});
        }},
    {"speaks", [](Course it, Text) { it.speak(); }},
    {"sound", [](Course it, Text length) { it.sound(time(length), 12000); }},
    {"silence", [](Course it, Text length) { it.silence(time(length)); }},
    {"mutes", [](Course it, Text) { it.controller->setMuted(Ear::Muting::muted); }},
    // The program.
    {"sends", [](Course it, Text text) { it.controller->send({.text = text}); }},
    {"highlights", [](Course it, Text) { it.controller->showTarget("button", [] { return true; }); }},
    {"highlightsBriefly", [](Course it, Text) { it.controller->showTarget("button", [] { return false; }); }},
    {"asksConsent", [](Course it, Text) { it.controller->noteConsent(SessionController::Consent::pending); }},
    {"toolAnswers",
        [](Course it, Text) {
            it.replies.back().answer({{"status", "kept"}});
        }},
    {"deviceSpeaks", [](Course it, Text) { it.synthesiser.isSaying = true; }},
    {"deviceIsDone", [](Course it, Text) { it.synthesiser.isSaying = false; }},
    // The ear of the device, at rest.
    {"onset", [](Course it, Text) { it.dozeListener.noticeOnset(); }},
    {"wakes", [](Course it, Text words) { it.dozeListener.hear(words); }},
    {"earFails", [](Course it, Text sentence) { it.dozeListener.fail(sentence); }},
    // The service, over the newest connection; "old", over the one before.
    {"ready", [](Course it, Text) { it.becomeReady(); }},
    {"hears", [](Course it, Text words) { it.wire->report(live_event::InputTranscript{words}); }},
    {"oldHears", [](Course it, Text words) { it.before->report(live_event::InputTranscript{words}); }},
    {"says",
        [](Course it, Text text) {
            const auto [length, words] = test::verbAndRest(text);
            it.hearAssistant(words, time(length));
        }},
    {"idle", [](Course it, Text) { it.wire->report(live_event::BackendIdle{}); }},
    {"exchange",
        [](Course it, Text text) {
            const auto [question, answer] = parted(text);
            it.exchange(question, answer);
        }},
    {"calls", [](Course it, Text tool) { it.callTool("c1", tool); }},
    {"goesAway", [](Course it, Text) { it.wire->report(live_event::GoAway{10s}); }},
    {"isFull", [](Course it, Text) { it.wire->report(live_event::ContextUsage{0.9}); }},
    {"handle", [](Course it, Text name) { it.wire->report(live_event::ResumptionHandle{name}); }},
    {"bills", [](Course it, Text seconds) { it.wire->report(live_event::BilledSeconds{std::stod(seconds)}); }},
    {"notes",
        [](Course it, Text event) {
            it.wire->report(live_event::Diagnostic{event, {}});
        }},
    {"loses", [](Course it, Text) { it.lose(); }},
    {"closes", [](Course it, Text) { it.wire->closeWith({}); }},
    {"oldCloses", [](Course it, Text) { it.before->closeWith({.code = 1008, .reason = "limit"}); }},
    {"refuses",
        [](Course it, Text) {
            it.wire->closeWith({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
        }},
    {"isBusy",
        [](Course it, Text wait) { it.wire->closeWith({.code = 503, .sentence = "Busy.", .retryAfter = time(wait)}); }},
    // What cannot be seen from outside.
    {"state", [](Course it, Text) { it.tellState(); }},
    {"device", [](Course it, Text) { it.tellDevice(); }},
    {"history", [](Course it, Text) { it.tellHistory(); }},
    {"used", [](Course it, Text) { it.tellUsed(); }},
    {"old", [](Course it, Text) { it.tell("the old one was last sent " + lastOf(it.before->sent)); }},
    {"logged", [](Course it, Text event) { it.tell(it.log.has(event) ? "yes" : "no"); }},
};

TEST(SessionCourse, isAsItWasTold)
{
    for (const char* fixture : {"session/connections.txt", "session/rest.txt"})
        test::playFixture(fixture,
            [] { return [course = std::make_unique<SessionCourse>()](Text line) { return course->play(line); }; });
}

TEST(SessionCourse, replacesAConnectionAtItsAge)
{
    SessionCourse course;
    course.play("beginAwake");
    course.play("mutes");
    for (int minute = 0; minute < 25; ++minute) {
        course.play("wait 1min");
        course.play("exchange and | Yes.");
    }
    EXPECT_EQ(course.connectionsMade, 2);
}

TEST(SessionCourse, opensFewConnectionsForNoiseAtRest)
{
    SessionCourse course;
    for (const char* line : {"begin", "wait 16s", "closes"})
        course.play(line);
    for (int count = 0; count < 40; ++count) {
        const int made = course.connectionsMade;
        course.play("onset");
        course.play("wait 16s");
        if (course.connectionsMade > made)
            course.play("closes");
    }
    EXPECT_EQ(course.connectionsMade, 1 + SessionLimits{}.preparedPerHour);
    for (int minute = 0; minute < 50; ++minute) {
        course.play("wait 1min");
        course.play("onset");
    }
    EXPECT_GT(course.connectionsMade, 1 + SessionLimits{}.preparedPerHour);
    for (const char* line : {"stop enough", "closes", "wait 0s"})
        course.play(line);
    EXPECT_EQ(course.scheduler.pendingTimers(), 0U);
    EXPECT_EQ(FakeLiveConnection::living.size(), 0U);
}

} // namespace
} // namespace quorvell
