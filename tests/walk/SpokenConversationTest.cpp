// SPDX-License-Identifier: MIT
// A spoken conversation through the real program and a real sound server, whose devices come and go meanwhile.
#include "PrivatePulse.h"
#include "ProgramRun.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

using namespace quorvell;
using namespace quorvell::walk;
using test::PrivatePulse;

namespace {

const std::string speaker = "module-null-sink sink_name=speaker rate=48000";
const std::string otherSpeaker = "module-null-sink sink_name=other rate=48000";
const std::string room = "module-null-sink sink_name=room rate=48000";
const std::string microphone = "module-remap-source source_name=microphone master=room.monitor";

/// What one loudspeaker plays from now on.
class Recorder {
public:
    Recorder(const PrivatePulse& pulse, const std::string& device)
        : m_file(QString::fromStdString(pulse.folder() + "/played.raw"))
    {
        m_process.setStandardOutputFile(m_file);
        m_process.start(QStringLiteral("parecord"),
            {QStringLiteral("-s"), QString::fromStdString(pulse.address()), QStringLiteral("-d"),
                QString::fromStdString(device + ".monitor"), QStringLiteral("--rate=16000"),
                QStringLiteral("--channels=1"), QStringLiteral("--raw")});
        m_process.waitForStarted();
    }

    void stop()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// What a recogniser of speech hears in it. Takes seconds.
    std::string words() const
    {
        QProcess recogniser;
        recogniser.start(QStringLiteral("pocketsphinx_continuous"),
            {QStringLiteral("-infile"), m_file, QStringLiteral("-logfn"), QStringLiteral("/dev/null")});
        recogniser.waitForFinished(60000);
        return recogniser.readAllStandardOutput().toStdString();
    }

private:
    QString m_file;
    QProcess m_process;
};

void say(const PrivatePulse& pulse, const char* words)
{
    const QString file = QString::fromStdString(pulse.folder() + "/words.wav");
    QProcess::execute(QStringLiteral("flite"),
        {QStringLiteral("-voice"), QStringLiteral("slt"), QStringLiteral("-t"), QString::fromUtf8(words),
            QStringLiteral("-o"), file});
    EXPECT_EQ(QProcess::execute(QStringLiteral("paplay"),
                  {QStringLiteral("-s"), QString::fromStdString(pulse.address()), QStringLiteral("-d"),
                      QStringLiteral("room"), file}),
        0);
}

} // namespace

TEST(SpokenConversation, goesOnWhileDevicesComeAndGo)
{
    const PrivatePulse pulse({speaker, otherSpeaker, room}, {"speaker", "other", "room"});
    const std::string plugged = pulse.load(microphone);
    pulse.control("set-default-source microphone");
    pulse.control("set-default-sink speaker");
    ProgramHome home;
    home.set("PULSE_SERVER", pulse.address());
    home.write("data/Quorvell/Notebook/Call the dentist.md",
        "---\nid: \"aaaaaaaaaaaa\"\nkind: \"note\"\ntitle: \"Call the dentist\"\n"
        "remind_at: \"2090-11-24T16:00:00.000Z\"\n---\n");
    RunningProgram talk(home, "talk --json");
    ASSERT_TRUE(talk.shows(R"("event":"reply")")) << talk.output(); // The greeting.
    say(pulse, "What are my reminders?");
    ASSERT_TRUE(talk.shows("tool_result")) << talk.output();

    // In the middle of the answer another loudspeaker is chosen and the microphone is pulled out.
    Recorder atOther(pulse, "other");
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    pulse.control("set-default-sink other");
    pulse.unload(plugged);
    EXPECT_TRUE(talk.shows("no microphone is connected")) << talk.output();
    EXPECT_TRUE(talk.shows(R"("event":"reply")")) << talk.output();
    atOther.stop();

    pulse.load(microphone);
    pulse.control("set-default-source microphone");
    say(pulse, "What is on tomorrow?");
    EXPECT_TRUE(talk.shows("whats_on")) << talk.output();
    EXPECT_EQ(talk.exitCodeAfter(SIGTERM), 0); // Ctrl+C would first cut the answer short.
    const std::string rest = atOther.words();
    EXPECT_NE(rest.find("november"), std::string::npos) << rest;
}

TEST(SpokenConversation, saysThatThereIsNoMicrophone)
{
    for (const auto server : {PrivatePulse::Server::pulseAudio, PrivatePulse::Server::pipeWire}) {
        const PrivatePulse pulse({speaker}, {}, server);
        pulse.control("info");
        ProgramHome home;
        home.set("PULSE_SERVER", pulse.address());
        const Outcome outcome = home.run("talk");
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.errors,
            "No microphone is connected. Connect one and start again. `quorvell chat` is for typing.\n");
    }
}
