// SPDX-License-Identifier: MIT
// A connection to a Wyoming service. Blocks its thread at most until a moment that is given, or until it is told to
// stop.
#pragma once

#include "Wyoming/WyomingAddress.h"
#include "Wyoming/WyomingEvent.h"
#include "Wyoming/WyomingReader.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>

namespace quorvell {

/// One thread at a time. Once it has failed it stays so.
class WyomingLine {
public:
    using Moment = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::milliseconds connecting{300};
    static constexpr std::size_t mostUnsent = 4 * 1024 * 1024; ///< Bytes: two minutes of sound.

    enum class Waiting { open, failed, timedOut, stopped };

    /// Begins to connect and waits for nothing; a name is looked up in the system's own files and by its resolver, for
    /// which only what a host other than this computer costs is waited.
    WyomingLine(const WyomingAddress& address, Moment now);
    ~WyomingLine();
    WyomingLine(const WyomingLine&) = delete;
    WyomingLine& operator=(const WyomingLine&) = delete;

    /// Queues it, and sends what the service takes at once.
    void send(const WyomingEvent& event, Moment now);
    /// The next message. `failed` with what is no message too.
    Waiting receive(WyomingEvent& event, Moment until, const std::stop_token& stop);

    /// Whether the service could not be reached, broke off, takes nothing or says what is no message.
    bool hasFailed() const { return m_hasFailed; }

private:
    void fail();
    void connectTo(const WyomingAddress& address);
    /// Sends and reads what can be without waiting.
    void exchange(Moment now);
    void sendQueued();
    void readArrived();
    bool isLate(Moment now) const { return !m_isConnected && now >= m_connectBy; }

    int m_socket = -1;
    bool m_isConnected = false;
    bool m_hasFailed = false;
    bool m_isEnded = false; ///< The service sends nothing more; what came is still read.
    Moment m_connectBy;
    std::string m_unsent;
    WyomingReader m_reader;
};

} // namespace quorvell
