// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/LiveSocket.h"

#include "Http/WebSocketUpgrade.h"
#include "Quorvell/connections/web/RetryAfter.h"

#include <QCryptographicHash>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Failure = ConnectionFailure::Kind;

constexpr std::size_t largestRefusal = 64 * 1024;
/// For the words of a refusal, once its status is known.
constexpr std::chrono::milliseconds refusalPatience{1'000};

QByteArray freshHandshakeKey()
{
    std::array<quint32, 4> words{};
    QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
    return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words).toBase64();
}

QByteArray acceptanceOf(const QByteArray& key)
{
    const std::string_view suffix = websocket_upgrade::acceptanceSuffix;
    return QCryptographicHash::hash(
        key + QByteArray(suffix.data(), static_cast<qsizetype>(suffix.size())), QCryptographicHash::Sha1)
        .toBase64();
}

/// One that nobody could have foreseen, so that no proxy on the way can be talked into taking a payload for a request.
WebSocketFrame::Mask freshMask()
{
    const quint32 word = QRandomGenerator::system()->generate();
    return {static_cast<std::uint8_t>(word), static_cast<std::uint8_t>(word >> 8),
        static_cast<std::uint8_t>(word >> 16), static_cast<std::uint8_t>(word >> 24)};
}

} // namespace

LiveSocket::LiveSocket(Reports reports, LiveTimeLimits limits)
    : m_reports(std::move(reports))
    , m_limits(limits)
    , m_stream({[this] { askForUpgrade(); }, [this](std::string_view bytes) { bytesArrived(bytes); },
          [this](const ConnectionFailure& failure) { streamClosed(failure); }})
{
    m_deadline.setSingleShot(true);
    m_pings.setInterval(m_limits.betweenPings);
    QObject::connect(&m_deadline, &QTimer::timeout, &m_context,
        [this] { end(m_refusal.value_or(ConnectionFailure{Failure::openedTooSlowly})); });
    QObject::connect(&m_pings, &QTimer::timeout, &m_context, [this] { checkLiveness(); });
}

// ---- Opening

void LiveSocket::open(const WebRequest& request, const std::shared_ptr<ServiceLine>& line)
{
    m_request = request;
    m_deadline.start(m_limits.toOpen);
    m_stream.open(request, line);
}

void LiveSocket::askForUpgrade()
{
    const QByteArray key = freshHandshakeKey();
    m_acceptance = acceptanceOf(key);
    const QByteArray head = ServiceStream::headOf(m_request,
        "Upgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Version: 13\r\nSec-WebSocket-Key: " + key + "\r\n");
    m_stream.write({head.constData(), static_cast<std::size_t>(head.size())});
}

void LiveSocket::readAnswer()
{
    const auto reading = HttpAnswerReading::of(m_answer);
    if (reading.kind == HttpAnswerReading::Kind::incomplete)
        return;
    if (reading.kind == HttpAnswerReading::Kind::notUnderstood)
        return end({Failure::nobodyAnswers, 0, "this is no web server"});
    const HttpAnswerHead& head = reading.head;
    if (websocket_upgrade::isAccepted(
            head, {m_acceptance.constData(), static_cast<std::size_t>(m_acceptance.size())})) {
        m_isOpen = true;
        m_deadline.stop();
        m_pings.start();
        const std::string frames = std::exchange(m_answer, {}).substr(head.headBytes);
        m_reports.opened();
        return bytesArrived(frames);
    }
    std::string body = m_answer.substr(head.headBytes, largestRefusal);
    const bool isWhole = body.size() >= std::min(head.bodyBytes.value_or(largestRefusal), largestRefusal);
    const bool isFirst = !m_refusal;
    m_refusal = ConnectionFailure::refusal(head.status, std::move(body));
    m_refusal->retryAfter = retryAfter(head.field("retry-after"));
    if (isWhole)
        return end(*m_refusal);
    // Its words may be on their way, and a service may never end what it says.
    if (isFirst)
        m_deadline.start(refusalPatience);
}

// ---- What the service says

/// Any byte is a sign of life: a long message holds the pongs behind it back.
void LiveSocket::bytesArrived(std::string_view bytes)
{
    m_unansweredPings = 0;
    if (!m_isOpen) {
        m_answer += bytes.substr(0, HttpAnswerHead::longestHead + largestRefusal - m_answer.size());
        return readAnswer();
    }
    for (WebSocketReader::Piece& piece : m_reader.add(bytes)) {
        if (m_hasEnded)
            return;
        take(std::move(piece));
    }
    if (m_reader.problem() != 0)
        leave(m_reader.problem());
    checkUnsent();
}

void LiveSocket::take(WebSocketReader::Piece piece)
{
    switch (piece.kind) {
    case Kind::text:
    case Kind::binary: // JSON too: some services send their texts in binary frames.
        return m_isClosing ? void() : m_reports.textReceived(piece.payload);
    case Kind::ping:
        return write(Kind::pong, piece.payload);
    case Kind::close:
        return left(piece);
    case Kind::pong:
    case Kind::continuation: // The reader has put it to its message.
        return;
    }
}

void LiveSocket::streamClosed(const ConnectionFailure& failure)
{
    if (m_refusal)
        return end(*m_refusal);
    const bool isCutOff = !m_isOpen && failure.kind == Failure::closed;
    end(isCutOff ? ConnectionFailure{Failure::nobodyAnswers, 0, failure.detail} : failure);
}

// ---- What is sent

void LiveSocket::send(std::string_view text)
{
    if (!m_isOpen || m_isClosing || m_hasEnded)
        return;
    // Later, since nothing is reported from inside a call.
    if (unsentBytes() + static_cast<std::int64_t>(text.size()) > mostUnsent)
        return QTimer::singleShot(0, &m_context, [this] { end({Failure::wentSilent}); });
    m_sent = (unsentBytes() > 0 ? m_sent : 0) + static_cast<std::int64_t>(text.size());
    write(Kind::text, text);
}

void LiveSocket::close()
{
    if (m_isOpen)
        sendClose(LiveClosure::normal);
}

void LiveSocket::write(Kind kind, std::string_view payload)
{
    if (!m_isClosing && !m_hasEnded)
        m_stream.write(WebSocketFrame::bytes(kind, payload, freshMask()));
}

/// Every ping is answered, and a service that reads none of the answers would have them hoarded here.
void LiveSocket::checkUnsent()
{
    if (unsentBytes() > std::min(m_sent + mostUnsentPongs, mostUnsent))
        end({Failure::wentSilent});
}

void LiveSocket::checkLiveness()
{
    // Counted, not timed: when this program itself was busy, the answers lie there unread.
    if (m_unansweredPings * m_limits.betweenPings >= m_limits.silence)
        return end({Failure::wentSilent});
    ++m_unansweredPings;
    write(Kind::ping, {});
}

// ---- The end

/// The service has said good-bye.
void LiveSocket::left(const WebSocketReader::Piece& goodbye)
{
    sendClose(goodbye.code);
    end({Failure::closed, goodbye.code, goodbye.payload});
}

/// It is told why; what went wrong is not that it ended anything.
void LiveSocket::leave(int code)
{
    sendClose(code);
    end({Failure::closed, code == WebSocketReader::tooLarge ? code : WebSocketReader::protocolError,
        "it broke the protocol of WebSockets"});
}

void LiveSocket::sendClose(int code)
{
    const bool isNamed = code != WebSocketReader::noCode;
    write(Kind::close, isNamed ? WebSocketFrame::closePayload(code, {}) : std::string());
    m_isClosing = true;
}

void LiveSocket::end(const ConnectionFailure& failure)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_deadline.stop();
    m_pings.stop();
    m_stream.end();
    m_reports.closed(failure);
}

} // namespace quorvell
