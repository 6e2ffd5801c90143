// Puts together what two models heard in the same sound. Pure.
#pragma once

#include "OnDeviceSpeech/HeardUtterance.h"

#include <vector>

namespace quorvell {

/// The command model knows how requests and times are said but only a few hundred words for what they are about; the
/// mixed model knows 130,000 words but mishears times. So the frame and the time come from the first, the free words
/// between them from the second.
struct SecondLook {
    /// The words of `command`, each stretch of free words replaced by what `mixed` heard at the same time.
    static std::vector<HeardWord> merged(const std::vector<HeardWord>& command, const std::vector<HeardWord>& mixed);

    /// Whether both heard the same request: it begins like one, and two thirds of what is not free words, and at
    /// least half of all words, are the same in both.
    static bool agree(const std::vector<HeardWord>& command, const std::vector<HeardWord>& mixed);
};

} // namespace quorvell
