// SPDX-License-Identifier: MIT
// By name.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <functional>
#include <set>
#include <string>

namespace quorvell {

using OfferedTools = std::set<std::string, std::less<>>;

/// What a client declares.
OfferedTools offeredTools(const Json& declarations);

} // namespace quorvell
