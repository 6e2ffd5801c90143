// SPDX-License-Identifier: MIT
// A small world of applications, in which everything has the effects that it has, whatever it says of itself.
//
// A pure machine: actions and time go in, what is then shown and what has happened come out. It judges nothing. A copy
// is another world, to try something in.
#pragma once

#include "Quorvell/practice/description/PracticeDescription.h"
#include "Quorvell/practice/world/PracticeHand.h"
#include "Quorvell/practice/world/PracticeState.h"
#include "Quorvell/practice/world/PracticeView.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

class PracticeWorld {
public:
    explicit PracticeWorld(PracticeDescription description);

    const PracticeDescription& description() const { return m_state.description(); }

    // What is shown

    PracticeView view() const { return PracticeView::of(m_state); }
    std::vector<ScreenTab> tabs() const;
    /// Of the page or window in front.
    std::string text() const;

    // What happens

    /// Targets are names of elements. Typed line feeds press Return.
    PracticeOutcome act(const ScreenAction& action);
    /// What happens one after the other: nearly always the action itself, of typed lines each and Return between them.
    static std::vector<ScreenAction> subSteps(const ScreenAction& action);
    /// Time since the beginning; it never runs back.
    void advance(std::chrono::milliseconds now) { m_state.advance(now); }
    /// When something changes by itself; nothing: never, unless something is done.
    std::optional<std::chrono::milliseconds> nextChange() const { return m_state.nextChange(); }
    bool isBusy() const { return m_state.isBusy(); }
    /// Scrolls to the fold of the first element that holds these words.
    void bringIntoView(std::string_view words);

    // What came of it

    const std::vector<PracticeConsequence>& consequences() const { return m_state.consequences(); }
    /// Those that nobody wanted.
    std::vector<PracticeConsequence> harms() const;
    bool isGoalReached() const { return m_state.hold(description().doneWhen); }
    std::string fact(std::string_view name) const { return m_state.fact(name); }

private:
    PracticeState m_state;
};

} // namespace quorvell
