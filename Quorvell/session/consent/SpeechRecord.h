// SPDX-License-Identifier: MIT
// When the user was heard speaking and when our own voice sounded, so that words that a service reports can be told
// from words that nobody said.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "QuorvellCore/safety/HeardUtterance.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>

namespace quorvell {

/// Words come in the order in which they were spoken, and one stretch of speech stands for one utterance. Main thread;
/// the player is borrowed.
class SpeechRecord {
public:
    /// After so long without words a stretch of speech was a noise, if there was another since.
    static constexpr std::chrono::milliseconds recognition{3'000};
    /// Of a slow service; who waits for longer says it again.
    static constexpr std::chrono::milliseconds slowestRecognition{10'000};
    /// What it takes to notice that somebody speaks: two chunks of the microphone.
    static constexpr std::chrono::milliseconds onset{80};

    explicit SpeechRecord(const AudioPlayer& player)
        : m_player(player)
    {
    }

    /// Somebody began to speak, perhaps over the voice of the device.
    enum class DeviceVoice { silent, speaking };
    void speechBegan(SessionTime now, DeviceVoice device);
    /// They were loud last at this time.
    void speechGoesOn(SessionTime loud);
    /// Our own voice, as it is given to the player: 16-bit little-endian mono at MicrophoneStream::sampleRateHz. Told
    /// right before.
    void voiceSounds(std::span<const std::uint8_t> pcm, SessionTime now);
    void voiceSays(const std::string& words, SessionTime now);
    /// The player was stopped.
    void voiceCut(SessionTime now);
    /// Something was put to the user otherwise: shown, or about to be said by the device.
    void shown(SessionTime now);
    /// The first words of one utterance have come.
    void wordsBegan(SessionTime now);
    /// They will come again.
    void wordsForgotten();
    /// All words of it have come; none are from here on.
    HeardUtterance complete(const std::string& words, SessionTime now);

    /// When the last that can be heard of our own voice has sounded, or will have; what was shown was at once.
    SessionTime voiceUntil(SessionTime now) const;
    /// Something was heard of which the words are still to come, or not all of them have.
    bool areWordsAwaited(SessionTime now) const;

private:
    static constexpr std::size_t mostStretches = 16;
    static constexpr std::size_t mostVoices = 4;
    static constexpr std::size_t longestWords = 16 * 1024; ///< Bytes of what one voice says.

    struct Stretch {
        HeardUtterance::Sound sound;
        SessionTime voiceUntil{}; ///< As known when it began.
        bool hasWords = false;
        std::uint64_t number = 0; ///< From 1.
    };
    /// Sound of our own without a gap.
    struct Voice {
        SessionTime from{};
        SessionTime until{};
        std::string words{};
    };

    Stretch* stretchOfNextWords(SessionTime now);
    Stretch* claimed();
    std::string voiceWordsDuring(const HeardUtterance::Sound& sound) const;

    const AudioPlayer& m_player;
    std::deque<Stretch> m_stretches; ///< Oldest first.
    std::deque<Voice> m_voices; ///< Oldest first.
    std::string m_wordsAhead; ///< Of a voice that does not sound yet.
    std::chrono::milliseconds m_silentTail{}; ///< At the end of what the player was given.
    SessionTime m_saidUntil{}; ///< By the player or the device.
    std::uint64_t m_begun = 0; ///< Stretches so far.
    std::uint64_t m_claimed = 0; ///< The number of the stretch whose words are coming; 0 without one.
    bool m_areWordsComing = false;
};

} // namespace quorvell
