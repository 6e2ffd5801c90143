// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/AgendaAccess.h"

#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/desktop/EventsOfDataServer.h"

#include <QUuid>

#include <utility>
#include <vector>

namespace quorvell {

std::unique_ptr<Agenda> openAgenda(const ProgramEnvironment& environment, Scheduler& scheduler)
{
    std::vector<std::unique_ptr<CalendarSource>> sources;
    if (environment.hasSessionBus)
        sources.push_back(std::make_unique<EventsOfDataServer>());
    sources.push_back(std::make_unique<CalendarFolder>(environment.calendarFolder));
    return std::make_unique<Agenda>(
        std::move(sources), [&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); });
}

std::string freshEventUid()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
}

} // namespace quorvell
