// SPDX-License-Identifier: MIT
// The usage book in the state folder.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/records/UsageBook.h"
#include "Quorvell/session/ports/UsageStore.h"
#include "Quorvell/session/reports/SessionObserver.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <string>

namespace quorvell {

/// Several programs may write to it: each adds what it used since it last did. Main thread.
class UsageFile : public UsageStore, public SessionObserver {
public:
    static constexpr std::size_t longestFile = 64 * 1024; ///< Bytes.
    static constexpr std::chrono::milliseconds betweenWrites{10'000};

    /// The scheduler is borrowed.
    UsageFile(std::string path, Scheduler& scheduler, Calendar calendar);
    /// Writes what is not written yet.
    ~UsageFile() override;

    double secondsToday() const override;
    void addSeconds(double seconds) override;

    void usageChanged(const SessionUsage& usage) override;
    void conversationEnded(const SessionEnd& end) override;

    /// With what this program has used and not yet written.
    UsageBook book() const;
    /// "2026-11-21", in the user's zone.
    std::string today() const;

private:
    void note(const UsageBook::Day& used);
    void write();

    std::string m_path;
    Scheduler& m_scheduler;
    Calendar m_calendar;
    UsageBook m_stored; ///< As it was last read or written.
    UsageBook m_unwritten;
    SessionUsage m_seen; ///< What has been booked of the present conversation.
    TimerHandle m_nextWrite;
};

} // namespace quorvell
