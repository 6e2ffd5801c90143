// SPDX-License-Identifier: MIT
// Why a fact must not be kept, worded for the model: it holds a password, a card, an account or an identity number, or
// a code.
#pragma once

#include <string>

namespace quorvell {

/// Names and telephone numbers are no such thing. Empty when it may be kept. When in doubt it may not.
std::string privateFactProblem(const std::string& fact);

} // namespace quorvell
