// SPDX-License-Identifier: MIT
// Our WebRTC client against a service on another stack, in a process of its own.
#include "Quorvell/connections/openai/OpenAILiveClient.h"
#include "ScriptedServices.h"
#include "Tone.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <csignal>

namespace quorvell {

using namespace std::chrono_literals;

TEST(IndependentPeer, holdsAConversationWithUsAndIsMissedWhenItFallsSilent)
{
    needQtApplication();
    QProcess service;
    // The distribution's own interpreter: its bindings belong to no other.
    service.start(
        QStringLiteral("/usr/bin/python3"), {QStringLiteral(QUORVELL_FIXTURES "/../peers/webrtc_answerer.py")});
    QByteArray port;
    ASSERT_TRUE(runUntil([&] { return (port += service.readLine()).endsWith('\n'); }, 15s))
        << service.readAllStandardError().toStdString();

    RecordingLiveObserver observer;
    HostedAccess source(accessTo(port.trimmed().toUShort()));
    LiveTimeLimits limits;
    limits.disconnection = 500ms;
    ServiceExperience experience;
    OpenAILiveClient client(source, {}, observer, experience, limits, {{OpenAIRoute::Way::peer}});
    client.open({});
    ASSERT_TRUE(
        runUntil([&] { return !observer.all<live_event::SetupComplete>().empty() || observer.closings > 0; }, 20s));
    ASSERT_EQ(observer.closings, 0) << observer.closure->sentence << service.readAllStandardError().toStdString();

    const auto soundSoFar = [&] {
        Bytes all;
        for (const live_event::Audio& sound : observer.all<live_event::Audio>())
            all.insert(all.end(), sound.pcm.begin(), sound.pcm.end());
        return all;
    };
    client.sendAudio(tone(440, 2000ms));
    ASSERT_TRUE(runUntil([&] { return soundSoFar().size() > 60000; }, 10s)) << "its tone";
    const Bytes all = soundSoFar();
    EXPECT_NEAR(pitchOf(Bytes(all.end() - 36000, all.end())), 660, 10);

    client.requestAnswer();
    ASSERT_TRUE(runUntil([&] { return !observer.written.empty(); }));
    int heard = 0;
    ASSERT_EQ(std::sscanf(observer.written[0].c_str(), "heard %d Hz", &heard), 1);
    EXPECT_NEAR(heard, 440, 10);

    // Frozen, it says no good-bye; only its silence tells.
    ::kill(static_cast<pid_t>(service.processId()), SIGSTOP);
    EXPECT_TRUE(runUntil([&] { return observer.closings > 0; }, 12s));
    EXPECT_NE(observer.closure->sentence.find("gone silent"), std::string::npos) << observer.closure->sentence;
    service.kill();
    service.waitForFinished();
}

} // namespace quorvell
