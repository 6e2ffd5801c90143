// SPDX-License-Identifier: MIT
// The form of a decision as a JSON schema, made from the same table of fields that reads it.
#pragma once

#include "QuorvellCore/text/Json.h"

namespace quorvell {

/// Strict: every member is required, and what is not set is null.
Json decisionSchema();

} // namespace quorvell
