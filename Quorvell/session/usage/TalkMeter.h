// SPDX-License-Identifier: MIT
// Counts what a conversation uses, over all its connections, and how much of the user's day is left.
#pragma once

#include "Quorvell/session/ports/UsageStore.h"
#include "Quorvell/session/reports/SessionUsage.h"
#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace quorvell {

class TalkMeter {
public:
    /// Without a store or a limit nothing is limited. The store is borrowed.
    TalkMeter(UsageStore* store, std::optional<std::chrono::minutes> dailyMinutes);

    void begin() { m_usage = m_told = {}; }
    /// A new connection counts its bill from zero.
    void connectionBegan();
    void chunkSent() { ++m_usage.microphoneChunks; }
    void imageSent() { ++m_usage.imagesSent; }
    void voiceReceived(std::size_t bytes);
    void report(const live_event::Usage& usage);
    void report(const live_event::BilledSeconds& usage);
    void report(const live_event::ContextUsage& usage) { m_usage.contextRatio = usage.ratio; }
    /// Of a connection that was opened in advance and not used.
    void billedBeside(double seconds);
    /// A connection for voice has been open for so long.
    void meterTalk(std::chrono::milliseconds open);

    bool isDayUsedUp() const;
    /// For the user.
    std::string usedUpSentence() const;
    const SessionUsage& usage() const { return m_usage; }
    SessionUsage& counts() { return m_usage; }
    /// Whether the usage has changed since this was asked last.
    bool isNews();

private:
    UsageStore* m_store;
    std::optional<std::chrono::minutes> m_dailyMinutes;
    SessionUsage m_usage;
    SessionUsage m_told;
    double m_billedBefore = 0; ///< On earlier connections of this conversation, seconds.
};

} // namespace quorvell
