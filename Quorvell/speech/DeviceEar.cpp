// SPDX-License-Identifier: MIT
#include "Quorvell/speech/DeviceEar.h"

#include "Media/audio/SampleBytes.h"
#include "QuorvellCore/live/gate/PCM.h"

#include <utility>

namespace quorvell {

DeviceEar::DeviceEar(SpeechModels models, Scheduler& scheduler, std::optional<WyomingAddress> service)
    : m_models(std::move(models))
    , m_service(std::move(service))
    , m_post(scheduler)
{
    m_gate.hangover = quietChunks;
}

DeviceEar::~DeviceEar() = default;

void DeviceEar::start(Reports reports)
{
    stop();
    m_reports = std::move(reports);
    m_isListening = true;
    m_firstUtterance = m_utterance + 1;
    m_gate.reset();
    m_chunker.buffer.clear();
    if (std::string problem = m_models.missing(); !problem.empty())
        m_post([this, listening = m_listening, problem = std::move(problem)] {
            if (listening == m_listening)
                failed(problem);
        });
    if (m_worker)
        return;
    m_worker = std::make_unique<RecognitionWorker>(m_models,
        RecognitionWorker::Reports{
            [this](std::uint64_t utterance, std::string words) {
                m_post([this, utterance, words = std::move(words)] { recognised(utterance, words); });
            },
            [this](std::string sentence) { m_post([this, sentence = std::move(sentence)] { failed(sentence); }); }},
        m_service);
}

void DeviceEar::stop()
{
    m_isListening = false;
    ++m_listening;
    if (m_worker)
        m_worker->forget();
}

void DeviceEar::captured(std::span<const std::uint8_t> pcm)
{
    if (!m_isListening)
        return;
    for (AudioChunk& chunk : m_chunker.append(pcm))
        hear(std::move(chunk));
}

void DeviceEar::hear(AudioChunk chunk)
{
    const bool wasOpen = m_gate.isOpen;
    const float level = PCM::levelOfInt16LE(chunk.pcm);
    const auto outputs = m_gate.process(std::move(chunk), level);
    if (!wasOpen && m_gate.isOpen)
        beginUtterance();
    for (const MicGateOutput& output : outputs) {
        if (output.chunk)
            m_worker->feed(samplesOfBytes(output.chunk->pcm));
    }
    if (wasOpen && !m_gate.isOpen)
        endUtterance();
    else if (m_gate.isOpen && ++m_utteranceChunks >= longestUtteranceChunks) {
        endUtterance();
        beginUtterance();
    }
}

void DeviceEar::beginUtterance()
{
    m_utteranceChunks = 0;
    m_worker->begin(++m_utterance);
    m_post([this, listening = m_listening] {
        if (listening == m_listening && m_reports.onset)
            m_reports.onset();
    });
}

void DeviceEar::endUtterance()
{
    m_worker->finish();
}

void DeviceEar::recognised(std::uint64_t utterance, const std::string& words)
{
    if (m_isListening && utterance >= m_firstUtterance && !words.empty() && m_reports.heard)
        m_reports.heard(words);
}

void DeviceEar::failed(const std::string& sentence)
{
    const bool isAwaited = m_isListening;
    stop();
    if (isAwaited && m_reports.failed)
        m_reports.failed(sentence);
}

} // namespace quorvell
