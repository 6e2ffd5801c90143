// SPDX-License-Identifier: MIT
// The wire to one client.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Lives on the main thread.
class SessionTransport {
public:
    struct Reports {
        std::function<void(std::string)> textReceived;
        std::function<void()> nonsenseReceived; ///< A frame that is no text.
        std::function<void(Bytes)>
            soundReceived; ///< 16-bit little-endian mono; only where sound has a track of its own.
        std::function<void()> lost; ///< Comes once, after whatever ended the connection.
    };

    virtual ~SessionTransport() = default;

    /// Called once, before anything else.
    virtual void begin(Reports reports) = 0;
    virtual void send(const std::string& text) = 0;
    /// Only where sound has a track of its own.
    virtual void sendSound(const std::vector<std::int16_t>&) { }
    /// The sound that was not played yet is not wanted any more.
    virtual void dropSound() { }
    /// After everything before it was sent. The code is of the WebSocket protocol.
    virtual void close(int code, std::string_view reason) = 0;
    virtual void abort() = 0;
    /// From now on nothing is read and no ping is answered, though the connection stays.
    virtual void freeze() = 0;
};

} // namespace quorvell
