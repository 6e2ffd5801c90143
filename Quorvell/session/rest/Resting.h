// SPDX-License-Identifier: MIT
// Dozing and waking within an active conversation: who listens meanwhile, what was heard, how long waking may take.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/DozeListener.h"
#include "Quorvell/session/reports/Doze.h"
#include "Quorvell/session/settings/SessionLimits.h"

#include <cstdint>
#include <span>
#include <string>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class Resting {
public:
    class Owner {
    public:
        virtual ~Owner() = default;
        virtual void dozeChanged(Doze doze) = 0;
        /// Connect again; finishWaking is called once that is done.
        virtual void wakingBegan() = 0;
        virtual void onsetAtRest() = 0;
        virtual void wordsHeardAtRest(const std::string& words) = 0;
        /// Nobody can listen at rest; `sentence` is for the user.
        virtual void restFailed(const std::string& sentence) = 0;
        virtual void wakingTookTooLong() = 0;
    };

    /// Without a listener it never rests.
    Resting(Scheduler& scheduler, DozeListener* listener, Owner& owner, SessionLimits limits);
    Resting(const Resting&) = delete;
    Resting& operator=(const Resting&) = delete;

    /// A conversation begins, awake. What failed before may work now.
    void begin();
    void doze();
    /// Something other than words wants the conversation back. Nothing while awake.
    void wake();
    /// Connected again. What the recogniser heard, for the model; empty when something else woke it.
    std::string finishWaking();
    /// Waking did not succeed; listens once more.
    void dozeAgain();
    void end();
    /// Sound for the listener; nothing unless dozing.
    void captured(std::span<const std::uint8_t> pcm);

    Doze state() const { return m_doze; }
    bool canRest() const { return m_dozeListener && !m_dozeFailed; }
    SessionTime dozedAt() const { return m_dozedAt; }
    int dozes() const { return m_dozes; } ///< In this conversation.

private:
    void setDoze(Doze doze);
    void listen();
    void heard(const std::string& words);
    void failed(const std::string& sentence);

    Scheduler& m_scheduler;
    DozeListener* m_dozeListener;
    Owner& m_owner;
    SessionLimits m_limits;
    Doze m_doze = Doze::awake;
    bool m_dozeFailed = false;
    int m_dozes = 0;
    SessionTime m_dozedAt{};
    std::string m_heardWhileDozing;
    TimerHandle m_wakingLimit;
};

} // namespace quorvell
