// SPDX-License-Identifier: MIT
// Hears and speaks for one session at a time, on a thread of its own.
#pragma once

#include "LiveService/speech/SpeechPort.h"
#include "LiveService/speech/WorkerThread.h"
#include "LiveService/voice/VoicePiece.h"
#include "Media/audio/Resampler.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace quorvell {

/// Its functions return at once and are called from one thread; the callbacks run on the worker's thread. Rates are
/// converted here.
class SpeechWorker {
public:
    using MakePort = std::function<std::unique_ptr<SpeechPort>()>;
    using HearTurn = std::function<void(HeardTurn)>;
    enum class Likely { goesOn, end }; ///< Of a turn that fell silent: then its words are worked out ahead.
    using TakeWords = std::function<Likely(const std::string&)>;
    using TakePiece = std::function<void(VoicePiece)>;

    static constexpr int longestBacklogSeconds = 60; ///< Of sound that waits for the recogniser; more is not heard.

    /// The port is made when it is first needed, in the background.
    explicit SpeechWorker(MakePort makePort);
    ~SpeechWorker();

    /// For the session that uses this worker from now on: the rates of what it hears and of what it says.
    void prepare(int heardRateHz, int spokenRateHz, std::string voice);
    /// The session is over: nothing of it is done any more.
    void release();

    void expectSpeech();
    void beginListening();
    void listen(std::vector<std::int16_t> samples);
    /// What was heard of the turn so far.
    void readSoFar(TakeWords take);
    void finishListening(HearTurn done);
    void speak(int reply, std::vector<std::string> sentences, TakePiece take);
    void stopSpeaking();

private:
    struct Reply {
        int number;
        std::vector<std::string> sentences;
        int sampleRateHz;
        std::string voice;
    };

    SpeechPort& port();
    void speakNow(const Reply& reply, const TakePiece& take, const std::stop_token& stop);
    void voiceSentence(
        const std::string& sentence, const Reply& reply, const TakePiece& take, const std::stop_token& stop);

    int m_heardRate = SpeechPort::sampleRateHz;
    int m_spokenRate = SpeechPort::sampleRateHz;
    std::string m_voice;
    std::stop_source m_speaking; ///< Of the replies that wait or are being made.
    std::atomic<std::size_t> m_backlog = 0; ///< Samples.
    std::unique_ptr<SpeechPort> m_port; ///< Worker thread only, as the next two.
    std::optional<Resampler> m_toPort;
    MakePort m_makePort;
    WorkerThread m_thread; ///< Last: its jobs use all of the above.
};

} // namespace quorvell
