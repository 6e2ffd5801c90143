// SPDX-License-Identifier: MIT
// Slips of the keyboard in the few words that requests are made of: "shedule", "calender", "alram".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct CueSpelling {
    /// With those words put right that can be nothing else: where a request begins, and behind "in my" and the like.
    /// What is to be kept, names and tasks, stays as it was typed.
    static std::string repaired(std::string_view words);
};

} // namespace quorvell
