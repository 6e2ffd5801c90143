// SPDX-License-Identifier: MIT
// Reads the messages of a Wyoming service as their bytes arrive, cut anywhere. Pure.
#pragma once

#include "Wyoming/WyomingEvent.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Once something is no message, or is beyond a bound, it is broken, and nothing more is read.
class WyomingReader {
public:
    static constexpr std::size_t longestHead = 256 * 1024; ///< Bytes of a line. Some put all they can do into one.
    static constexpr std::size_t longestData = 1024 * 1024;
    static constexpr std::size_t longestPayload = 1024 * 1024; ///< Some 20 s of sound.

    /// More than this that was not asked for is read no further by whoever feeds it.
    static constexpr std::size_t mostWaiting = longestHead + longestData + longestPayload;

    void add(std::string_view bytes) { m_bytes += bytes; }
    std::size_t waiting() const { return m_bytes.size() - m_start; }
    /// The next message that is whole.
    std::optional<WyomingEvent> next();
    bool isBroken() const { return m_isBroken; }

private:
    bool readHead();
    std::string_view rest() const { return std::string_view(m_bytes).substr(m_start); }
    void skip(std::size_t bytes);

    std::string m_bytes;
    std::size_t m_start = 0; ///< What is before it was read. Moved up in strides: small messages would cost squares.
    std::optional<WyomingEvent> m_event; ///< Whose head was read.
    std::size_t m_dataLength = 0;
    std::size_t m_payloadLength = 0;
    std::size_t m_searched = 0; ///< Bytes of the rest that hold no end of a line.
    bool m_isBroken = false;
};

} // namespace quorvell
