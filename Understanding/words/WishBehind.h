// SPDX-License-Identifier: MIT
// Requests whose matter is said first: "we are out of coffee, put it on the list". Pure.
#pragma once

#include <string>

namespace quorvell {

struct WishBehind {
    /// With the wish in front, "add coffee to the list". What has a time is to be put into the calendar; what names
    /// neither a list nor a time stays as it was.
    static std::string inFront(const std::string& words);
};

} // namespace quorvell
