// SPDX-License-Identifier: MIT
// Tells whether the user asks the assistant to leave.
#pragma once

#include "QuorvellCore/automation/engine/pim/PimSelection.h"
#include "QuorvellCore/automation/engine/pim/PimService.h"

namespace quorvell {

/// A value; its transport and its breaker are shared. Any thread.
struct PimDismissalClassifier {
    static constexpr std::chrono::milliseconds timeout{2'000};
    static constexpr double leastProbability = 0.7;
    static constexpr std::size_t longestUtterance = 2'000; ///< User-perceived characters; who says more stays.

    std::string apiKey{};
    std::shared_ptr<DecisionHTTP> http{};
    /// Called on the asking thread for each answer: the choice, its confidence and its probability.
    std::function<void(const PimSelection&)> onClassification{};
    std::string host{}; ///< "https://selector.example", without the path.
    std::shared_ptr<SharedPimBreaker> breaker{}; ///< Shared with the selector; null: always asked.

    /// Waits for the service; without a key the table of plain farewells tells at once. Nobody is dismissed by a
    /// failure.
    bool shouldDismiss(std::string_view utterance, std::stop_token stop) const;

    /// Whether the words are a farewell and nothing else: "okay, thanks, goodbye". For where there is no key.
    static bool isPlainFarewell(std::string_view text);
};

} // namespace quorvell
