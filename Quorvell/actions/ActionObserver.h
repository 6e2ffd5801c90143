// SPDX-License-Identifier: MIT
// For whoever has to know what became of everything that was proposed, whoever proposed it.
#pragma once

#include "Quorvell/actions/ActionResult.h"
#include "QuorvellCore/automation/proposals/ProposedAction.h"

namespace quorvell {

/// Main thread. Called by whoever runs actions, once nothing of the action holds the gate any more; it may propose the
/// next one, but not from inside the call.
class ActionObserver {
public:
    enum class QuestionEnd {
        carriedOut, ///< After the user's own yes: `result` tells what came of it.
        refused, ///< They said no.
        dropped, ///< Lapsed, replaced by another question, or ended with what it belonged to.
    };

    virtual ~ActionObserver() = default;

    /// Beside every answer of ActionRunner::run, the ones that wait for a yes included.
    virtual void actionEnded(const ProposedAction& action, const ActionResult& result) = 0;
    /// Of an action that waited for a yes; `result` counts only where it was carried out.
    virtual void questionEnded(const ProposedAction& action, QuestionEnd end, const ActionResult& result) = 0;
};

} // namespace quorvell
