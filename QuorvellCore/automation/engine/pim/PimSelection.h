// SPDX-License-Identifier: MIT
// One answer of the classifier to one question.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct PimSelection {
    std::string decision{}; ///< The name of the chosen option.
    double confidence = 0; ///< 0 to 1, as the next two.
    double probability = 0; ///< Of the chosen option.
    std::optional<double> sensitivity{}; ///< Of the step, where one was asked about.

    bool operator==(const PimSelection&) const = default;
};

} // namespace quorvell
