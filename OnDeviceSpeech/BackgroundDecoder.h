// SPDX-License-Identifier: MIT
// A decoder on a thread of its own, which also loads its models, so that neither loading nor decoding holds up the
// caller.
#pragma once

#include "OnDeviceSpeech/Decoder.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <stop_token>
#include <thread>
#include <vector>

namespace quorvell {

/// Call it from one thread.
class BackgroundDecoder {
public:
    /// Once `stop` is requested, from any thread, nothing is waited for any more.
    BackgroundDecoder(Decoder::Options options, std::stop_token stop);
    ~BackgroundDecoder();

    void begin();
    void feed(std::span<const std::int16_t> samples);
    /// Asks for the words of what was fed; collect them with finished().
    void finish();
    /// Waits. Nothing when the models could not be read, or after a stop.
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

    std::stop_token m_stop;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<Wish> m_wishes;
    Decoder::Result m_result;
    bool m_isFinished = false; ///< m_result belongs to the last finish().
    bool m_hasFailed = false;
    std::jthread m_thread; ///< Behind what it uses, so that it ends first.
    std::stop_callback<std::function<void()>> m_whenStopped; ///< Ends the thread too.
};

} // namespace quorvell
