// SPDX-License-Identifier: MIT
// Ends the conversation once the user has said goodbye and was answered.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quorvell {

/// Whatever else they say takes it back. Main thread; what it borrows must outlive it.
class Farewell final : public SessionObserver, public ActionWatch {
public:
    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        /// Whether these words ask to end the conversation: answered at once, or later on the main thread.
        std::function<void(const std::string& words, std::function<void(bool isFarewell)> answer)> classify;
        std::function<bool()> isTurnOpen;
        std::function<bool()> isWorking; ///< Something that was asked for is not done yet.
        std::function<void()> leave;
    };

    explicit Farewell(Ports ports);
    Farewell(const Farewell&) = delete;
    Farewell& operator=(const Farewell&) = delete;

    using SessionObserver::userSaid;
    void userSaid(const HeardUtterance& heard) override;
    void turnCompleted(TurnOutcome outcome) override;
    void ended() override;

private:
    void classified(std::uint64_t utterance, bool isFarewell);
    void leaveSoon();

    Ports m_ports;
    std::uint64_t m_utterances = 0;
    bool m_isLeaving = false;
    TimerHandle m_leave;
    std::shared_ptr<Farewell*> m_self; ///< An answer may come when it is long gone.
};

} // namespace quorvell
