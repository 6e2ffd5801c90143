// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/Agenda.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* unknownEvent =
    "There is no event with that id. List the events again and use the id given there.";

constexpr const char* busy = "The calendars are still busy with an earlier question";

/// The answer to what could not even begin.
template <typename Result> Result refused();
template <> AgendaReading refused()
{
    return {{}, {std::string(busy) + ", so they were not read. Try again in a moment."}, false};
}
template <> AgendaVerdict refused()
{
    return {std::nullopt, std::string(busy) + ", so nothing was done. Try again in a moment."};
}

CalendarSource* sourceOf(const std::vector<std::unique_ptr<CalendarSource>>& sources, char letter)
{
    for (const auto& source : sources)
        if (source->letter() == letter && source->isThere())
            return source.get();
    return nullptr;
}

} // namespace

Agenda::Agenda(
    std::vector<std::unique_ptr<CalendarSource>> sources, AgendaWorker::Post post, AgendaWorker::Limits limits)
    : m_sources(std::make_shared<Sources>(std::move(sources)))
    , m_worker(std::move(post), limits)
{
}

template <typename Result>
void Agenda::run(AgendaWorker::Kind kind, std::function<Result(Sources&)> work, std::function<void(const Result&)> done)
{
    // Whatever outlives this agenda on its way back finds it gone; the sources end on the worker's thread or after it.
    m_worker.run(
        kind,
        [sources = m_sources, work = std::move(work)](const Patience& patience) {
            for (const auto& source : *sources)
                source->havePatience(patience);
            return work(*sources);
        },
        &refused<Result>,
        [life = std::weak_ptr<bool>(m_life), done = std::move(done)](const Result& result) {
            if (!life.expired())
                done(result);
        });
}

void Agenda::read(Instant from, Instant to, const Calendar& calendar, ReadingCallback done)
{
    run<AgendaReading>(
        AgendaWorker::Kind::reads,
        [from, to, calendar](Sources& sources) {
            AgendaReading all;
            for (const auto& source : sources) {
                if (!source->isThere())
                    continue;
                AgendaReading one = source->read(from, to, calendar);
                all.events.insert(all.events.end(), one.events.begin(), one.events.end());
                all.problems.insert(all.problems.end(), one.problems.begin(), one.problems.end());
                all.isWhole = all.isWhole && one.isWhole;
            }
            std::stable_sort(all.events.begin(), all.events.end(),
                [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
            return all;
        },
        std::move(done));
}

void Agenda::find(const EventID& id, const Calendar& calendar, VerdictCallback done)
{
    run<AgendaVerdict>(
        AgendaWorker::Kind::reads,
        [id, calendar](Sources& sources) {
            CalendarSource* source = sourceOf(sources, id.calendar);
            return source ? source->find(id, calendar) : AgendaVerdict{std::nullopt, unknownEvent};
        },
        std::move(done));
}

void Agenda::add(const EventDraft& draft, const Calendar& calendar, Instant now, VerdictCallback done)
{
    run<AgendaVerdict>(
        AgendaWorker::Kind::changes,
        [draft, calendar, now](Sources& sources) -> AgendaVerdict {
            for (const auto& source : sources)
                if (source->isThere())
                    return source->add(draft, calendar, now);
            return {std::nullopt, "There is no calendar that could keep it."};
        },
        std::move(done));
}

void Agenda::change(const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar,
    Instant now, VerdictCallback done)
{
    run<AgendaVerdict>(
        AgendaWorker::Kind::changes,
        [id, scope, change, calendar, now](Sources& sources) {
            CalendarSource* source = sourceOf(sources, id.calendar);
            return source ? source->change(id, scope, change, calendar, now)
                          : AgendaVerdict{std::nullopt, unknownEvent};
        },
        std::move(done));
}

void Agenda::remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now, VerdictCallback done)
{
    run<AgendaVerdict>(
        AgendaWorker::Kind::changes,
        [id, scope, calendar, now](Sources& sources) {
            CalendarSource* source = sourceOf(sources, id.calendar);
            return source ? source->remove(id, scope, calendar, now) : AgendaVerdict{std::nullopt, unknownEvent};
        },
        std::move(done));
}

void Agenda::takeBack(const EventTrace& trace, const Calendar& calendar, VerdictCallback done)
{
    run<AgendaVerdict>(
        AgendaWorker::Kind::changes,
        [trace, calendar](Sources& sources) {
            CalendarSource* source = sourceOf(sources, trace.id.calendar);
            return source ? source->takeBack(trace, calendar) : AgendaVerdict{std::nullopt, unknownEvent};
        },
        std::move(done));
}

} // namespace quorvell
