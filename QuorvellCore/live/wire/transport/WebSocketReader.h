// SPDX-License-Identifier: MIT
// Reads the frames of the other side of a WebSocket (RFC 6455), whose messages may come in pieces. Pure.
#pragma once

#include "QuorvellCore/live/wire/transport/WebSocketFrame.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Holds one message at most, and less than a head and a control frame beside it.
class WebSocketReader {
public:
    enum class From {
        client, ///< Every frame must be masked.
        server, ///< None may be.
    };
    struct Piece {
        WebSocketFrame::Kind kind = WebSocketFrame::Kind::text; ///< Never a continuation.
        std::string payload{}; ///< Of a close: the reason.
        int code = 0; ///< Of a close.

        bool operator==(const Piece&) const = default;
    };

    static constexpr int noCode = 1005; ///< A close frame that names no code.
    static constexpr int protocolError = 1002;
    static constexpr int notText = 1007; ///< A text, or the reason of a close, that is no UTF-8.
    static constexpr int tooLarge = 1009;

    WebSocketReader(From from, std::size_t longestMessage);

    /// What these bytes complete, in order. Nothing more after a close or a problem.
    std::vector<Piece> add(std::string_view bytes);
    /// The code to close with, once the other side has broken the protocol or a bound; 0 until then.
    int problem() const { return m_problem; }

private:
    void readHead(std::string_view& bytes);
    void beginFrame();
    int problemOfHead(bool isControl) const;
    void readPayload(std::string_view& bytes);
    void endFrame(std::vector<Piece>& pieces);
    void endControl(std::vector<Piece>& pieces);
    void readClose(Piece& piece);

    From m_from;
    std::size_t m_longestMessage;
    int m_problem = 0;
    bool m_isClosed = false;
    std::string m_head; ///< While it is not whole.
    std::size_t m_headBytes = 2; ///< As far as is known.
    bool m_isInPayload = false;
    bool m_isLast = true; ///< Frame of its message.
    WebSocketFrame::Kind m_kind = WebSocketFrame::Kind::text;
    std::uint64_t m_left = 0; ///< Of the payload.
    WebSocketFrame::Mask m_mask{};
    std::size_t m_maskAt = 0;
    bool m_isInMessage = false; ///< Of several frames.
    WebSocketFrame::Kind m_messageKind = WebSocketFrame::Kind::text;
    std::string m_message;
    std::string m_control;
};

} // namespace quorvell
