// SPDX-License-Identifier: MIT
// A practice world behind the port to the screen.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/practice/world/PracticeWorld.h"
#include "Quorvell/surface/Screen.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Elements get new ids at each look. Time runs with the scheduler. Main thread. Once it is gone, it answers nothing.
class PracticeScreen : public Screen {
public:
    static constexpr std::chrono::milliseconds lookTime{5};
    static constexpr std::chrono::milliseconds actTime{20}; ///< Of each sub-step: a typed line feed parts two.
    static constexpr std::chrono::milliseconds restTime{300}; ///< So long nothing changed: it has come to rest.
    static constexpr std::chrono::milliseconds settlePatience{2'000};
    static constexpr std::size_t knownLooks = 16; ///< An action for an older one fails.
    static constexpr std::size_t longestStretch = 4'000; ///< Characters of a text that are read at once.
    static constexpr std::size_t mostFound = 20;

    /// Borrows both.
    PracticeScreen(PracticeWorld& world, Scheduler& scheduler);

    void look(const LookWish& wish, Answer<ScreenLook> answer) override;
    void act(const ScreenAction& action, std::int64_t revision, std::shared_ptr<const ActionCancellation> cancellation,
        std::function<void(ScreenOutcome)> answer) override;
    void read(std::size_t from, Answer<ScreenText> answer) override;
    void find(const std::string& words, Answer<std::vector<std::string>> answer) override;
    void listTabs(Answer<std::vector<ScreenTab>> answer) override;
    void point(const std::string& target, std::function<void(ScreenOutcome)> answer) override;
    void pointAtSpot(double x, double y, std::function<void(ScreenOutcome)> answer) override;
    void clearPointer() override { m_pointed.clear(); }

    /// The label of what is highlighted, or the place; empty when nothing is.
    const std::string& pointed() const { return m_pointed; }

private:
    struct Seen {
        std::string name{};
        std::string role{};
        std::string label{};
    };
    struct Look {
        std::int64_t revision = 0;
        std::map<std::string, Seen> elements{}; ///< By id.
    };
    struct Typing;

    PracticeWorld& current();
    ScreenLook taken(const LookWish& wish);
    void lookWhenSettled(const LookWish& wish, Answer<ScreenLook> answer, std::string lastSeen, SessionTime deadline);
    void actNext(std::shared_ptr<Typing> typing);
    const Seen* seen(const std::string& id, std::int64_t revision) const;
    void later(std::chrono::milliseconds delay, std::function<void()> action);

    PracticeWorld& m_world;
    Scheduler& m_scheduler;
    SessionTime m_begin;
    std::int64_t m_revision = 0;
    std::uint64_t m_lastID = 0;
    std::deque<Look> m_looks; ///< The latest last.
    std::string m_pointed;
    std::uint64_t m_lastTimer = 0;
    std::map<std::uint64_t, TimerHandle> m_timers;
};

} // namespace quorvell
