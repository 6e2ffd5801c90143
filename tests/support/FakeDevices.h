// SPDX-License-Identifier: MIT
// Loudspeaker, microphone, ear and voice of the device, as a test wants them to be.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/session/ports/SpeechSynthesiser.h"
#include "Quorvell/session/ports/UsageStore.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

namespace quorvell {

/// Plays on the test's clock: one second of sound lasts one second.
class FakePlayer : public AudioPlayer {
public:
    explicit FakePlayer(const Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }
    void play(std::span<const std::uint8_t> pcm) override
    {
        const std::chrono::milliseconds length(pcm.size() / 48);
        m_end = std::max(m_end, m_scheduler.now()) + length;
        m_given += length;
    }
    void stop() override
    {
        m_given -= unplayed();
        m_end = m_scheduler.now();
        ++stops;
    }
    std::chrono::milliseconds unplayed() const override
    {
        return std::max(m_end - m_scheduler.now(), std::chrono::milliseconds(0));
    }
    std::chrono::milliseconds played() const override { return m_given - unplayed(); }

    int stops = 0;

private:
    const Scheduler& m_scheduler;
    SessionTime m_end{};
    std::chrono::milliseconds m_given{};
};

class FakeCapture : public AudioCapture {
public:
    void open() override { m_isOpen = true; }
    void close() override { m_isOpen = false; }
    bool isOpen() const override { return m_isOpen; }

private:
    bool m_isOpen = false;
};

class FakeDozeListener : public DozeListener {
public:
    void start(Reports wanted) override
    {
        reports = std::move(wanted);
        if (during)
            during();
    }
    void captured(std::span<const std::uint8_t> pcm) override { bytes += pcm.size(); }
    void stop() override { reports = {}; }
    bool isListening() const { return reports.heard != nullptr; }

    // Copies: what they lead to may stop the listener.
    void noticeOnset() { Reports(reports).onset(); }
    void hear(const std::string& words) { Reports(reports).heard(words); }
    void fail(const std::string& sentence) { Reports(reports).failed(sentence); }

    Reports reports;
    std::function<void()> during; ///< Runs inside `start`.
    std::size_t bytes = 0;
};

class FakeSynthesiser : public SpeechSynthesiser {
public:
    void say(const std::string& text) override
    {
        said += text;
        isSaying = true;
    }
    void stop() override { isSaying = false; }
    bool isSpeaking() const override { return isSaying; }

    std::string said;
    bool isSaying = false;
};

class FakeUsageStore : public UsageStore {
public:
    double secondsToday() const override { return seconds; }
    void addSeconds(double more) override { seconds += more; }

    double seconds = 0;
};

} // namespace quorvell
