// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"

#include <algorithm>
#include <utility>

namespace quorvell {

std::vector<ServerSentEvent> ServerSentEvents::add(std::string_view bytes)
{
    std::vector<ServerSentEvent> events;
    while (!bytes.empty() && !m_isOverfull) {
        if (std::exchange(m_skipsLineFeed, false) && bytes.front() == '\n') {
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        m_isOverfull = m_line.size() + m_event.data.size() + end > maximumEventBytes;
        if (m_isOverfull)
            break;
        m_line.append(bytes, 0, end);
        if (end == bytes.size())
            break;
        m_skipsLineFeed = bytes[end] == '\r';
        bytes.remove_prefix(end + 1);
        endLine(events);
    }
    return events;
}

void ServerSentEvents::endLine(std::vector<ServerSentEvent>& events)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::string_view line = m_line;
    if (std::exchange(m_isFirstLine, false) && line.starts_with(byteOrderMark))
        line.remove_prefix(byteOrderMark.size());
    if (!line.empty()) {
        takeField(line);
    } else {
        if (m_event.type.empty())
            m_event.type = "message";
        if (m_hasData)
            events.push_back(std::move(m_event));
        m_event = {{}, {}};
        m_hasData = false;
    }
    m_line.clear();
}

void ServerSentEvents::takeField(std::string_view line)
{
    const std::size_t colon = std::min(line.find(':'), line.size());
    const std::string_view name = line.substr(0, colon);
    std::string_view value = line.substr(std::min(colon + 1, line.size()));
    if (value.starts_with(' '))
        value.remove_prefix(1);
    if (name == "event")
        m_event.type = value;
    else if (name == "data")
        m_event.data.append(std::exchange(m_hasData, true) ? "\n" : "").append(value);
}

std::string ServerSentEvents::text(const ServerSentEvent& event)
{
    std::string text = "event: " + event.type + "\ndata: ";
    for (const char letter : event.data) {
        text += letter;
        if (letter == '\n')
            text += "data: ";
    }
    return text + "\n\n";
}

} // namespace quorvell
