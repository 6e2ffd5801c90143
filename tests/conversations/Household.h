// SPDX-License-Identifier: MIT
// Somebody who talks to the rules for a while: their words become calls, the real tools carry them out on real files,
// and at the end it is looked at what stands there.
#pragma once

#include "PostQueue.h"
#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/notebook/NotebookStore.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "Quorvell/tools/agenda/AgendaTools.h"
#include "Quorvell/tools/notebook/NotebookTools.h"
#include "Quorvell/tools/reminders/ReminderTools.h"
#include "TemporaryFolder.h"
#include "Understanding/requests/RequestRules.h"
#include "VirtualScheduler.h"

#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// A clock that the test moves, and posts from real threads.
class HouseholdClock final : public VirtualScheduler {
public:
    void post(std::function<void()> action) override { posts.poster()(std::move(action)); }

    test::PostQueue posts;
};

class Household {
public:
    /// In Berlin. `now` as "2026-11-23 09:00".
    explicit Household(const std::string& now);

    /// What the assistant says to that.
    std::string say(const std::string& words);
    void pass(std::chrono::minutes time) { m_clock.advance(time); }
    /// Every list, reminder, alarm, timer, event and note, a line each, in the order of their letters.
    std::vector<std::string> state() const;
    Instant instant(const std::string& localTime) const;

private:
    template <typename Test> bool settle(const Test& isDone);
    ToolResult carryOut(const ToolRequest& call);
    std::string localTime(Instant instant) const;
    std::string shown(const Note& note) const;
    std::vector<std::string> events() const;

    Calendar m_calendar = *Calendar::create("Europe/Berlin", "en_US");
    test::TemporaryFolder m_notes{test::memoryDisk()};
    test::TemporaryFolder m_events{test::memoryDisk()};
    HouseholdClock m_clock;
    HeardWords m_heard{{m_clock}};
    UndoBook m_undo;
    std::unique_ptr<FileWorker> m_worker = std::make_unique<FileWorker>(m_clock.posts.poster());
    std::unique_ptr<NotebookStore> m_store;
    std::unique_ptr<Agenda> m_agenda;
    std::unique_ptr<NotebookSearch> m_search;
    ToolRegistry m_registry;
    RequestMemory m_memory;
    int m_ids = 0;
};

} // namespace quorvell
