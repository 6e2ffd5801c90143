// SPDX-License-Identifier: MIT
// What of a step's context leaves the device for a model.
#pragma once

#include "QuorvellCore/automation/decisions/DecisionContext.h"

#include <cstddef>

namespace quorvell {

/// A copy with the first `mostCandidates` elements, of those with one id only the first; without the values of secret
/// elements and those that look like a secret, in the history too. The picture is left out: nothing redacts it.
DecisionContext tellableContext(const DecisionContext& context, std::size_t mostCandidates);

} // namespace quorvell
