// SPDX-License-Identifier: MIT
// Turns a request round so that what is to be done stands in front. Pure.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"

#include <string>

namespace quorvell {

struct WishFirst {
    /// "remember that I have a dog" from "I have a dog, remember that", and "remind me to eat at 5" from "at 5 remind
    /// me to eat".
    static std::string of(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
