// SPDX-License-Identifier: MIT
// What is around a session, whole or in parts: a clock that the test moves, devices and a line that are made up.
#pragma once

#include "FakeDevices.h"
#include "FakeLiveConnection.h"
#include "Quorvell/session/hearing/MicrophoneStream.h"
#include "Quorvell/session/tools/ToolDispatcher.h"
#include "RecordingObserver.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <span>
#include <utility>

namespace quorvell {

using namespace std::chrono_literals;

struct SessionSurroundings : testing::Test {
    using Lines = std::vector<std::string>;

    /// Where the microphone's sound goes.
    virtual void captured(std::span<const std::uint8_t> pcm) = 0;

    /// A tone loud enough for speech, or silence, at the pace of the clock.
    void sound(std::chrono::milliseconds length, double loudness)
    {
        Bytes chunk(MicrophoneStream::chunkBytes);
        for (std::size_t index = 0; index < chunk.size() / 2; ++index) {
            const auto sample = static_cast<std::int16_t>(loudness * std::sin(static_cast<double>(index) / 10));
            chunk[2 * index] = static_cast<std::uint8_t>(sample & 0xFF);
            chunk[2 * index + 1] = static_cast<std::uint8_t>((sample >> 8) & 0xFF);
        }
        for (; length > 0ms; length -= MicrophoneStream::chunkLength) {
            captured(chunk);
            scheduler.advance(MicrophoneStream::chunkLength);
        }
    }
    void silence(std::chrono::milliseconds length) { sound(length, 0); }
    /// One second of silence before, so that the gate knows the room, and one after, so that it closes.
    void speak(std::chrono::milliseconds length = 520ms)
    {
        silence(1s);
        sound(length, 12000);
        silence(1s);
    }
    Lines saidSince() { return std::exchange(observer.lines, {}); }
    /// What was sent over the newest connection since this was asked last.
    Lines sentSince() { return std::exchange(wire->sent, {}); }

    VirtualScheduler scheduler;
    FakePlayer player{scheduler};
    FakeCapture capture;
    FakeSynthesiser synthesiser;
    WrittenLog log;
    RecordingObserver observer;
    ToolRegistry registry;
    ToolDispatcher tools{registry};
    FakeLine wire; ///< The newest connection.
};

} // namespace quorvell
