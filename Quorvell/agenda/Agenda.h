// SPDX-License-Identifier: MIT
// The user's events, wherever they are kept.
#pragma once

#include "Quorvell/agenda/AgendaWorker.h"
#include "Quorvell/agenda/CalendarSource.h"

#include <functional>
#include <memory>
#include <vector>

namespace quorvell {

/// Main thread; answers come there later, unless the agenda ended before. Its sources live on the worker's thread. What
/// takes too long is broken off and says so; what cannot even begin is refused.
class Agenda {
public:
    using ReadingCallback = std::function<void(const AgendaReading&)>;
    using VerdictCallback = std::function<void(const AgendaVerdict&)>;

    /// New events go to the first source that is there; all that are there are read.
    Agenda(std::vector<std::unique_ptr<CalendarSource>> sources, AgendaWorker::Post post,
        AgendaWorker::Limits limits = AgendaWorker::Limits());

    void read(Instant from, Instant to, const Calendar& calendar, ReadingCallback done);
    void find(const EventID& id, const Calendar& calendar, VerdictCallback done);
    void add(const EventDraft& draft, const Calendar& calendar, Instant now, VerdictCallback done);
    void change(const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now,
        VerdictCallback done);
    void remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now, VerdictCallback done);
    void takeBack(const EventTrace& trace, const Calendar& calendar, VerdictCallback done);

private:
    using Sources = std::vector<std::unique_ptr<CalendarSource>>;

    template <typename Result>
    void run(AgendaWorker::Kind kind, std::function<Result(Sources&)> work, std::function<void(const Result&)> done);

    std::shared_ptr<Sources> m_sources; ///< Touched by the worker only.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true); ///< Answers that come after the end find it gone.
    AgendaWorker m_worker; ///< Ends first, with its jobs.
};

} // namespace quorvell
