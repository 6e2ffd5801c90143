// SPDX-License-Identifier: MIT
// Calendar files come from other programs and from the net: whatever they hold, they are read, changed and written
// without a fault, and what is written is read again.
#include "Quorvell/agenda/IcsCalendar.h"
#include "Quorvell/agenda/IcsLimits.h"

#include <cstdint>
#include <cstdlib>

using namespace quorvell;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Calendar user = *Calendar::create("Europe/Berlin", "en_GB");
    static const Instant from = *parseIsoText("2026-11-21T00:00:00Z");
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    auto calendar = IcsCalendar::parse(text);
    if (!calendar)
        return 0;
    const Instant to = from + std::chrono::days(60);
    const auto events = calendar->between(from, to, 'f', user);
    if (events.size() > IcsLimits::mostOccurrences)
        std::abort();
    if (!events.empty()) {
        const EventID id = events[size % events.size()].id;
        const EventScope scope = size % 2 == 0 ? EventScope::occurrence : EventScope::series;
        if (EventID::parse(id.text()).has_value() && !calendar->find(id, user))
            std::abort();
        EventChange change;
        change.title = "Moved";
        change.start = from + std::chrono::hours(30);
        calendar->change(id, scope, change, user, from);
        calendar->remove(events.back().id, EventScope::occurrence, user, from);
    }
    const std::string written = calendar->text();
    if (!written.empty() && written.size() < IcsLimits::longestText)
        if (auto again = IcsCalendar::parse(written))
            again->between(from, to, 'f', user);
    return 0;
}
