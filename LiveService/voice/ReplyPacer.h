// SPDX-License-Identifier: MIT
// Hands out a spoken reply at the pace at which it is heard. Pure: samples and times in, pieces out.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quorvell {

/// What to send next: words, or sound of at most one frame.
using PacedPiece = std::variant<std::string, std::vector<std::int16_t>>;

/// Sound is never more than a fifth of a second ahead of the listener, so that a reply can be broken off; words come
/// with the sound that speaks them. Sentences are voiced one after another, faster than they are heard; where the
/// voice falls behind, the clock waits for it. Not thread safe; lives with the session.
class ReplyPacer {
public:
    static constexpr std::chrono::milliseconds frame{40};
    static constexpr std::chrono::milliseconds ahead{200};

    explicit ReplyPacer(int sampleRateHz);

    void beginSentence(std::string_view sentence);
    void append(std::span<const std::int16_t> samples);
    void endSentence();
    /// Nothing more will come.
    void endReply();

    std::vector<PacedPiece> due(std::chrono::milliseconds now);
    /// When to ask again. Nothing while there is nothing to hand out.
    std::optional<std::chrono::milliseconds> nextDue() const;

    /// Forgets what was not handed out yet; the reply is over.
    void breakOff();
    /// From the first sentence until everything was handed out.
    bool isSpeaking() const { return m_isSpeaking; }
    /// Everything handed out since this was made.
    std::chrono::milliseconds spoken() const;

private:
    struct Words {
        std::size_t position = 0; ///< The sample of the reply that they come with.
        std::string text;
    };

    bool hasFrame() const;
    void takeWords(std::vector<PacedPiece>& pieces);
    void finishIfDone();

    std::size_t m_rate;
    std::size_t m_frameSamples;
    std::deque<std::int16_t> m_samples; ///< Not handed out yet.
    std::deque<Words> m_words;
    std::vector<std::string> m_laterGroups; ///< Of the sentence being voiced: placed once its length is known.
    std::size_t m_firstGroupBytes = 0;
    std::size_t m_sentenceStart = 0;
    std::size_t m_made = 0; ///< Samples of this reply, handed out or not.
    std::size_t m_handedOut = 0;
    std::size_t m_spokenBefore = 0; ///< Samples of earlier replies.
    std::chrono::microseconds m_heardUntil{}; ///< When the listener will have heard what was handed out.
    bool m_isSpeaking = false;
    bool m_isEnded = false;
};

} // namespace quorvell
