// SPDX-License-Identifier: MIT
// Cuts what a model writes into sentences that may be said, as they come. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// What only looks like an answer is held back: forms for programs, and that something was done. What was done is told
/// by the rules, from what the tool answered; a model's word for it proves nothing.
class ModelSentences {
public:
    /// Whole sentences of what came so far.
    std::vector<std::string> add(std::string_view text);
    /// Nothing more will come.
    std::vector<std::string> end();

    /// The model wrote that it did something.
    bool hasClaimed() const { return m_hasClaimed; }

    static bool claimsAct(std::string_view sentence);

private:
    void keep(std::string sentence, std::vector<std::string>& kept);

    std::string m_rest;
    bool m_hasClaimed = false;
    bool m_isForPrograms = false;
};

} // namespace quorvell
