// SPDX-License-Identifier: MIT
// Whether what the user is said to have said may settle a question at all, by how it came.
#pragma once

#include "QuorvellCore/safety/HeardUtterance.h"

#include <chrono>
#include <string_view>

namespace quorvell {

/// A yes can be made up by a service, heard in our own voice, pasted, or meant for what was asked before. What it says
/// is judged elsewhere (SpokenConsent). Any thread.
struct ConsentEvidence {
    enum class Verdict {
        counts,
        pasted, ///< None of it is their own.
        unheard, ///< The microphone heard nothing that these could be the words of.
        tooEarly, ///< It was spoken before all of the question, or of what else our voice says, had sounded.
        echoed, ///< Our own voice said some of these words meanwhile.
    };

    /// `askedAt`: when the last of the question had sounded or, where it was shown, when it was. Whoever types or
    /// presses has seen what is shown by then: that they do it after the question is for the caller to know.
    [[nodiscard]] static Verdict judge(const HeardUtterance& heard, std::chrono::milliseconds askedAt);
};

/// For the log.
std::string_view nameOf(ConsentEvidence::Verdict verdict);

} // namespace quorvell
