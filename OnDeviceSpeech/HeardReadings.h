// Puts together what three models heard in the same sound. Pure.
#pragma once

#include "OnDeviceSpeech/HeardUtterance.h"

#include <vector>

namespace quorvell {

/// The words carry the marks of the command models (WordMarks.h).
/// The trigram knows how requests and times are said, but only some hundred words for what they are about. The grammar
/// knows the same times and beginnings and lets anything else pass, so that it can also say "no request at all". The
/// open model knows every word, but less about times.
struct HeardReadings {
    std::vector<HeardWord> trigram;
    std::vector<HeardWord> grammar;
    std::vector<HeardWord> open;

    /// Whether the trigram confirms the request that the grammar heard.
    bool isCommand() const;
    /// The open model's words, with the times and the beginning that trigram and grammar are sure of; without marks.
    std::vector<HeardWord> merged() const;
};

} // namespace quorvell
