// SPDX-License-Identifier: MIT
// The status line of a spoken conversation: whose turn it is, how loud the microphone is, how long was spoken today.
#pragma once

#include "Quorvell/app/terminal/StatusLine.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace quorvell {

/// Main thread.
class TalkStatus : public SessionObserver {
public:
    static constexpr std::chrono::milliseconds tick{200}; ///< Often enough for a level meter, seldom enough to be free.
    static constexpr int meterWidth = 8;
    /// A short wait for an answer needs no count.
    static constexpr std::chrono::milliseconds worthCounting{2'000};

    /// Both are borrowed. `secondsToday` may be asked at any time.
    TalkStatus(Scheduler& scheduler, StatusLine& line, std::function<double()> secondsToday);

    /// The microphone's sound, for the meter.
    void captured(std::span<const std::uint8_t> pcm);

    void phaseChanged(SessionPhase phase) override;
    void restChanged(Doze doze) override;
    void linkChanged(Link link) override;
    void earChanged(Ear ear) override;
    void userSaid(const std::string& text, Words words) override;
    void thoughtChanged(const ThoughtSummary& thought) override;
    void assistantWordsHeard(const std::string& delta) override;
    void turnCompleted(TurnOutcome outcome) override;
    void toolCalled(const LiveFunctionCall& call) override;
    void toolAnswered(const LiveFunctionResponse& response) override;

    /// "▮▮▮▯▯▯▯▯" for a level from 0 to 1.
    static std::string meter(float level);

private:
    enum class Answer { none, awaited, heard };

    void tell();
    std::string state() const;
    std::string thinking() const;
    std::string work() const;

    Scheduler& m_scheduler;
    StatusLine& m_line;
    std::function<double()> m_secondsToday;
    SessionPhase m_phase = SessionPhase::idle;
    Doze m_doze = Doze::awake;
    Link m_link = Link::steady;
    Ear m_ear = Ear::closed;
    Answer m_answer = Answer::none;
    SessionTime m_asked{}; ///< When the user last spoke.
    std::string m_thought; ///< About what the user said last.
    std::string m_tool; ///< That runs.
    float m_level = 0; ///< The loudest since the last tick.
    TimerHandle m_ticks;
};

} // namespace quorvell
