// SPDX-License-Identifier: MIT
#include "LiveService/speech/SpeechWorker.h"

#include "LiveService/voice/SpokenText.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t piecesInSecond = 50; ///< Less than 20 ms waits for more, so that few values cross the threads.

} // namespace

SpeechWorker::SpeechWorker(MakePort makePort)
    : m_makePort(std::move(makePort))
{
}

SpeechWorker::~SpeechWorker()
{
    release();
    // The port dies on the thread that it lived on.
    m_thread.post([this] { m_port.reset(); });
}

void SpeechWorker::prepare(int heardRateHz, int spokenRateHz, std::string voice)
{
    m_heardRate = heardRateHz;
    m_spokenRate = spokenRateHz;
    m_voice = std::move(voice);
}

void SpeechWorker::release()
{
    stopSpeaking();
    m_thread.clear();
}

void SpeechWorker::expectSpeech()
{
    m_thread.post([this] { port().expectSpeech(); });
}

void SpeechWorker::beginListening()
{
    m_thread.post([this, rate = m_heardRate] {
        m_toPort.emplace(rate, SpeechPort::sampleRateHz);
        port().begin();
    });
}

void SpeechWorker::listen(std::vector<std::int16_t> samples)
{
    const std::size_t count = samples.size();
    if (m_backlog + count > static_cast<std::size_t>(m_heardRate) * longestBacklogSeconds)
        return;
    m_backlog += count;
    // Taken back when the job is gone, be it done or cleared.
    const std::shared_ptr<void> share(nullptr, [this, count](void*) { m_backlog -= count; });
    m_thread.post([this, share, samples = std::move(samples)] {
        if (m_toPort)
            port().feed(m_toPort->process(samples));
    });
}

void SpeechWorker::readSoFar(TakeWords take)
{
    m_thread.post([this, take = std::move(take)] {
        if (take(port().heardSoFar()) == Likely::end)
            port().expectEnd();
    });
}

void SpeechWorker::finishListening(HearTurn done)
{
    m_thread.post([this, done = std::move(done)] {
        if (m_toPort)
            port().feed(m_toPort->finishToInt16());
        m_toPort.reset();
        done(port().finish());
    });
}

void SpeechWorker::speak(int number, std::vector<std::string> sentences, TakePiece take)
{
    Reply reply{number, std::move(sentences), m_spokenRate, m_voice};
    m_thread.post([this, reply = std::move(reply), take = std::move(take), stop = m_speaking.get_token()] {
        speakNow(reply, take, stop);
    });
}

void SpeechWorker::stopSpeaking()
{
    m_speaking.request_stop();
    m_speaking = std::stop_source();
}

SpeechPort& SpeechWorker::port()
{
    if (!m_port)
        m_port = m_makePort();
    return *m_port;
}

void SpeechWorker::speakNow(const Reply& reply, const TakePiece& take, const std::stop_token& stop)
{
    for (const std::string& sentence : reply.sentences) {
        if (stop.stop_requested())
            return;
        take({.reply = reply.number, .kind = VoicePiece::Kind::sentenceBegan, .sentence = sentence});
        voiceSentence(sentence, reply, take, stop);
        take({.reply = reply.number, .kind = VoicePiece::Kind::sentenceEnded});
    }
    take({.reply = reply.number, .kind = VoicePiece::Kind::replyEnded});
}

void SpeechWorker::voiceSentence(
    const std::string& sentence, const Reply& reply, const TakePiece& take, const std::stop_token& stop)
{
    Resampler fromPort(SpeechPort::sampleRateHz, reply.sampleRateHz);
    const std::size_t enough = static_cast<std::size_t>(reply.sampleRateHz) / piecesInSecond;
    VoicePiece piece{.reply = reply.number, .kind = VoicePiece::Kind::samples};
    const auto add = [&](const std::vector<std::int16_t>& samples, std::size_t least) {
        piece.samples.insert(piece.samples.end(), samples.begin(), samples.end());
        if (piece.samples.size() < least || piece.samples.empty())
            return;
        take(piece);
        piece.samples.clear();
    };
    const auto sink = [&](std::span<const std::int16_t> samples) { add(fromPort.process(samples), enough); };
    port().speak(reply.voice, SpokenText::voiced(sentence), sink, stop);
    add(fromPort.finishToInt16(), 1);
}

} // namespace quorvell
