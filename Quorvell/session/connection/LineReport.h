// SPDX-License-Identifier: MIT
// What a conversation learns of the lines that carry it.
#pragma once

#include "Quorvell/session/connection/Arrival.h"
#include "Quorvell/session/ports/LiveClosure.h"
#include "Quorvell/session/turn/ConversationMemory.h"
#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <string>
#include <variant>

namespace quorvell {

namespace line_report {

/// A line is ready to talk.
struct Ready {
    Arrival arrival = Arrival::first;
    std::string sessionID;
    ConversationMemory::Mark knows = 0; ///< How much of the conversation the other side has been told.
};
/// Of a line that is not live, what is for the event log only.
struct Event {
    LiveServerEvent event;
};
/// The model's answer in writing.
struct Written {
    std::string text;
};
/// A piece of the answer that Written gives whole later.
struct Grew {
    std::string delta;
};
/// For a prepared line that nobody needed; in addition to what was told before.
struct UnusedBilled {
    double seconds = 0;
};
/// ConnectionKeeper::openDue is wanted.
struct OpeningDue { };
/// ConnectionKeeper::openStandby is wanted.
struct StandbyDue { };
/// The first line is refused by a service that is busy; it is asked again. Told once.
struct Delayed { };
/// It is being mended, or a line that stood by has taken over.
struct Lost { };
/// Mending failed, or is of no use; the conversation is over.
struct GivenUp {
    LiveClosure closure;
};
/// The line that `end` closed has closed.
struct Ended {
    std::string reason;
};

} // namespace line_report

using LineReport = std::variant<line_report::Ready, line_report::Event, line_report::Written, line_report::Grew,
    line_report::UnusedBilled, line_report::OpeningDue, line_report::StandbyDue, line_report::Delayed,
    line_report::Lost, line_report::GivenUp, line_report::Ended>;

} // namespace quorvell
