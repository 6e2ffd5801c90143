// Our WebRTC client against a service on another stack, in a process of its own.
#include "Quorvell/connections/OpenAILiveClient.h"
#include "ScriptedServices.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <numbers>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

Bytes tone(double hz, std::chrono::milliseconds length)
{
    Bytes pcm;
    for (int index = 0; index < length.count() * 24; ++index) {
        const auto sample = static_cast<std::int16_t>(8000 * std::sin(2 * std::numbers::pi * hz * index / 24000));
        pcm.push_back(static_cast<std::uint8_t>(sample & 0xFF));
        pcm.push_back(static_cast<std::uint8_t>((sample >> 8) & 0xFF));
    }
    return pcm;
}

double pitchOf(const Bytes& pcm)
{
    int ups = 0;
    std::int16_t before = 0;
    for (std::size_t index = 0; index + 1 < pcm.size(); index += 2) {
        const auto sample = static_cast<std::int16_t>(pcm[index] | (pcm[index + 1] << 8));
        ups += before < 0 && sample >= 0;
        before = sample;
    }
    return pcm.empty() ? 0 : ups * 48000.0 / static_cast<double>(pcm.size());
}

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

    QNetworkAccessManager web;
    RecordingLiveObserver observer;
    HostedAccess source(accessTo(port.trimmed().toUShort()));
    LiveTimeLimits limits;
    limits.disconnection = 500ms;
    OpenAILiveClient client(source, {}, observer, limits, {{OpenAIRoute::Way::peer}, &web});
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

} // namespace
} // namespace quorvell
