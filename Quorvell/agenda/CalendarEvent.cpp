// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/CalendarEvent.h"

#include <algorithm>

namespace quorvell {

namespace {

/// "20261122", "20261122T170000" or "20261122T170000Z".
bool isOccurrence(std::string_view text)
{
    constexpr std::string_view form = "ddddddddTddddddZ";
    if (text.size() != 8 && text.size() != 15 && text.size() != 16)
        return false;
    return std::equal(text.begin(), text.end(), form.begin(),
        [](char letter, char wanted) { return wanted == 'd' ? letter >= '0' && letter <= '9' : letter == wanted; });
}

} // namespace

std::optional<EventID> EventID::parse(std::string_view text)
{
    constexpr std::size_t longest = 1024;
    if (text.size() < 3 || text.size() > longest || text[1] != ':')
        return std::nullopt;
    EventID id{text.front(), std::string(text.substr(2)), {}};
    const std::size_t mark = id.uid.rfind('#');
    if (mark != std::string::npos && mark > 0 && isOccurrence(std::string_view(id.uid).substr(mark + 1))) {
        id.occurrence = id.uid.substr(mark + 1);
        id.uid.erase(mark);
    }
    return id;
}

std::string EventID::text() const
{
    return std::string(1, calendar) + ":" + uid + (occurrence.empty() ? "" : "#" + occurrence);
}

} // namespace quorvell
