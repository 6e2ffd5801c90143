// SPDX-License-Identifier: MIT
// Passes what the user does on to all who act, in their order.
#pragma once

#include "Quorvell/session/reports/ActionWatch.h"

#include <utility>
#include <vector>

namespace quorvell {

/// They are borrowed.
class ActionWatchGroup final : public ActionWatch {
public:
    explicit ActionWatchGroup(std::vector<ActionWatch*> watches)
        : m_watches(std::move(watches))
    {
    }

    void add(ActionWatch& watch) { m_watches.push_back(&watch); }
    void remove(ActionWatch& watch) { std::erase(m_watches, &watch); }

    void userBargedIn() override { tell(&ActionWatch::userBargedIn); }
    void userSaid(const HeardUtterance& heard) override { tell(&ActionWatch::userSaid, heard); }
    void stopped() override { tell(&ActionWatch::stopped); }
    void modeChanged(HelpMode mode) override { tell(&ActionWatch::modeChanged, mode); }
    void planChanged(const TaskPlan& plan) override { tell(&ActionWatch::planChanged, plan); }
    void ended() override { tell(&ActionWatch::ended); }

private:
    template <typename Report, typename... Values> void tell(Report report, const Values&... values)
    {
        for (ActionWatch* watch : m_watches)
            (watch->*report)(values...);
    }

    std::vector<ActionWatch*> m_watches;
};

} // namespace quorvell
