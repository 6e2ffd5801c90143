// SPDX-License-Identifier: MIT
#include "OnDeviceSpeech/BackgroundDecoder.h"

#include <utility>

namespace quorvell {

BackgroundDecoder::BackgroundDecoder(Decoder::Options options, std::stop_token stop)
    : m_stop(std::move(stop))
    , m_thread([this, options = std::move(options)](const std::stop_token& end) { run(end, options); })
    , m_whenStopped(m_stop, [this] { m_thread.request_stop(); })
{
}

BackgroundDecoder::~BackgroundDecoder() = default;

void BackgroundDecoder::post(Wish wish)
{
    const std::lock_guard lock(m_mutex);
    if (wish.kind == Wish::Kind::begin) {
        m_wishes.clear(); // an unfinished utterance is forgotten
    }
    m_isFinished = false;
    m_wishes.push_back(std::move(wish));
    m_changed.notify_all();
}

void BackgroundDecoder::begin()
{
    post({Wish::Kind::begin, {}});
}

void BackgroundDecoder::feed(std::span<const std::int16_t> samples)
{
    post({Wish::Kind::feed, {samples.begin(), samples.end()}});
}

void BackgroundDecoder::finish()
{
    post({Wish::Kind::finish, {}});
}

std::optional<Decoder::Result> BackgroundDecoder::finished()
{
    std::unique_lock lock(m_mutex);
    const bool isDone = m_changed.wait(lock, m_stop, [this] { return m_isFinished || m_hasFailed; });
    return !isDone || m_hasFailed ? std::nullopt : std::optional(std::exchange(m_result, {}));
}

std::optional<BackgroundDecoder::Wish> BackgroundDecoder::next(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    // A stop comes before what still waits.
    if (!m_changed.wait(lock, stop, [this] { return !m_wishes.empty(); }) || stop.stop_requested()) {
        return std::nullopt;
    }
    Wish wish = std::move(m_wishes.front());
    m_wishes.pop_front();
    return wish;
}

void BackgroundDecoder::run(const std::stop_token& stop, const Decoder::Options& options)
{
    const std::unique_ptr<Decoder> decoder = Decoder::create(options, stop);
    if (!decoder) {
        const std::lock_guard lock(m_mutex);
        m_hasFailed = true;
        m_changed.notify_all();
        return;
    }
    while (const std::optional<Wish> wish = next(stop)) {
        switch (wish->kind) {
        case Wish::Kind::begin:
            decoder->begin();
            break;
        case Wish::Kind::feed:
            decoder->feed(wish->samples);
            break;
        case Wish::Kind::finish: {
            Decoder::Result result = decoder->finish();
            const std::lock_guard lock(m_mutex);
            m_result = std::move(result);
            m_isFinished = true;
            m_changed.notify_all();
            break;
        }
        }
    }
}

} // namespace quorvell
