// SPDX-License-Identifier: MIT
// What verbs mean to an assistant: "key in", "draft" and "fix up" make, "revoke" and "scratch" remove. Pure.
#pragma once

#include <string>

namespace quorvell {

struct DeedWords {
    /// With the plain verb in front that every skill knows: "cancel" for "revoke" in "please revoke my 6:30 alarm",
    /// "delete eggs" for "eggs delete". A verb that is as often a task ("fix the roof") is taken for one unless a noun
    /// of ours follows.
    static std::string plain(const std::string& words);
};

} // namespace quorvell
