#pragma once

#include "OnDeviceSpeech/Decoder.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <span>
#include <thread>
#include <vector>

namespace quorvell {

/// A decoder on a thread of its own, which also loads its models, so that neither loading nor decoding holds up the
/// caller. Call it from one thread.
class BackgroundDecoder {
public:
    explicit BackgroundDecoder(Decoder::Options options);
    ~BackgroundDecoder();

    void begin();
    void feed(std::span<const std::int16_t> samples);
    /// Asks for the words of what was fed; collect them with finished().
    void finish();
    /// Waits. Nothing when the models could not be read.
    std::optional<Decoder::Result> finished();

private:
    struct Wish {
        enum class Kind { begin, feed, finish };
        Kind kind = Kind::begin;
        std::vector<std::int16_t> samples;
    };

    void run(const std::stop_token& stop, const Decoder::Options& options);
    std::optional<Wish> next(const std::stop_token& stop);
    void post(Wish wish);

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Wish> m_wishes;
    Decoder::Result m_result;
    bool m_isFinished = false; ///< m_result belongs to the last finish().
    bool m_hasFailed = false;
    std::jthread m_thread; ///< Last, so that it ends before what it uses.
};

} // namespace quorvell
