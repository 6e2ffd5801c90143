// SPDX-License-Identifier: MIT
// What a conversation learns while it rests and wakes.
#pragma once

#include <string>
#include <variant>

namespace quorvell {

namespace rest_report {

/// Somebody began to speak; words may follow.
struct Onset { };
/// One utterance, understood on the device.
struct Heard {
    std::string words;
};
/// Nobody can listen; `sentence` is for the user.
struct Failed {
    std::string sentence;
};
struct WakingTookTooLong { };

} // namespace rest_report

using RestReport =
    std::variant<rest_report::Onset, rest_report::Heard, rest_report::Failed, rest_report::WakingTookTooLong>;

} // namespace quorvell
