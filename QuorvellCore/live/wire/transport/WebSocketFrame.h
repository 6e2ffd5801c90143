// SPDX-License-Identifier: MIT
// One frame of the WebSocket protocol (RFC 6455) as bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct WebSocketFrame {
    /// With the numbers that they have on the wire.
    enum class Kind : std::uint8_t { continuation = 0, text = 1, binary = 2, close = 8, ping = 9, pong = 10 };
    using Mask = std::array<std::uint8_t, 4>; ///< Of a client's frames.

    static constexpr std::size_t longestControl = 125; ///< Payload of a close, ping or pong.

    /// A whole message in one frame.
    static std::string bytes(Kind kind, std::string_view payload, std::optional<Mask> mask = std::nullopt);
    /// What a close frame carries; the reason is cut to what fits.
    static std::string closePayload(int code, std::string_view reason);
};

} // namespace quorvell
