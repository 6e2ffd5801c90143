// SPDX-License-Identifier: MIT
// Listens without a connection.
#pragma once

#include "OnDeviceSpeech/SpeechRecogniser.h"
#include "Quorvell/loop/GuardedPost.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/speech/RecognitionWorker.h"
#include "QuorvellCore/live/gate/MicGate.h"
#include "QuorvellCore/live/gate/PCMChunker.h"
#include "Wyoming/WyomingAddress.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace quorvell {

/// The gate that also guards the conversation decides whether somebody speaks, so that the recogniser works then and
/// only then; a quiet room, or one with steady noise, costs next to nothing. Main thread.
class DeviceEar : public DozeListener {
public:
    static constexpr std::size_t chunkBytes = 1920; ///< 40 ms
    static constexpr int quietChunks = 13; ///< 520 ms of quiet end an utterance.
    /// Whoever speaks on is answered: 12 s are taken as an utterance, what follows as the next.
    static constexpr int longestUtteranceChunks = 300;

    /// Nothing is loaded before somebody speaks; `stop` lets it go.
    /// `service` is a recogniser of the user's own, that is believed before the one of this computer.
    DeviceEar(SpeechModels models, Scheduler& scheduler, std::optional<WyomingAddress> service = std::nullopt);
    ~DeviceEar() override;

    void start(Reports reports) override;
    void captured(std::span<const std::uint8_t> pcm) override;
    void stop() override;

private:
    void hear(AudioChunk chunk);
    void beginUtterance();
    void endUtterance();
    void recognised(std::uint64_t utterance, const std::string& words);
    void failed(const std::string& sentence);

    SpeechModels m_models;
    std::optional<WyomingAddress> m_service;
    GuardedPost m_post;
    Reports m_reports;
    bool m_isListening = false;
    std::uint64_t m_listening = 0; ///< Counts the starts; reports of an earlier one are dropped.
    std::uint64_t m_utterance = 0;
    std::uint64_t m_firstUtterance = 0; ///< Of this listening.
    int m_utteranceChunks = 0;
    PCMChunker m_chunker{chunkBytes, {}};
    MicGate m_gate;
    std::unique_ptr<RecognitionWorker> m_worker; ///< Last: its thread ends before what it reports to.
};

} // namespace quorvell
