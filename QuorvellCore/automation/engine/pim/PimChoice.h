// SPDX-License-Identifier: MIT
// Reads one answer of the classifier to a question with options.
#pragma once

#include "QuorvellCore/automation/engine/pim/PimSelection.h"
#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct PimChoice {
    /// Probabilities may miss 1 by this much together; exactly this much still counts.
    static constexpr double roundingOfSum = 0.02;

    /// Nothing unless `answer` chooses one of the options that were offered, gives each of them and nothing else a
    /// probability of 0 to 1, these make 1 together, and none is more probable than the one that is chosen.
    static std::optional<PimSelection> choice(const Json& answer, const std::vector<std::string>& allowed);

    /// A number from 0 to 1.
    static std::optional<double> reading(const Json& object, std::string_view key);
};

} // namespace quorvell
