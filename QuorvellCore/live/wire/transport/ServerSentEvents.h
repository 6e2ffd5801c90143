// SPDX-License-Identifier: MIT
// Reads an event stream (text/event-stream) as its bytes arrive, cut anywhere.
#pragma once

#include "QuorvellCore/live/wire/transport/ServerSentEvent.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Lines end with CR, LF or CR LF. Comments, ids and retry times are passed over. What the stream leaves unfinished at
/// its end is no event.
class ServerSentEvents {
public:
    static constexpr std::string_view contentType = "text/event-stream";
    static constexpr std::size_t maximumEventBytes = 16 * 1024 * 1024;

    /// The events that these bytes complete.
    std::vector<ServerSentEvent> add(std::string_view bytes);

    /// An event was larger than the limit; nothing after it is read.
    bool isOverfull() const { return m_isOverfull; }

    /// An event as a stream carries it.
    static std::string text(const ServerSentEvent& event);

private:
    void endLine(std::vector<ServerSentEvent>& events);
    void takeField(std::string_view line);

    std::string m_line; ///< Unfinished.
    ServerSentEvent m_event{{}, {}};
    bool m_hasData = false;
    bool m_isFirstLine = true;
    bool m_skipsLineFeed = false; ///< The last line ended with CR: a line feed now belongs to it.
    bool m_isOverfull = false;
};

} // namespace quorvell
