// SPDX-License-Identifier: MIT
// Tells addresses of this very computer from names that look like one.
#pragma once

#include <string_view>

namespace quorvell {

/// 127.0.0.0/8 in four decimal numbers. Anything else is a name that somebody may answer for: "127.evil.example", and
/// "127.999.1.1" too. Leading zeros would be octal to some resolvers.
bool isLoopbackAddress(std::string_view host);

} // namespace quorvell
