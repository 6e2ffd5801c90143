// SPDX-License-Identifier: MIT
// The keys that the user has for hosted services. Never printed and never logged.
#pragma once

#include "Quorvell/preferences/LiveBackend.h"

#include <map>
#include <string>

namespace quorvell {

using LiveKeys = std::map<LiveBackend, std::string>;

} // namespace quorvell
