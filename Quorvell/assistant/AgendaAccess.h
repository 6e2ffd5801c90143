// SPDX-License-Identifier: MIT
// The desktop's calendars where they are kept by a service, and the calendar folder.
#pragma once

#include "Quorvell/agenda/Agenda.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/Instant.h"

#include <memory>
#include <string>

namespace quorvell {

/// The scheduler outlives it.
std::unique_ptr<Agenda> openAgenda(const ProgramEnvironment& environment, Scheduler& scheduler);

/// A name for a new event, unique in the world: a random UUID.
std::string freshEventUid();

} // namespace quorvell
