// SPDX-License-Identifier: MIT
// Watches how long a conversation has been quiet, and what keeps it from resting and ending meanwhile.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/quiet/IdleRules.h"
#include "Quorvell/session/quiet/QuietFacts.h"
#include "Quorvell/session/settings/SessionSettings.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvell {

/// Decides; whoever asks acts. Main thread; what it borrows must outlive it.
class QuietWatch {
public:
    enum class Consent { pending, settled };

    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        std::function<void()> lookDue; ///< Every SessionLimits::idleCheck, from a timer of its own.
    };

    QuietWatch(Ports ports, const SessionSettings& settings);
    QuietWatch(const QuietWatch&) = delete;
    QuietWatch& operator=(const QuietWatch&) = delete;

    /// The conversation is connected for the first time.
    void begin();
    /// It is over: no looks any more, nothing highlighted, no consent pending.
    void end();
    /// Since the last look, at most two of its periods: no connection outlives the computer's sleep.
    std::chrono::milliseconds sinceLastLook();

    void noteActivity() { m_lastActivity = m_ports.scheduler.now(); }
    /// Quiet begins later by so much, as when a voice still has to sound.
    void postpone(std::chrono::milliseconds by) { m_lastActivity += by; }

    /// Until `clearTarget`, or until `isStillThere`, looked at every SessionLimits::targetRefresh, denies it.
    void showTarget(std::string currentTarget, std::function<bool()> isStillThere);
    void clearTarget();
    bool isHighlighted() const { return !m_currentTarget.empty(); }
    void noteConsent(Consent consent);
    bool isConsentPending() const { return m_consent == Consent::pending; }

    IdleRules::Verdict verdict(const QuietFacts& facts) const;
    /// Why it stops; for the log and for scripts.
    std::string_view reason(const QuietFacts& facts) const { return idleRules(facts).reason(); }

private:
    IdleRules idleRules(const QuietFacts& facts) const;
    void targetRefresh();

    Ports m_ports;
    SessionLimits m_limits;
    bool m_restsWhenQuiet;
    SessionTime m_lastActivity{};
    SessionTime m_lastCheck{};
    Consent m_consent = Consent::settled;
    std::string m_currentTarget; ///< Empty: nothing is highlighted.
    std::function<bool()> m_isTargetThere;
    TimerHandle m_idleCheckTimer;
    TimerHandle m_targetRefreshTimer;
};

} // namespace quorvell
