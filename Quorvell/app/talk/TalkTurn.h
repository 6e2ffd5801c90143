// SPDX-License-Identifier: MIT
// Holds one spoken turn: plays a recording into the microphone's place at the pace of speech, goes on with silence as a
// quiet room would, and ends once the answer is complete.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/reports/SessionObserver.h"
#include "Quorvell/session/settings/SessionLimits.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread.
class TalkTurn : public SessionObserver {
public:
    struct Outcome {
        bool isAnswered = false;
        std::string problem; ///< A sentence for the user, unless the session has told of the problem itself.
    };

    struct Ports {
        Scheduler& scheduler;
        std::function<void()> inputEnded; ///< The recording was played to its end.
        std::function<void(const Outcome&)> finished;
    };

    /// Quiet before the recording, by which the gate learns what the room sounds like.
    static constexpr std::chrono::milliseconds leadIn{480};
    /// For more words of the recording to be answered, when an answer came before its end.
    static constexpr std::chrono::milliseconds lateWords{3'000};
    /// For the first words to be understood after the end of the recording.
    static constexpr std::chrono::milliseconds understanding{20'000};

    /// The pauses of a recording are not the user's silence: the conversation waits them out.
    static SessionLimits limitsFor(std::size_t samples);

    /// Mono at MicrophoneStream::sampleRateHz.
    TalkTurn(Ports ports, std::vector<std::int16_t> recording);

    void begin(SessionController& session);
    void interrupt();

    void phaseChanged(SessionPhase phase) override;
    void userSaid(const std::string& text, Words words) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void startPlaying();
    void play();
    void feedChunk();
    bool hasInputEnded() const { return m_position >= m_recording.size(); }
    void judge();
    std::string problemOfNothingUnderstood() const;
    std::string problemOfUnheardRest() const;
    void end(std::string problem);

    Ports m_ports;
    std::vector<std::int16_t> m_recording; ///< With the lead-in before it.
    SessionController* m_session = nullptr;
    std::size_t m_position = 0;
    SessionTime m_start{};
    SessionTime m_inputEnd{};
    std::int64_t m_chunksFed = 0;
    bool m_wasUnderstood = false; ///< Words came back.
    bool m_isAnswered = false; ///< A turn was.
    bool m_isUnanswered = false; ///< The last turn was given up.
    bool m_isEnding = false;
    std::string m_problem;
    TimerHandle m_ticks;
};

} // namespace quorvell
