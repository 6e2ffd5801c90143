// SPDX-License-Identifier: MIT
// Answers a posted request with a stream of events, as the request's faults let it.
#pragma once

#include "LiveService/faults/FaultyWire.h"
#include "LiveService/server/HttpAnswer.h"

#include <string>
#include <vector>

namespace quorvell {

/// Main thread.
class EventStream {
public:
    /// Everything is handed over at once; the stream ends with the last event.
    static void send(const HttpAnswer& answer, SessionFaults faults, const std::vector<std::string>& events);
};

} // namespace quorvell
