// SPDX-License-Identifier: MIT
// The recogniser on a thread of its own.
#pragma once

#include "Media/audio/Resampler.h"
#include "OnDeviceSpeech/SpeechRecogniser.h"
#include "Wyoming/WyomingRecogniser.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace quorvell {

/// The models take 140 MB and most of a second to load, so they are loaded while the first utterance is still being
/// said, and let go when nobody is listened to. Called from one thread, waits for nothing.
class RecognitionWorker {
public:
    static constexpr int sampleRateHz = 24000; ///< What it is fed; the recogniser's own rate is lower.
    /// What waits beyond that, as while the models load, is not heard.
    static constexpr std::size_t mostWaitingSamples = std::size_t{60} * sampleRateHz;

    /// Run on the worker's thread.
    struct Reports {
        std::function<void(std::uint64_t utterance, std::string words)> recognised; ///< Empty for none.
        std::function<void(std::string sentence)> failed; ///< Once: the models cannot be read.
    };

    /// `service`, where there is one, hears every utterance too; its words count, and where it fails those of this
    /// computer.
    RecognitionWorker(
        SpeechModels models, Reports reports, const std::optional<WyomingAddress>& service = std::nullopt);
    /// Soon, whatever is under way; what waits is forgotten.
    ~RecognitionWorker();
    RecognitionWorker(const RecognitionWorker&) = delete;
    RecognitionWorker& operator=(const RecognitionWorker&) = delete;

    /// `utterance` names it in the report; not 0.
    void begin(std::uint64_t utterance);
    void feed(std::vector<std::int16_t> samples);
    void finish();
    /// Forgets everything that waits, and the models. A recognition that is under way still reports.
    void forget();

private:
    struct Wish {
        enum class Kind { begin, feed, finish, release };
        Kind kind = Kind::begin;
        std::uint64_t utterance = 0;
        std::vector<std::int16_t> samples{};
    };

    void post(Wish wish);
    void run(const std::stop_token& stop);
    /// Loads the models where they are missing. False when that is not possible.
    bool prepare(const std::stop_token& stop);
    void report(std::uint64_t utterance, RecognisedUtterance heard);
    void carryOut(const Wish& wish, const std::stop_token& stop);
    bool next(const std::stop_token& stop, Wish& wish);

    SpeechModels m_models;
    Reports m_reports;
    std::unique_ptr<SpeechRecogniser> m_recogniser; ///< This and the next two are the worker's thread's.
    std::unique_ptr<Resampler> m_resampler;
    std::optional<WyomingRecogniser> m_service; ///< Likewise.
    std::uint64_t m_utterance = 0; ///< 0 for none.
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Wish> m_wishes;
    std::size_t m_waitingSamples = 0;
    std::jthread m_thread; ///< Last, so that it ends before what it uses.
};

} // namespace quorvell
