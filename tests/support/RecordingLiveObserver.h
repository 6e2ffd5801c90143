// SPDX-License-Identifier: MIT
// Keeps what a live connection reports.
#pragma once

#include "Quorvell/session/ports/LiveConnectionObserver.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

class RecordingLiveObserver : public LiveConnectionObserver {
public:
    void liveEventReceived(const LiveServerEvent& event) override { events.push_back(event); }
    void liveReplyWritten(const std::string& text) override { written.push_back(text); }
    void liveConnectionClosed(const LiveClosure& reported) override
    {
        ++closings;
        closure = reported;
    }

    template <typename Event> std::vector<Event> all() const
    {
        std::vector<Event> found;
        for (const LiveServerEvent& event : events)
            if (const auto* wanted = std::get_if<Event>(&event))
                found.push_back(*wanted);
        return found;
    }

    std::vector<LiveServerEvent> events;
    std::vector<std::string> written;
    std::optional<LiveClosure> closure;
    int closings = 0;
};

} // namespace quorvell
