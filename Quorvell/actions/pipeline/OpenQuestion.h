// SPDX-License-Identifier: MIT
// The one action that waits for the user's yes, from its question to whatever ends that.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/actions/pipeline/PendingAction.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/consent/ConsentWords.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class OpenQuestion {
public:
    /// It ended without a yes. Not called into from there.
    using Ended = std::function<void(const ProposedAction& action, ActionObserver::QuestionEnd end)>;

    OpenQuestion(Scheduler& scheduler, ConsentWords& consent, Ended ended);
    OpenQuestion(const OpenQuestion&) = delete;
    OpenQuestion& operator=(const OpenQuestion&) = delete;

    const std::optional<PendingAction>& pending() const { return m_pending; }
    bool isInTheseWords(const std::string& question) const;
    /// The same thing, on the look that `action` has. Two buttons may have one name, and so one question: a yes to the
    /// one is none to the other.
    bool isAbout(const PendingAction& action) const;

    /// Puts it to the user; one that is open is over. Times and numbers are set here.
    void open(PendingAction action);
    /// The same once more: as it is seen now.
    void renew(PendingAction action);
    void putAgain();
    /// What they said yes to: good for one thing, once. Only while there is one.
    PendingAction take();
    void end(ActionObserver::QuestionEnd end);
    /// The question itself is over already.
    void drop(ActionObserver::QuestionEnd end);
    void dropIfTooOld(); ///< Timers stand still while the computer sleeps.
    /// Ends it where another application is in front and it is done to what is.
    void noteLook(const ScreenLook& look);

private:
    Scheduler& m_scheduler;
    ConsentWords& m_consent;
    Ended m_ended;
    std::optional<PendingAction> m_pending;
    std::uint64_t m_number = 0;
    TimerHandle m_lapse;
    std::shared_ptr<OpenQuestion*> m_self; ///< Whoever keeps the question may outlive it.
};

} // namespace quorvell
