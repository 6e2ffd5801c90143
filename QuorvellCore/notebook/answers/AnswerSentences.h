// SPDX-License-Identifier: MIT
// The sentences of notes that hold the answer to a question. Pure. Nothing is worded anew: what is found stands in a
// note.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/notebook/answers/QuestionWords.h"

#include <string>
#include <vector>

namespace quorvell {

struct AnswerSentence {
    std::size_t note = 0; ///< Which of those that were looked through.
    std::string text{}; ///< One line.
    double score = 0; ///< The higher the better; only for comparing.

    bool operator==(const AnswerSentence&) const = default;
};

struct AnswersFound {
    std::vector<AnswerSentence> sentences{}; ///< Best first, one of a note.
    std::vector<std::size_t> near{}; ///< Notes that speak of some of it, where no sentence holds it all; best first.

    bool operator==(const AnswersFound&) const = default;
};

struct AnswerSentences {
    static constexpr std::size_t mostSentences = 5;
    static constexpr std::size_t mostNear = 3;
    static constexpr std::size_t longestSentence = 400; ///< Characters.
    static constexpr std::size_t longestNote = 20'000; ///< Bytes of a note that are looked through.

    static AnswersFound find(const QuestionWords& question, const std::vector<Note>& notes);
};

} // namespace quorvell
