// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/transport/WebSocketReader.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = WebSocketFrame::Kind;

std::uint8_t byteOf(const std::string& text, std::size_t index)
{
    return static_cast<std::uint8_t>(text[index]);
}

bool isControl(Kind kind)
{
    return kind >= Kind::close;
}

bool isKind(unsigned number)
{
    return number <= 2 || (number >= 8 && number <= 10);
}

/// What may stand in a close frame: the registered codes, and those set aside for libraries and programs.
bool isCloseCode(int code)
{
    return (code >= 1000 && code <= 1003) || (code >= 1007 && code <= 1014) || (code >= 3000 && code <= 4999);
}

} // namespace

WebSocketReader::WebSocketReader(From from, std::size_t longestMessage)
    : m_from(from)
    , m_longestMessage(longestMessage)
{
}

std::vector<WebSocketReader::Piece> WebSocketReader::add(std::string_view bytes)
{
    std::vector<Piece> pieces;
    while (!m_isClosed && m_problem == 0 && (!bytes.empty() || (m_isInPayload && m_left == 0))) {
        if (!m_isInPayload)
            readHead(bytes);
        else
            readPayload(bytes);
        if (m_isInPayload && m_left == 0 && m_problem == 0)
            endFrame(pieces);
    }
    return pieces;
}

/// Its second byte tells how long it is.
void WebSocketReader::readHead(std::string_view& bytes)
{
    const std::size_t count = std::min(m_headBytes - m_head.size(), bytes.size());
    m_head.append(bytes.substr(0, count));
    bytes.remove_prefix(count);
    if (m_head.size() < m_headBytes)
        return;
    if (m_headBytes == 2) {
        const unsigned length = byteOf(m_head, 1) & 0x7F;
        m_headBytes += length == 126 ? 2 : length == 127 ? 8 : 0;
        m_headBytes += (byteOf(m_head, 1) & 0x80) != 0 ? m_mask.size() : 0;
    }
    if (m_head.size() == m_headBytes)
        beginFrame();
}

void WebSocketReader::beginFrame()
{
    const bool isMasked = (byteOf(m_head, 1) & 0x80) != 0;
    const unsigned length = byteOf(m_head, 1) & 0x7F;
    const std::size_t lengthBytes = length == 126 ? 2 : length == 127 ? 8 : 0;
    m_left = lengthBytes == 0 ? length : 0;
    for (std::size_t index = 0; index < lengthBytes; ++index)
        m_left = m_left << 8 | byteOf(m_head, 2 + index);
    m_mask = {};
    for (std::size_t index = 0; isMasked && index < m_mask.size(); ++index)
        m_mask[index] = byteOf(m_head, 2 + lengthBytes + index);
    m_maskAt = 0;
    m_isLast = (byteOf(m_head, 0) & 0x80) != 0;
    m_kind = static_cast<Kind>(byteOf(m_head, 0) & 0x0F);
    m_problem = problemOfHead(isControl(m_kind));
    m_head.clear();
    m_headBytes = 2;
    m_isInPayload = true;
}

int WebSocketReader::problemOfHead(bool isControl) const
{
    const bool isMasked = (byteOf(m_head, 1) & 0x80) != 0;
    const bool hasExtension = (byteOf(m_head, 0) & 0x70) != 0;
    if (hasExtension || !isKind(byteOf(m_head, 0) & 0x0F) || isMasked != (m_from == From::client))
        return protocolError;
    if (isControl)
        return m_isLast && m_left <= WebSocketFrame::longestControl ? 0 : protocolError;
    if ((m_kind == Kind::continuation) != m_isInMessage)
        return protocolError;
    return m_left <= m_longestMessage - m_message.size() ? 0 : tooLarge;
}

void WebSocketReader::readPayload(std::string_view& bytes)
{
    std::string& payload = isControl(m_kind) ? m_control : m_message;
    const std::size_t count = static_cast<std::size_t>(std::min<std::uint64_t>(m_left, bytes.size()));
    const std::size_t start = payload.size();
    payload.append(bytes.substr(0, count));
    bytes.remove_prefix(count);
    m_left -= count;
    if (m_from == From::server)
        return;
    for (std::size_t index = start; index < payload.size(); ++index)
        payload[index] = static_cast<char>(byteOf(payload, index) ^ m_mask[m_maskAt++ % m_mask.size()]);
}

void WebSocketReader::endFrame(std::vector<Piece>& pieces)
{
    m_isInPayload = false;
    if (isControl(m_kind))
        return endControl(pieces);
    if (m_kind != Kind::continuation)
        m_messageKind = m_kind;
    m_isInMessage = !m_isLast;
    if (!m_isLast)
        return;
    if (m_messageKind == Kind::text && !isUtf8(m_message))
        m_problem = notText;
    else
        pieces.push_back({m_messageKind, std::exchange(m_message, {})});
}

void WebSocketReader::endControl(std::vector<Piece>& pieces)
{
    Piece piece{m_kind, std::exchange(m_control, {})};
    if (m_kind == Kind::close)
        readClose(piece);
    if (m_problem == 0)
        pieces.push_back(std::move(piece));
}

void WebSocketReader::readClose(Piece& piece)
{
    m_isClosed = true;
    if (piece.payload.empty()) {
        piece.code = noCode;
        return;
    }
    const bool hasCode = piece.payload.size() >= 2;
    piece.code = hasCode ? byteOf(piece.payload, 0) << 8 | byteOf(piece.payload, 1) : 0;
    piece.payload.erase(0, 2);
    if (!isCloseCode(piece.code))
        m_problem = protocolError;
    else if (!isUtf8(piece.payload))
        m_problem = notText;
}

} // namespace quorvell
