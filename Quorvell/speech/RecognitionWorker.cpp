// SPDX-License-Identifier: MIT
#include "Quorvell/speech/RecognitionWorker.h"

#include <span>
#include <utility>

namespace quorvell {

RecognitionWorker::RecognitionWorker(SpeechModels models, Reports reports, const std::optional<WyomingAddress>& service)
    : m_models(std::move(models))
    , m_reports(std::move(reports))
    , m_service(service ? std::optional<WyomingRecogniser>(*service) : std::nullopt)
    , m_thread([this](const std::stop_token& stop) { run(stop); })
{
}

RecognitionWorker::~RecognitionWorker() = default;

void RecognitionWorker::post(Wish wish)
{
    const std::lock_guard lock(m_mutex);
    if (m_waitingSamples + wish.samples.size() > mostWaitingSamples)
        return;
    m_waitingSamples += wish.samples.size();
    m_wishes.push_back(std::move(wish));
    m_changed.notify_one();
}

void RecognitionWorker::begin(std::uint64_t utterance)
{
    post({Wish::Kind::begin, utterance});
}

void RecognitionWorker::feed(std::vector<std::int16_t> samples)
{
    post({Wish::Kind::feed, 0, std::move(samples)});
}

void RecognitionWorker::finish()
{
    post({Wish::Kind::finish});
}

void RecognitionWorker::forget()
{
    const std::lock_guard lock(m_mutex);
    m_wishes.clear();
    m_wishes.push_back({Wish::Kind::release});
    m_waitingSamples = 0;
    m_changed.notify_one();
}

bool RecognitionWorker::next(const std::stop_token& stop, Wish& wish)
{
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait(lock, stop, [this] { return !m_wishes.empty(); }) || stop.stop_requested())
        return false;
    wish = std::move(m_wishes.front());
    m_wishes.pop_front();
    m_waitingSamples -= wish.samples.size();
    return true;
}

void RecognitionWorker::run(const std::stop_token& stop)
{
    for (Wish wish; next(stop, wish);)
        carryOut(wish, stop);
}

bool RecognitionWorker::prepare(const std::stop_token& stop)
{
    if (m_recogniser)
        return true;
    SpeechRecogniser::Made made = SpeechRecogniser::create(m_models, stop);
    m_recogniser = std::move(made.recogniser);
    if (!made.problem.empty())
        m_reports.failed(std::move(made.problem));
    return m_recogniser != nullptr;
}

void RecognitionWorker::report(std::uint64_t utterance, RecognisedUtterance heard)
{
    if (heard.problem.empty())
        m_reports.recognised(utterance, std::move(heard.text));
    else
        m_reports.failed(std::move(heard.problem));
}

void RecognitionWorker::carryOut(const Wish& wish, const std::stop_token& stop)
{
    switch (wish.kind) {
    case Wish::Kind::begin:
        m_utterance = prepare(stop) ? wish.utterance : 0;
        m_resampler = std::make_unique<Resampler>(sampleRateHz, SpeechRecogniser::sampleRateHz);
        if (m_utterance != 0)
            m_recogniser->begin();
        if (m_utterance != 0 && m_service)
            m_service->begin();
        return;
    case Wish::Kind::feed:
        if (m_utterance != 0) {
            const auto samples = m_resampler->process(std::span<const std::int16_t>(wish.samples));
            if (m_service)
                m_service->feed(samples);
            m_recogniser->feed(samples);
        }
        return;
    case Wish::Kind::finish:
        if (const auto utterance = std::exchange(m_utterance, 0); utterance != 0) {
            auto words = m_service ? m_service->finish(stop) : std::nullopt;
            RecognisedUtterance heard = m_recogniser->finish();
            if (words)
                heard = {.text = *std::move(words)};
            if (!stop.stop_requested())
                report(utterance, std::move(heard));
        }
        return;
    case Wish::Kind::release:
        m_utterance = 0;
        m_recogniser.reset();
        return;
    }
}

} // namespace quorvell
