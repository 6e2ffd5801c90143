// SPDX-License-Identifier: MIT
// Carries the events and the sound of one session in the OpenAI form.
#pragma once

#include "Quorvell/connections/life/ConnectionFailure.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveSetupOptions.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Main thread; used once.
class OpenAITransport {
public:
    /// None may destroy the transport.
    struct Reports {
        std::function<void()> opened; ///< The session is asked for; its start comes as a text.
        std::function<void(const std::string& text)> textReceived;
        std::function<void(const std::vector<std::uint8_t>& pcm)> soundReceived; ///< Where it is not in the texts.
        std::function<void(const ConnectionFailure& failure)> closed; ///< Once, an orderly end included.
    };

    virtual ~OpenAITransport() = default;

    virtual void open(const LiveAccess& access, const OpenAILiveSetupOptions& options) = 0;
    virtual void send(std::string_view text) = 0;
    /// A longer text is not sent.
    virtual std::size_t largestText() const = 0;
    /// 16-bit little-endian mono at 24000 Hz.
    virtual void sendSound(std::span<const std::uint8_t> pcm) = 0;
    /// Says good-bye in an orderly way; `closed` follows, but not within any limit.
    virtual void close() = 0;
};

} // namespace quorvell
