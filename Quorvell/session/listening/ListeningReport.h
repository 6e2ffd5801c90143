// SPDX-License-Identifier: MIT
// What listening to the user leads to.
#pragma once

#include "QuorvellCore/live/gate/MicGateOutput.h"

#include <variant>
#include <vector>

namespace quorvell {

namespace listening_report {

/// The key or the mute switch ended what the user was saying; `ending` is how it ends on the wire.
struct SpeechCut {
    std::vector<MicGateOutput> ending;
};
/// What the user said was taken up by nobody.
struct RequestMissed { };

} // namespace listening_report

using ListeningReport = std::variant<listening_report::SpeechCut, listening_report::RequestMissed>;

} // namespace quorvell
