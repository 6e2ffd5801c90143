// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/Agenda.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* unknownEvent =
    "There is no event with that id. List the events again and use the id given there.";

CalendarSource* sourceOf(const std::vector<std::unique_ptr<CalendarSource>>& sources, char letter)
{
    for (const auto& source : sources)
        if (source->letter() == letter && source->isThere())
            return source.get();
    return nullptr;
}

} // namespace

Agenda::Agenda(std::vector<std::unique_ptr<CalendarSource>> sources, FileWorker::Post post)
    : m_sources(std::make_shared<Sources>(std::move(sources)))
    , m_worker(std::move(post))
{
}

template <typename Result>
void Agenda::run(std::function<Result(Sources&)> work, std::function<void(const Result&)> done)
{
    // Whatever outlives this agenda on its way back finds it gone; the sources end on the worker's thread or after it.
    m_worker.run([sources = m_sources, work = std::move(work)] { return work(*sources); },
        [life = std::weak_ptr<bool>(m_life), done = std::move(done)](const Result& result) {
            if (!life.expired())
                done(result);
        });
}

void Agenda::read(Instant from, Instant to, const Calendar& calendar, ReadingCallback done)
{
    run<AgendaReading>(
        [from, to, calendar](Sources& sources) {
            AgendaReading all;
            for (const auto& source : sources) {
                if (!source->isThere())
                    continue;
                AgendaReading one = source->read(from, to, calendar);
                all.events.insert(all.events.end(), one.events.begin(), one.events.end());
                all.problems.insert(all.problems.end(), one.problems.begin(), one.problems.end());
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
        [id, calendar](Sources& sources) {
            CalendarSource* source = sourceOf(sources, id.calendar);
            auto event = source ? source->find(id, calendar) : std::nullopt;
            return AgendaVerdict{event, event ? "" : unknownEvent};
        },
        std::move(done));
}

void Agenda::add(const EventDraft& draft, const Calendar& calendar, Instant now, VerdictCallback done)
{
    run<AgendaVerdict>(
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
        [id, scope, calendar, now](Sources& sources) {
            CalendarSource* source = sourceOf(sources, id.calendar);
            return source ? source->remove(id, scope, calendar, now) : AgendaVerdict{std::nullopt, unknownEvent};
        },
        std::move(done));
}

} // namespace quorvell
