// SPDX-License-Identifier: MIT
// Notices a service that owes a word and says none, though its connection is fine: it is asked whether it is there, and
// is silent when even that brings nothing.
#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace quorvell {

/// Main thread.
class SilenceWatch {
public:
    struct Reports {
        std::function<void()> doubted; ///< Ask it something that it answers at once.
        std::function<void()> wentSilent;
    };
    struct Limits {
        std::chrono::milliseconds patience; ///< Before the question.
        std::chrono::milliseconds answer; ///< To the question.
    };
    enum class Owes { nothing, more };

    SilenceWatch(Limits limits, Reports reports);

    /// It owes a word: it was asked something that is answered at once.
    void asked();
    /// It owes a word about sound when that has ended, unless it has said one meanwhile.
    void soundSent();
    void soundEnded();
    /// It has said something, whatever it was, and is or is not in the middle of something.
    void heard(Owes owes);

private:
    void losePatience();

    Limits m_limits;
    Reports m_reports;
    bool m_isDoubted = false;
    bool m_isSoundUnderWay = false;
    bool m_hasSpokenSince = false; ///< Since the sound began.
    QTimer m_patience;
    QObject m_context; ///< Receives the timer's signal; goes first.
};

} // namespace quorvell
