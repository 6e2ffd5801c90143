// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionOutcome.h"

#include <string>

namespace quorvell {

namespace {

using Kind = ActionResult::Kind;

ActionResult notDone(const ScreenOutcome& outcome)
{
    if (outcome.kind == ScreenOutcome::Kind::unknown)
        return {.kind = Kind::unknown,
            .words = (outcome.problem.empty() ? "The application did not answer." : outcome.problem)
                + " It may be done or not: look before you do it again, and don't tell them that it is done."};
    return {.kind = Kind::failed,
        .words = outcome.problem.empty() ? "It could not be done, and nothing was." : outcome.problem};
}

/// Of an action that was handed to the application.
ActionResult checked(const std::optional<Postcondition>& expected, const AutomationObservation& before,
    const AutomationObservation& after)
{
    if (!expected) {
        const bool hasChanged = Postcondition{Postcondition::Kind::changed, {}}.verified(before, after);
        return {.isVerified = hasChanged, .words = hasChanged ? "Done." : "Done, but nothing on the screen changed."};
    }
    if (expected->kind == Postcondition::Kind::userCheck)
        return {.words = "Done. Whether it worked only they can tell: ask them."};
    if (expected->verified(before, after))
        return {.isVerified = true, .words = "Done, and what was expected of it shows."};
    return {.kind = Kind::failed,
        .words = "It was done, but what was expected of it does not show. Look at what the screen says before you try "
                 "anything else."};
}

} // namespace

ActionResult ActionOutcome::stoppedAt(ScreenOutcome::Kind reached)
{
    switch (reached) {
    case ScreenOutcome::Kind::done:
        return {.kind = Kind::stopped,
            .words = "They stopped you, but the action was done already when that came. What it led to was not looked "
                     "at. Tell them so."};
    case ScreenOutcome::Kind::failed:
        return {.kind = Kind::stopped, .words = "They stopped you. Nothing was done."};
    case ScreenOutcome::Kind::stopped:
        return {.kind = Kind::stopped,
            .words = "They stopped you on the way, so it may be done in part. Do nothing more until they say so."};
    case ScreenOutcome::Kind::unknown:
        return {.kind = Kind::stopped,
            .words = "They stopped you, and whether it was done is not known. Tell them just that."};
    }
    return {.kind = Kind::stopped};
}

ActionResult ActionOutcome::of(const ScreenOutcome& outcome, const std::optional<Postcondition>& expected,
    const ScreenLook& before, const ScreenLook* after, const ScreenProblem* blind)
{
    if (outcome.kind != ScreenOutcome::Kind::done)
        return notDone(outcome);
    if (after)
        return checked(expected, before.observation, after->observation);
    return {.words = "It was done, but what came of it can not be seen. " + (blind ? blind->sentence : "")};
}

} // namespace quorvell
