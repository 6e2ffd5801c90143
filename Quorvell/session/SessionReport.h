// SPDX-License-Identifier: MIT
// What the parts of a session report to it; it takes one after the other.
#pragma once

#include "Quorvell/session/connection/ConnectionFact.h"
#include "Quorvell/session/connection/LineReport.h"
#include "Quorvell/session/listening/ListeningReport.h"
#include "Quorvell/session/rest/RestReport.h"
#include "Quorvell/session/tools/ToolReport.h"
#include "Quorvell/session/turn/TurnReport.h"

#include <variant>

namespace quorvell {

using SessionReport = std::variant<ConnectionFact, LineReport, RestReport, ToolReport, TurnReport, ListeningReport>;

} // namespace quorvell
