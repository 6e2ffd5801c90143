// SPDX-License-Identifier: MIT
// The question that is added where words that matter came from outside and not from the user.
#pragma once

#include "QuorvellCore/automation/proposals/ProposedAction.h"
#include "QuorvellCore/automation/provenance/ProvenanceGrants.h"
#include "QuorvellCore/safety/ActionRisk.h"

#include <string_view>

namespace quorvell {

/// Asks first, or is safe. `isTainted`: the conversation has read text from outside (ScreenTaint), so what the model
/// words itself may be somebody else's wish too.
ActionRisk provenanceRisk(const ProposedAction& proposed, bool isTainted);

/// The guard's verdict and the question that provenance adds, as one.
struct ActionVerdict {
    enum class Reason {
        none, ///< Safe.
        guard, ///< No grant covers it.
        provenance, ///< A question only because of where the words came from.
    };
    ActionRisk risk{};
    Reason reason = Reason::none;

    /// `app` is the application in front. Where the guard asks anyway, its question says as well where words came from.
    static ActionVerdict of(const ActionRisk& guard, const ProposedAction& proposed, bool isTainted,
        const ProvenanceGrants& grants, std::string_view app);

    bool operator==(const ActionVerdict&) const = default;
};

} // namespace quorvell
