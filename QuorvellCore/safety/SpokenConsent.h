// SPDX-License-Identifier: MIT
// Whether what the user said in answer to a question is a clear yes.
#pragma once

#include <string_view>

namespace quorvell {

/// Consent is asked before anything that matters, so every doubt counts as none. English; any thread.
struct SpokenConsent {
    /// A yes and nothing that does more than confirm it: "yes please send it", "uh okay, go ahead".
    static bool isAffirmative(std::string_view answer);

    /// The same where the words of the question may come back: "yes, please remember it" to "shall I remember this?".
    static bool agreesTo(std::string_view question, std::string_view answer);

    /// The speaker holds back, takes it back or asks in turn: "wait", "yes, but not yet", "send it?".
    static bool hesitates(std::string_view answer);

    /// "Um": neither a yes nor anything else yet.
    static bool isStillThinking(std::string_view answer);
};

} // namespace quorvell
