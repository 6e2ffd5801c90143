// SPDX-License-Identifier: MIT
// Whom people speak to by habit: "alexa", "ok google", "hey buddy,". Pure.
#pragma once

#include <string>

namespace quorvell {

struct AssistantName {
    /// Without a name that only calls the assistant. Where it may be somebody the request is about, it stays.
    static std::string removed(const std::string& words);
};

} // namespace quorvell
