// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/transport/WebSocketFrame.h"

#include "QuorvellCore/text/Characters.h"

namespace quorvell {

namespace {

constexpr std::uint8_t isLast = 0x80;
constexpr std::uint8_t isMasked = 0x80;
constexpr std::size_t twoByteLength = 126;
constexpr std::size_t eightByteLength = 127;

void appendNumber(std::string& bytes, std::uint64_t number, int count)
{
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
}

} // namespace

std::string WebSocketFrame::bytes(Kind kind, std::string_view payload, std::optional<Mask> mask)
{
    const std::uint8_t masked = mask ? isMasked : 0;
    std::string frame;
    frame.reserve(payload.size() + 14); // The longest head.
    frame += static_cast<char>(isLast | static_cast<std::uint8_t>(kind));
    if (payload.size() < twoByteLength) {
        frame += static_cast<char>(masked | payload.size());
    } else if (payload.size() <= 0xFFFF) {
        frame += static_cast<char>(masked | twoByteLength);
        appendNumber(frame, payload.size(), 2);
    } else {
        frame += static_cast<char>(masked | eightByteLength);
        appendNumber(frame, payload.size(), 8);
    }
    if (!mask)
        return frame.append(payload);
    frame.append(mask->begin(), mask->end());
    for (std::size_t index = 0; index < payload.size(); ++index)
        frame += static_cast<char>(static_cast<std::uint8_t>(payload[index]) ^ (*mask)[index % mask->size()]);
    return frame;
}

std::string WebSocketFrame::closePayload(int code, std::string_view reason)
{
    std::string payload;
    appendNumber(payload, static_cast<std::uint64_t>(code), 2);
    std::string text = repairUtf8(reason);
    while (text.size() > longestControl - payload.size())
        text = firstCharacters(text, characterCount(text) - 1);
    return payload + text;
}

} // namespace quorvell
