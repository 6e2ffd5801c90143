// SPDX-License-Identifier: MIT
// Calendar files come from other programs and from the net: whatever they hold, they are read, changed and written
// without a fault, and what is written is read again.
#include "Quorvell/agenda/IcsCalendar.h"
#include "Quorvell/agenda/IcsLimits.h"
#include "fuzzing.h"

void quorvell::search(std::string_view text)
{
    static const Calendar user = *Calendar::create("Europe/Berlin", "en_GB");
    static const Instant from = *parseIsoText("2026-11-21T00:00:00Z");
    auto calendar = IcsCalendar::parse(text);
    if (!calendar)
        return;
    const Instant to = from + std::chrono::days(60);
    const auto events = calendar->between(from, to, 'f', user).events;
    require(events.size() <= IcsLimits::mostOccurrences);
    if (!events.empty()) {
        const EventID id = events[text.size() % events.size()].id;
        const EventScope scope = text.size() % 2 == 0 ? EventScope::occurrence : EventScope::series;
        require(!EventID::parse(id.text()) || calendar->find(id, user));
        const EventChange change{.title = "Moved", .start = from + std::chrono::hours(30)};
        static_cast<void>(calendar->change(id, scope, change, user, from));
        static_cast<void>(calendar->remove(events.back().id, EventScope::occurrence, user, from));
    }
    const std::string written = calendar->text();
    if (!written.empty() && written.size() < IcsLimits::longestText)
        if (auto again = IcsCalendar::parse(written))
            static_cast<void>(again->between(from, to, 'f', user));
}
