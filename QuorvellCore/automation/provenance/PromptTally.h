// SPDX-License-Identifier: MIT
// How often the user was asked in one task, so that safety does not turn into nagging unnoticed.
#pragma once

#include "QuorvellCore/automation/provenance/ProvenanceRisk.h"

namespace quorvell {

struct PromptTally {
    int byGuard = 0;
    int byProvenance = 0;

    void asked(ActionVerdict::Reason reason)
    {
        byGuard += reason == ActionVerdict::Reason::guard ? 1 : 0;
        byProvenance += reason == ActionVerdict::Reason::provenance ? 1 : 0;
    }
    int all() const { return byGuard + byProvenance; }

    bool operator==(const PromptTally&) const = default;
};

} // namespace quorvell
