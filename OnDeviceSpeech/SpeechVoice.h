// SPDX-License-Identifier: MIT
// Text to speech on the device.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Speaks one text at a time. Blocking: use it from a worker thread.
class SpeechVoice {
public:
    static constexpr int sampleRateHz = 16000;
    /// Receives pieces of 16-bit mono samples while the rest is still being made.
    using Sink = std::function<void(std::span<const std::int16_t>)>;

    static std::vector<std::string> names();
    /// The default voice for a name that is not in names().
    explicit SpeechVoice(std::string_view name);
    ~SpeechVoice();

    /// Returns when everything was handed to `sink` or `stop` was requested.
    void speak(std::string_view text, const Sink& sink, std::stop_token stop);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
