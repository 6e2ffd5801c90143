// SPDX-License-Identifier: MIT
// A message for the model in words.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct LiveMessageText {
    enum class Answer { wanted, notWanted };
    enum class Lateness { stillUseful, worthless }; ///< What the message is when it has to wait.

    std::string text{};
    Answer answer = Answer::wanted;
    Lateness lateness = Lateness::stillUseful;
    std::optional<Bytes> jpeg{}; ///< A picture that goes with it.
    std::vector<std::string> sentences{}; ///< For the user: what it has the model tell them, if it tells anything.

    bool operator==(const LiveMessageText&) const = default;
};

} // namespace quorvell
