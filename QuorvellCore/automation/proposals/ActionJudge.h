// SPDX-License-Identifier: MIT
// What becomes of a proposed action before it touches anything: whether it can be done on the screen that it was chosen
// on, and what the guard says of everything that it touches there.
//
// The guard knows single facts (SafetyGuard, DesktopDangers); here stands which of them an action has. Each kind of
// action collects the risk of every element, text, key, address and window that it reaches, and the strictest counts.
// What the screen says in favour of an action counts less than what it says against it: an element that calls itself an
// address bar is none inside a page.
#pragma once

#include "QuorvellCore/automation/proposals/ProposedAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"
#include "QuorvellCore/safety/ActionRisk.h"

#include <optional>
#include <string>

namespace quorvell {

/// Functions of their arguments; any thread. `look` is the one of the proposal's revision.
struct ActionJudge {
    /// Why it cannot be done on this look, as one sentence for the model; absent where it can. A secret's element is
    /// none of these: its verdict says that it is the user's alone.
    static std::optional<std::string> problem(const ProposedAction& proposed, const ScreenLook& look);

    /// The strictest of all that applies. What cannot be done is never done, for the reason that `problem` gives.
    static ActionRisk judge(const ProposedAction& proposed, const ScreenLook& look);

    /// The action in the form in which it is judged, and the only one in which it may be carried out: an address with
    /// its scheme, a key by its recorded name, the whole name of an entry. Meaningful where there is no problem.
    static ScreenAction judgedAction(const ScreenAction& action, const ScreenLook& look);
};

} // namespace quorvell
