// SPDX-License-Identifier: MIT
// Which tools a session may call.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <functional>
#include <set>
#include <string>

namespace quorvell {

/// By name.
using OfferedTools = std::set<std::string, std::less<>>;

/// What a client declares.
OfferedTools offeredTools(const Json& declarations);

} // namespace quorvell
