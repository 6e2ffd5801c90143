// SPDX-License-Identifier: MIT
// A WebSocket that never hangs: opening has a limit, silence is noticed, messages are bounded, and every way to end
// comes out as one ConnectionFailure.
#pragma once

#include "Http/HttpAnswerHead.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/web/ServiceStream.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"
#include "QuorvellCore/live/wire/transport/WebSocketReader.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// The client's end of RFC 6455, over a ServiceStream: a service that floods it keeps nothing else from being done.
/// Main thread; used once.
class LiveSocket {
public:
    struct Reports {
        std::function<void()> opened;
        std::function<void(const std::string& text)> textReceived;
        std::function<void(const ConnectionFailure& failure)> closed; ///< Once, an orderly end included.
    };

    /// Sound that the network does not take is dropped rather than hoarded: half a minute of it, as text.
    static constexpr std::int64_t mostUnsentSound = 2 * 1024 * 1024;

    /// Beyond it the service is taken for gone: it reads nothing any more, whatever it still says. The largest message
    /// twice over.
    static constexpr std::int64_t mostUnsent = 32 * 1024 * 1024;
    /// While nothing has been asked for that large: pings that a service sends without reading the answers.
    static constexpr std::int64_t mostUnsentPongs = 4 * 1024 * 1024;

    /// A report must not destroy the socket.
    LiveSocket(Reports reports, LiveTimeLimits limits);
    LiveSocket(const LiveSocket&) = delete;
    LiveSocket& operator=(const LiveSocket&) = delete;

    /// `line` is null over the network.
    void open(const WebRequest& request, const std::shared_ptr<ServiceLine>& line);
    void send(std::string_view text);
    /// Accepted for sending and not yet taken by the network.
    std::int64_t unsentBytes() const { return m_stream.unsentBytes(); }
    /// Says good-bye in an orderly way; `closed` follows, but not within any limit.
    void close();

private:
    using Kind = WebSocketFrame::Kind;

    void askForUpgrade();
    void bytesArrived(std::string_view bytes);
    void readAnswer();
    void take(WebSocketReader::Piece piece);
    void streamClosed(const ConnectionFailure& failure);
    void checkLiveness();
    void checkUnsent();
    void write(Kind kind, std::string_view payload);
    void left(const WebSocketReader::Piece& goodbye);
    void leave(int code);
    void sendClose(int code);
    void end(const ConnectionFailure& failure);

    Reports m_reports;
    LiveTimeLimits m_limits;
    WebRequest m_request;
    QByteArray m_acceptance; ///< What proves that the service understood the request.
    std::string m_answer; ///< To the request, while it is not whole.
    std::optional<ConnectionFailure> m_refusal; ///< The answer is one; its words may not be whole.
    bool m_isOpen = false;
    bool m_isClosing = false; ///< A close was sent; the rest is only awaited.
    bool m_hasEnded = false;
    QTimer m_deadline; ///< Of opening.
    QTimer m_pings;
    std::int64_t m_sent = 0; ///< Bytes of messages since nothing was unsent.
    int m_unansweredPings = 0; ///< Since the last sign of life.
    WebSocketReader m_reader{WebSocketReader::From::server, OpenAILiveParser::limits.maximumBytes};
    ServiceStream m_stream;
    QObject m_context; ///< Receives what comes later; goes first.
};

} // namespace quorvell
