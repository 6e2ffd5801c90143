// SPDX-License-Identifier: MIT
// Decides where the user's turns begin and end in the sound that a client sends. Pure: samples and times in, events
// out.
#pragma once

#include "LiveService/turns/TurnPatience.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace quorvell {

/// What happened in the sound, in order.
struct TurnEvent {
    enum class Kind {
        began, ///< The user started to speak.
        heard, ///< `samples` belong to the turn; the first ones lie before the moment that showed it had begun.
        paused, ///< They fell silent: `pause` numbers the moment. What was said so far tells how long to wait.
        ended, ///< `speech` says how much of the turn was loud.
    };

    Kind kind = Kind::heard;
    std::vector<std::int16_t> samples{};
    std::chrono::milliseconds speech{};
    int pause = 0;

    bool operator==(const TurnEvent&) const = default;
};

/// Judges frames of 20 ms against the noise of the room. Times come from any clock that only moves forward.
/// Not thread safe; lives with the session.
class TurnDetector {
public:
    static constexpr std::chrono::milliseconds frame{20};
    static constexpr std::chrono::milliseconds preRoll{300}; ///< Kept from before the onset: no first syllable is lost.
    /// Quiet after which it is asked what was said so far, and asked again, since the words come late.
    static constexpr std::chrono::milliseconds firstAsk{140};
    static constexpr std::chrono::milliseconds secondAsk{460};
    static constexpr std::chrono::milliseconds longestDelay{900}; ///< A busy computer holds sound up for so long.
    static constexpr std::chrono::milliseconds endGap{350}; ///< Of a client that stops sending at the end of a turn.
    static constexpr std::chrono::milliseconds leastGap{200}; ///< Of such a client; quiet before it counts.
    static constexpr std::chrono::milliseconds longestTurn{30'000};

    explicit TurnDetector(int sampleRateHz);

    /// Sound that comes late belongs to the turn unless `look` has ended it.
    std::vector<TurnEvent> take(std::span<const std::int16_t> samples, std::chrono::milliseconds now);
    /// To be called when nextLook has come: ends a turn whose client stopped sending.
    std::vector<TurnEvent> look(std::chrono::milliseconds now);

    /// The answer to `paused`: what was said so far, nothing where no words were heard. Too late for a pause that is
    /// over.
    std::vector<TurnEvent> judge(int pause, std::optional<UtteranceShape> shape);

    /// The client says itself that its sound pauses: ends the turn, and forgets what did not become one.
    std::vector<TurnEvent> finish();

    bool isOpen() const { return m_isOpen; }
    /// When the turn ends unless sound arrives. Only while a turn is open.
    std::chrono::milliseconds nextLook() const;

private:
    using Frame = std::vector<std::int16_t>;

    void takeFrame(Frame samples, std::vector<TurnEvent>& events);
    void listenForOnset(Frame samples, bool isLoud, std::vector<TurnEvent>& events);
    void followTurn(const Frame& samples, bool isLoud, std::vector<TurnEvent>& events);
    void askWhatWasSaid(std::vector<TurnEvent>& events);
    void end(std::vector<TurnEvent>& events);

    std::size_t m_frameSamples;
    Frame m_partial; ///< Less than one frame.
    std::deque<float> m_levels; ///< Of the last frames; the smallest is the noise of the room.
    std::deque<Frame> m_before; ///< The pre-roll while no turn is open.
    std::deque<bool> m_recentLoud;
    bool m_isOpen = false;
    int m_turnFrames = 0;
    int m_loudFrames = 0;
    int m_quietFrames = 0; ///< Since the last loud one.
    int m_quietAtEnd = 0; ///< Frames of quiet that ended the last turn; 0 where something else did.
    int m_framesSinceEnd = 0;
    int m_pause = 0; ///< Number of the last question what was said.
    std::chrono::milliseconds m_wait = TurnPatience::unknown; ///< Of this pause.
    TurnPatience m_patience;
    bool m_stopsSending = false; ///< The client did when the last turn was over, as with a key that is held to talk.
    std::chrono::milliseconds m_lastSound{};
};

} // namespace quorvell
