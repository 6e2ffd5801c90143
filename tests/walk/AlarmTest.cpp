// SPDX-License-Identifier: MIT
// An alarm through the real program and a real sound server: heard at its second, after the program was killed and
// started anew, and silent once it is stopped.
#include "PrivatePulse.h"
#include "ProgramRun.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <csignal>
#include <fstream>
#include <thread>

using namespace quorvell;
using namespace quorvell::walk;
using namespace std::chrono_literals;
using test::PrivatePulse;

namespace {

using Clock = std::chrono::system_clock;

constexpr int recordedHertz = 16000;

/// What the loudspeaker plays from now on, piece by piece as it comes.
class AlarmRecorder {
public:
    explicit AlarmRecorder(const PrivatePulse& pulse)
    {
        m_process.start(QStringLiteral("parecord"),
            {QStringLiteral("-s"), QString::fromStdString(pulse.address()), QStringLiteral("-d"),
                QStringLiteral("speaker.monitor"), QStringLiteral("--rate=16000"), QStringLiteral("--channels=1"),
                QStringLiteral("--format=s16le"), QStringLiteral("--latency-msec=10"), QStringLiteral("--raw")});
        m_process.waitForStarted();
    }
    ~AlarmRecorder()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /// The loudest of the next stretch, 0 to 1; beside it when that was first heard.
    float loudest(std::chrono::milliseconds length, Clock::time_point* heard = nullptr)
    {
        float peak = 0;
        const auto end = Clock::now() + length;
        while (Clock::now() < end) {
            m_process.waitForReadyRead(10);
            const QByteArray bytes = m_process.readAll();
            for (qsizetype index = 0; index + 1 < bytes.size(); index += 2) {
                const int sample = static_cast<std::int16_t>(
                    static_cast<unsigned char>(bytes[index]) | (static_cast<unsigned char>(bytes[index + 1]) << 8));
                const float level = std::abs(static_cast<float>(sample)) / 32768;
                if (level > audible && heard && *heard == Clock::time_point())
                    *heard = Clock::now();
                peak = std::max(peak, level);
            }
        }
        return peak;
    }

    static constexpr float audible = 0.01F;

private:
    QProcess m_process;
};

std::string isoOf(Clock::time_point moment)
{
    const std::time_t seconds = Clock::to_time_t(moment);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S.000Z", std::gmtime(&seconds));
    return text;
}

std::string alarmNote(Clock::time_point moment)
{
    const std::string now = isoOf(Clock::now());
    return "---\nid: \"0123456789ab\"\nkind: \"note\"\ntitle: \"Alarm\"\ncreated: \"" + now + "\"\nupdated: \"" + now
        + "\"\nauthor: \"quorvell\"\norigin: \"conversation\"\nremind_at: \"" + isoOf(moment)
        + "\"\nthen: \"ring\"\n---\n\n";
}

} // namespace

TEST(Alarm, isHeardAtItsSecondAcrossAKillAndARestart)
{
    const PrivatePulse pulse({"module-null-sink sink_name=speaker rate=48000"}, {"speaker"});
    ProgramHome home;
    home.set("PULSE_SERVER", pulse.address());
    home.set("XDG_RUNTIME_DIR", pulse.folder());
    const auto due = std::chrono::ceil<std::chrono::seconds>(Clock::now()) + 5s;
    home.write("data/Quorvell/Notebook/2026-11-21-alarm-0123.md", alarmNote(due));
    AlarmRecorder recorder(pulse);
    {
        RunningProgram killed(home, "agent");
        std::this_thread::sleep_for(1s);
        killed.process().kill();
        killed.process().waitForFinished();
    }
    RunningProgram agent(home, "agent");
    EXPECT_LT(recorder.loudest(std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now()) - 100ms),
        AlarmRecorder::audible);
    Clock::time_point heard;
    const float first = recorder.loudest(2500ms, &heard);
    ASSERT_GT(first, AlarmRecorder::audible);
    RecordProperty(
        "heard_after_ms", static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(heard - due).count()));
    EXPECT_LT(heard - due, 700ms);
    EXPECT_GE(heard - due, -100ms);

    // Killed while it rings, it rings on.
    agent.process().kill();
    agent.process().waitForFinished();
    recorder.loudest(300ms);
    EXPECT_LT(recorder.loudest(1200ms), AlarmRecorder::audible);
    RunningProgram again(home, "agent");
    const float early = recorder.loudest(3s);
    EXPECT_GT(early, AlarmRecorder::audible);
    recorder.loudest(12s);
    EXPECT_GT(recorder.loudest(2s), early * 1.2F); // Louder by then.

    // Stopped by a hand in its file, as by any other program.
    const std::string file = home.notebookFolder() + "/2026-11-21-alarm-0123.md";
    std::string text = home.noteFiles().front();
    text.insert(text.find("then:"), "done_at: \"" + isoOf(Clock::now()) + "\"\n");
    std::ofstream(file) << text;
    recorder.loudest(1500ms); // Changes of the folder are looked at 0.6 s later.
    EXPECT_LT(recorder.loudest(2s), AlarmRecorder::audible);
    EXPECT_EQ(again.exitCodeAfter(SIGTERM), 0);
}
