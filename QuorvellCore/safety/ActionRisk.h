// SPDX-License-Identifier: MIT
// The guard's verdict on one action, and the sentence that goes with it.
#pragma once

#include <string>

namespace quorvell {

/// A value. Anything but `safe` has a text that is spoken as it stands.
struct [[nodiscard]] ActionRisk {
    /// From the mildest to the strictest.
    enum class Case {
        safe,
        askFirst, ///< Runs only after a yes to the text, which is a question.
        never, ///< Does not run; the text says why. The user may do it personally.
    };

    Case kind = Case::safe;
    std::string text{};

    static ActionRisk safe() { return {}; }
    static ActionRisk askFirst(std::string question);
    static ActionRisk never(std::string reason);

    /// Of two of the same case, the first.
    static ActionRisk strictest(ActionRisk a, ActionRisk b);
    /// Another question, where it is one that asks; else unchanged.
    ActionRisk withQuestion(std::string question) const;

    bool isSafe() const { return kind == Case::safe; }

    bool operator==(const ActionRisk&) const = default;
};

} // namespace quorvell
