// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsCalendar.h"

#include "Quorvell/agenda/IcsEditing.h"
#include "Quorvell/agenda/IcsLimits.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <utility>

namespace quorvell {

namespace {

/// Components nest in the parser's memory and in its calls, so the depth is judged before it sees the text.
bool isNestedTooDeeply(std::string_view text)
{
    int depth = 0;
    int deepest = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string_view line = text.substr(start, end - start);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        const auto begins = [&line](std::string_view word) {
            return line.size() >= word.size()
                && std::equal(word.begin(), word.end(), line.begin(),
                    [](char wanted, char letter) { return wanted == (letter >= 'a' ? letter - ' ' : letter); });
        };
        depth += begins("BEGIN") ? 1 : begins("END") ? -1 : 0;
        deepest = std::max(deepest, depth);
        start = end + 1;
    }
    return deepest > IcsLimits::deepestNesting;
}

/// One series with what was changed of single occurrences, or one event.
struct Series {
    std::optional<IcsEvent> master;
    std::vector<IcsEvent> changed;
};

struct Place {
    Series series;
    std::optional<IcsMoment> occurrence; ///< Where the series puts it.
    const IcsEvent* changed = nullptr; ///< Of `series`, when that occurrence was changed.
};

} // namespace

struct IcsCalendar::Content {
    struct Free {
        void operator()(icalcomponent* component) const { icalcomponent_free(component); }
    };

    std::unique_ptr<icalcomponent, Free> root;

    std::vector<icalcomponent*> components() const
    {
        if (icalcomponent_isa(root.get()) == ICAL_VEVENT_COMPONENT)
            return {root.get()};
        std::vector<icalcomponent*> found;
        for (icalcomponent* event = icalcomponent_get_first_component(root.get(), ICAL_VEVENT_COMPONENT);
             event && found.size() < IcsLimits::mostEvents;
             event = icalcomponent_get_next_component(root.get(), ICAL_VEVENT_COMPONENT))
            found.push_back(event);
        return found;
    }

    std::map<std::string, Series> series() const
    {
        std::map<std::string, Series> all;
        for (icalcomponent* component : components()) {
            auto event = IcsEvent::read(component);
            if (!event)
                continue;
            Series& one = all[event->uid];
            if (event->recurrence)
                one.changed.push_back(*std::move(event));
            else if (!one.master)
                one.master = std::move(event);
        }
        return all;
    }

    std::optional<Place> place(const EventID& id, const IcsZones& zones) const;
};

namespace {

IcsMoment occurrenceOf(const Series& series, const IcsEvent& changed, const IcsZones& zones)
{
    if (!series.master)
        return *changed.recurrence;
    const IcsMoment& start = series.master->start;
    return zones.moment(zones.instant(changed.recurrence->like(start)), start);
}

void addShown(const Series& series, char letter, Instant from, Instant to, const IcsZones& zones,
    std::vector<CalendarEvent>& found)
{
    std::set<Instant> replaced;
    for (const IcsEvent& changed : series.changed) {
        replaced.insert(zones.instant(occurrenceOf(series, changed, zones)));
        CalendarEvent event = changed.shown(changed.start, letter, zones);
        event.repeats = true;
        event.id.occurrence = occurrenceOf(series, changed, zones).text();
        const bool isNow = event.start < to && (event.end > from || event.start >= from);
        if (isNow && !changed.isCancelled)
            found.push_back(std::move(event));
    }
    if (!series.master || series.master->isCancelled)
        return;
    for (const IcsMoment& occurrence : series.master->occurrences(from, to, zones)) {
        if (replaced.contains(zones.instant(occurrence)))
            continue;
        CalendarEvent event = series.master->shown(occurrence, letter, zones);
        if (event.repeats)
            event.id.occurrence = zones.moment(event.start, series.master->start).text();
        found.push_back(std::move(event));
    }
}

} // namespace

std::optional<Place> IcsCalendar::Content::place(const EventID& id, const IcsZones& zones) const
{
    auto all = series();
    const auto found = all.find(id.uid);
    if (found == all.end())
        return std::nullopt;
    std::optional<Place> place(Place{std::move(found->second), std::nullopt, nullptr});
    if (id.occurrence.empty())
        return place->series.master ? std::move(place) : std::nullopt;
    for (const IcsEvent& changed : place->series.changed) {
        const IcsMoment occurrence = occurrenceOf(place->series, changed, zones);
        if (occurrence.text() != id.occurrence)
            continue;
        place->occurrence = occurrence;
        place->changed = &changed;
        return changed.isCancelled ? std::nullopt : std::move(place);
    }
    const auto local = IcsMoment::readText(id.occurrence);
    if (!local || !place->series.master)
        return std::nullopt;
    place->occurrence = place->series.master->start.at(*local);
    const Instant begins = zones.instant(*place->occurrence);
    const auto around = place->series.master->occurrences(begins, begins + std::chrono::milliseconds(1), zones);
    const bool happens = std::any_of(
        around.begin(), around.end(), [&](const IcsMoment& moment) { return zones.instant(moment) == begins; });
    return happens ? std::move(place) : std::nullopt;
}

IcsCalendar::IcsCalendar(std::unique_ptr<Content> content)
    : m_content(std::move(content))
{
}

IcsCalendar::~IcsCalendar() = default;
IcsCalendar::IcsCalendar(IcsCalendar&&) noexcept = default;
IcsCalendar& IcsCalendar::operator=(IcsCalendar&&) noexcept = default;

std::optional<IcsCalendar> IcsCalendar::parse(std::string_view text)
{
    if (text.size() > IcsLimits::longestText || text.find('\0') != std::string_view::npos || isNestedTooDeeply(text))
        return std::nullopt;
    icalerror_set_errors_are_fatal(0);
    auto content = std::make_unique<Content>();
    content->root.reset(icalcomponent_new_from_string(std::string(text).c_str()));
    if (!content->root)
        return std::nullopt;
    const icalcomponent_kind kind = icalcomponent_isa(content->root.get());
    if (kind != ICAL_VCALENDAR_COMPONENT && kind != ICAL_VEVENT_COMPONENT)
        return std::nullopt;
    return IcsCalendar(std::move(content));
}

IcsCalendar IcsCalendar::withEvent(const EventDraft& draft, const Calendar& calendar, Instant now)
{
    auto content = std::make_unique<Content>();
    content->root.reset(icalcomponent_new(ICAL_VCALENDAR_COMPONENT));
    icalcomponent_add_property(content->root.get(), icalproperty_new_version("2.0"));
    icalcomponent_add_property(content->root.get(), icalproperty_new_prodid("-//Quorvell//Quorvell//EN"));
    icalcomponent_add_component(
        content->root.get(), IcsEditing::newEvent(draft, IcsZones(content->root.get(), calendar), now));
    return IcsCalendar(std::move(content));
}

std::string IcsCalendar::text() const
{
    const std::unique_ptr<char, void (*)(void*)> text(icalcomponent_as_ical_string_r(m_content->root.get()), ::free);
    return text ? text.get() : "";
}

std::string IcsCalendar::textOf(const EventID& id, const Calendar& calendar) const
{
    const auto all = m_content->series();
    const auto found = all.find(id.uid);
    if (found == all.end())
        return "";
    const IcsZones zones(m_content->root.get(), calendar);
    icalcomponent* wanted = found->second.master && id.occurrence.empty() ? found->second.master->component : nullptr;
    for (const IcsEvent& changed : found->second.changed)
        if (occurrenceOf(found->second, changed, zones).text() == id.occurrence)
            wanted = changed.component;
    if (!wanted)
        return "";
    const std::unique_ptr<char, void (*)(void*)> text(icalcomponent_as_ical_string_r(wanted), ::free);
    return text ? text.get() : "";
}

std::set<std::string> IcsCalendar::changedOccurrences(const std::string& uid, const Calendar& calendar) const
{
    std::set<std::string> occurrences;
    const auto all = m_content->series();
    if (const auto found = all.find(uid); found != all.end())
        for (const IcsEvent& changed : found->second.changed)
            occurrences.insert(occurrenceOf(found->second, changed, IcsZones(m_content->root.get(), calendar)).text());
    return occurrences;
}

bool IcsCalendar::has(const std::string& uid) const
{
    const auto components = m_content->components();
    return std::any_of(components.begin(), components.end(), [&uid](icalcomponent* component) {
        const char* found = icalcomponent_get_uid(component);
        return found && uid == found;
    });
}

std::string IcsCalendar::firstUid() const
{
    const auto components = m_content->components();
    const char* uid = components.empty() ? nullptr : icalcomponent_get_uid(components.front());
    return uid ? uid : "";
}

bool IcsCalendar::hasSeries() const
{
    const auto components = m_content->components();
    return std::any_of(components.begin(), components.end(), [](icalcomponent* component) {
        const auto event = IcsEvent::read(component);
        return event && (event->repeats || event->recurrence);
    });
}

std::size_t IcsCalendar::eventCount() const
{
    return m_content->components().size();
}

std::vector<CalendarEvent> IcsCalendar::between(Instant from, Instant to, char letter, const Calendar& calendar) const
{
    const IcsZones zones(m_content->root.get(), calendar);
    std::vector<CalendarEvent> found;
    for (const auto& [uid, series] : m_content->series())
        if (found.size() < IcsLimits::mostOccurrences)
            addShown(series, letter, from, to, zones, found);
    std::stable_sort(found.begin(), found.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    if (found.size() > IcsLimits::mostOccurrences)
        found.resize(IcsLimits::mostOccurrences);
    return found;
}

std::optional<CalendarEvent> IcsCalendar::find(const EventID& id, const Calendar& calendar) const
{
    const IcsZones zones(m_content->root.get(), calendar);
    const auto place = m_content->place(id, zones);
    if (!place)
        return std::nullopt;
    const IcsEvent& event = place->changed ? *place->changed : *place->series.master;
    const bool isOwnStart = place->changed || !place->occurrence;
    CalendarEvent shown = event.shown(isOwnStart ? event.start : *place->occurrence, id.calendar, zones);
    shown.id.occurrence = id.occurrence;
    shown.repeats = shown.repeats || place->changed;
    return shown;
}

std::string IcsCalendar::change(
    const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now)
{
    const IcsZones zones(m_content->root.get(), calendar);
    const auto place = m_content->place(id, zones);
    const auto shown = find(id, calendar);
    if (!place || !shown)
        return goneEvent;
    const auto& master = place->series.master;
    const bool isSeries = master && master->repeats && (scope == EventScope::series || !place->occurrence);
    if (isSeries)
        return IcsEditing::changeSeries(
            *master, place->series.changed, place->occurrence.value_or(master->start), change, zones, now);
    if (place->changed)
        return IcsEditing::change(*place->changed, *shown, change, zones, now);
    if (!place->occurrence || !master->repeats)
        return IcsEditing::change(*master, *shown, change, zones, now);
    if (icalcomponent_isa(m_content->root.get()) != ICAL_VCALENDAR_COMPONENT)
        return "One occurrence of this series cannot be changed by itself here.";
    icalcomponent* single = IcsEditing::newOccurrence(*master, *place->occurrence, zones);
    const auto event = IcsEvent::read(single);
    std::string problem = event ? IcsEditing::change(*event, *shown, change, zones, now) : goneEvent;
    if (problem.empty())
        icalcomponent_add_component(m_content->root.get(), single);
    else
        icalcomponent_free(single);
    return problem;
}

std::string IcsCalendar::remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now)
{
    const IcsZones zones(m_content->root.get(), calendar);
    const auto place = m_content->place(id, zones);
    if (!place || icalcomponent_isa(m_content->root.get()) != ICAL_VCALENDAR_COMPONENT)
        return goneEvent;
    const auto removeComponent = [this](icalcomponent* component) {
        icalcomponent_remove_component(m_content->root.get(), component);
        icalcomponent_free(component);
    };
    const auto& master = place->series.master;
    if (scope == EventScope::occurrence && place->occurrence && master && master->repeats) {
        IcsEditing::strikeOut(*master, *place->occurrence, now);
        if (place->changed)
            removeComponent(place->changed->component);
        return "";
    }
    for (const IcsEvent& changed : place->series.changed)
        removeComponent(changed.component);
    if (master)
        removeComponent(master->component);
    return "";
}

} // namespace quorvell
