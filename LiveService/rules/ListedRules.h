// SPDX-License-Identifier: MIT
// What is done with one of the things of the list that was told last: "cancel the second one".
#pragma once

#include "LiveService/rules/NoteIntent.h"
#include "LiveService/rules/RequestReader.h"
#include "LiveService/rules/RuleStep.h"

#include <optional>

namespace quorvell {

struct ListedRules {
    /// Nothing for a request that does not point into the list.
    static std::optional<RuleStep> change(
        const Request& request, const RequestMemory& memory, const RuleSurroundings& around);
    /// Reads the one that is meant where it is a note; of the others it says which it is, and "it" means it then.
    static RuleStep read(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
