// SPDX-License-Identifier: MIT
// Refuses an action that goes round in circles, or that comes after too many without a word to the user.
//
// It keeps what was done, by action and by the screens before and after, and refuses in words for the model. The run
// that counts for the first four rules begins behind the last action whose plan step was completed: a plan that moves
// on may well do the same again. What was refused was not done, so it is not recorded.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// For one task; on one thread. Actions are texts as actionText makes them, screens are their state keys, and a step is
/// the number of plan steps that were completed so far in the task (0 without a plan).
class ActionLoopGuard {
public:
    static constexpr int mostWithoutPlan = 15; ///< The 15th action since the user was heard is refused.
    static constexpr int mostWithPlan = 300; ///< A written plan buys a long leash; its stall is the brake then.
    static constexpr int longestStall = 25; ///< Actions since the plan moved on.
    static constexpr int mostUnchanged = 4; ///< Actions in a row that changed nothing.
    static constexpr std::size_t longestShown = 80; ///< User-perceived characters of an action in a refusal.

    enum class Outcome {
        worked,
        failed, ///< It was reported so, or its postcondition did not hold.
    };

    /// What the model is told in place of the action; nothing where it may run on `screen`, the one that is shown now.
    /// `planStall` is that of this guard while there is a plan.
    std::optional<std::string> refusal(
        std::string_view action, std::string_view screen, std::optional<int> planStall, int step) const;

    /// After an action that was done from `screen` and ended on `result`.
    void record(std::string_view action, std::string_view screen, std::string_view result, Outcome outcome, int step);

    void heardThem(); ///< The user spoke.
    void progressed(); ///< A step of the plan was completed, or something was found out.

    int planStall() const { return m_planStall; }

    /// The actions of a round, with commas between them, where `action` would complete the third of that round. A round
    /// has 2 to 6 actions that are not all the same.
    std::optional<std::string> cycle(std::string_view completedBy, int step) const;

private:
    /// Texts and screens are kept as hashes: a screen's key may have megabytes.
    struct Done {
        std::size_t action = 0;
        std::size_t screen = 0;
        std::size_t result = 0;
        Outcome outcome = Outcome::worked;
        int step = 0;
        std::string shown;
    };
    /// How often an action was done in the run.
    struct Count {
        int done = 0;
        int failedHere = 0; ///< From the screen that is shown now.
        int cameBack = 0; ///< Likewise, with that screen seen again since.
    };

    std::vector<const Done*> run(int step) const;
    Count countOf(std::string_view action, std::string_view screen, int step) const;
    std::optional<std::string> repetition(std::string_view action, std::string_view screen, int step) const;
    std::optional<std::string> silence(std::optional<int> planStall) const;

    std::deque<Done> m_recent; ///< Oldest first; as many as may be done without hearing the user.
    int m_unchanged = 0;
    int m_sinceHeard = 0;
    int m_planStall = 0;
};

} // namespace quorvell
