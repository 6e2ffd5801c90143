// SPDX-License-Identifier: MIT
// Speaks on the device, through the same loudspeaker as the conversation and so without being taken for the user.
#pragma once

#include "Quorvell/loop/GuardedPost.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/ports/SpeechSynthesiser.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <span>
#include <stop_token>
#include <string>
#include <thread>

namespace quorvell {

/// Words become sound on a thread of its own. Main thread.
class DeviceVoice : public SpeechSynthesiser {
public:
    static constexpr std::size_t mostTexts = 32; ///< That wait; further ones are not said.
    static constexpr std::size_t longestText = 4000; ///< Bytes; what is longer is cut off at a space.

    /// `player` must outlive it.
    DeviceVoice(AudioPlayer& player, Scheduler& scheduler, std::string voice = {});
    ~DeviceVoice() override;

    void say(const std::string& text) override;
    /// Silences the loudspeaker too if it is speaking.
    void stop() override;
    bool isSpeaking() const override;

private:
    struct Text {
        std::string words;
        std::uint64_t turn = 0;
        std::stop_token stop{};
    };

    void run(const std::stop_token& stop);
    bool next(const std::stop_token& stop, Text& text);
    void play(std::uint64_t turn, std::span<const std::int16_t> samples);
    void finished(std::uint64_t turn);

    AudioPlayer& m_player;
    std::string m_voice;
    GuardedPost m_post;
    std::uint64_t m_turn = 0; ///< Counts the stops; sound of an earlier turn is dropped.
    std::size_t m_unfinished = 0; ///< Texts that are not yet all sound.
    std::chrono::milliseconds m_end{}; ///< Where on the player's count the last sound ends.
    std::stop_source m_stop; ///< Of this turn.
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Text> m_texts; ///< Guarded by the mutex.
    std::jthread m_thread; ///< Last, so that it ends before what it uses.
};

} // namespace quorvell
