// SPDX-License-Identifier: MIT
// Hears a plain stop in what the user says, without waiting for the model.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <functional>
#include <string>

namespace quorvell {

/// Main thread; the scheduler is borrowed.
class StopWords {
public:
    /// "Stop" may be the beginning of "stop the music".
    static constexpr std::chrono::milliseconds settle{300};

    StopWords(Scheduler& scheduler, std::function<void()> said);

    /// All that was heard of an utterance so far.
    void hear(const std::string& words);
    /// An utterance, spoken or typed, is complete.
    void complete(const std::string& words);
    /// What was heard so far comes again.
    void forget();

private:
    void tell();

    Scheduler& m_scheduler;
    std::function<void()> m_said;
    bool m_isTold = false; ///< Of the utterance that is coming in.
    TimerHandle m_timer;
};

} // namespace quorvell
