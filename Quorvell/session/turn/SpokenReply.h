// SPDX-License-Identifier: MIT
// The assistant's words beside the sound they belong to, so that a reply cut short is remembered as it was heard.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace quorvell {

struct SpokenReply {
    struct Piece {
        std::string words;
        std::chrono::milliseconds start{}; ///< How much sound of this reply had come before.
        bool operator==(const Piece&) const = default;
    };

    std::vector<Piece> pieces;
    std::chrono::milliseconds sound{}; ///< Of this reply, received so far.

    void addWords(const std::string& words);
    void addSound(std::chrono::milliseconds length) { sound += length; }
    bool isEmpty() const { return pieces.empty() && sound == std::chrono::milliseconds::zero(); }

    std::string text() const;
    /// What sounded in the first `played` of the reply: whole words, rather one too few than one too many.
    std::string heard(std::chrono::milliseconds played) const;

    bool operator==(const SpokenReply&) const = default;
};

} // namespace quorvell
