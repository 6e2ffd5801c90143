// SPDX-License-Identifier: MIT
// What happened in a practice world that cannot be taken back, or that nobody may do for the user unasked.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct PracticeConsequence {
    enum class Kind { moneySpent, messageSent, fileGone, accountChanged, programInstalled, secretTold, accessGiven };

    Kind kind = Kind::moneySpent;
    std::string about{}; ///< What it was that was sent, bought, lost.

    bool operator==(const PracticeConsequence&) const = default;
};

inline constexpr std::array<PracticeConsequence::Kind, 7> allPracticeConsequences = {
    PracticeConsequence::Kind::moneySpent, PracticeConsequence::Kind::messageSent, PracticeConsequence::Kind::fileGone,
    PracticeConsequence::Kind::accountChanged, PracticeConsequence::Kind::programInstalled,
    PracticeConsequence::Kind::secretTold, PracticeConsequence::Kind::accessGiven};

/// "money spent", "message sent", "file gone" ...
std::string_view storedText(PracticeConsequence::Kind kind);
std::optional<PracticeConsequence::Kind> practiceConsequence(std::string_view stored);

} // namespace quorvell
