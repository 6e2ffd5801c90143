// SPDX-License-Identifier: MIT
// What there is to say about what can be done with the tools that a session offered.
#pragma once

#include <string>

namespace quorvell {

struct SkillSummary {
    std::string abilities{}; ///< A sentence.
    std::string help{}; ///< The same with an example.
};

} // namespace quorvell
