// SPDX-License-Identifier: MIT
// What the voice gives for a reply, in this order for each sentence: began, samples (any number), ended.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorvell {

struct VoicePiece {
    enum class Kind { sentenceBegan, samples, sentenceEnded, replyEnded };

    int reply = 0;
    Kind kind = Kind::samples;
    std::string sentence{}; ///< With sentenceBegan.
    std::vector<std::int16_t> samples{}; ///< At the session's rate.

    bool operator==(const VoicePiece&) const = default;
};

} // namespace quorvell
