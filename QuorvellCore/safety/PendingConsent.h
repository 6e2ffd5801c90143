// SPDX-License-Identifier: MIT
// A question that only the user's own yes settles, and what was said since: whether a yes is one to this very question.
#pragma once

#include "QuorvellCore/safety/ConsentEvidence.h"
#include "QuorvellCore/safety/HeardUtterance.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quorvell {

/// A yes is easily borrowed: somebody who is offered the weather says "yes please" too. So one counts only when the
/// last thing that was put to the user before it is the question, word for word, and nothing else was asked from there
/// until the yes is used. What is said in other words counts as not asked. All times by the one clock of
/// HeardUtterance. A value; any thread.
class PendingConsent {
public:
    /// From the question on; later a yes is an old one.
    static constexpr std::chrono::minutes longestMemory{5};

    enum class Answer {
        none, ///< Not asked yet, not answered yet, or too long ago.
        borrowed, ///< Something else was asked: whatever they said may belong to that.
        yes,
        no, ///< Anything but a clear yes. It stays one, whatever follows.
    };

    explicit PendingConsent(std::string question)
        : m_question(std::move(question))
    {
    }

    /// Whoever hears it may take it for a question, with its mark or without.
    static bool asksSomething(std::string_view text);

    const std::string& question() const { return m_question; }
    /// The same words; case, punctuation and spaces apart.
    bool isAbout(std::string_view question) const;

    /// One whole utterance of the assistant, or of the program itself. `at`: when the last of it had sounded or, where
    /// it was shown, when it was.
    void assistantSaid(std::string_view text, std::chrono::milliseconds at);
    /// The user's own words. Pieces of one answer count together: "yes", then "no wait". Those that may settle nothing
    /// (ConsentEvidence) count only where they hold back. Nothing is told of words that nobody asked for.
    std::optional<ConsentEvidence::Verdict> userSaid(const HeardUtterance& heard);

    /// The user has been asked, and nothing was said since.
    bool isAsked() const { return m_state == State::asked; }
    /// They said a clear yes, and have not taken it back.
    bool isAgreed() const { return m_state == State::agreed; }
    /// Nobody has put the question yet, and nothing else was asked.
    bool isToBePut() const { return m_state == State::unasked; }
    Answer answer(std::chrono::milliseconds now) const;

private:
    enum class State { unasked, asked, agreed, declined, borrowed };

    std::string m_question;
    State m_state = State::unasked;
    std::string m_heardSinceAsk;
    std::string m_ownSinceAsk; ///< Of that, what was not pasted.
    std::chrono::milliseconds m_askedAt{};
};

} // namespace quorvell
