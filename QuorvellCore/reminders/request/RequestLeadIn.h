// SPDX-License-Identifier: MIT
// The polite words around a request for a reminder, beyond those that its patterns know.
#pragma once

#include <string>

namespace quorvell {

/// "Can you please remind me to call mum", "don't let me forget to call mum", "call mum please": without them.
std::string withoutPoliteWords(std::string task);

} // namespace quorvell
