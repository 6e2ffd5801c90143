// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsCalendar.h"

#include "Quorvell/agenda/IcsEditing.h"
#include "Quorvell/agenda/IcsLimits.h"
#include "Quorvell/agenda/IcsText.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

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

void addShown(const Series& series, char letter, IcsEvent::Search& search, std::vector<CalendarEvent>& found)
{
    const IcsZones& zones = search.zones;
    std::set<Instant> replaced;
    for (const IcsEvent& changed : series.changed) {
        if (search.patience.isOver())
            return;
        replaced.insert(zones.instant(occurrenceOf(series, changed, zones)));
        CalendarEvent event = changed.shown(changed.start, letter, zones);
        event.repeats = true;
        event.id.occurrence = occurrenceOf(series, changed, zones).text();
        const bool isNow = event.start < search.to && (event.end > search.from || event.start >= search.from);
        if (isNow && !changed.isCancelled)
            found.push_back(std::move(event));
    }
    if (!series.master || series.master->isCancelled)
        return;
    for (const IcsMoment& occurrence : series.master->occurrences(search)) {
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
    IcsEvent::Search search{begins, begins + std::chrono::milliseconds(1), zones};
    const auto around = place->series.master->occurrences(search);
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
    const auto prepared = IcsText::prepared(text);
    if (!prepared)
        return std::nullopt;
    icalerror_set_errors_are_fatal(0);
    auto content = std::make_unique<Content>();
    content->root.reset(icalcomponent_new_from_string(prepared->c_str()));
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

std::map<std::string, std::string> IcsCalendar::parts(const std::string& uid, const Calendar& calendar) const
{
    std::map<std::string, std::string> texts;
    const auto all = m_content->series();
    const auto found = all.find(uid);
    if (found == all.end())
        return texts;
    const auto textOf = [](const IcsEvent& event) {
        const std::unique_ptr<char, void (*)(void*)> text(icalcomponent_as_ical_string_r(event.component), ::free);
        return std::string(text ? text.get() : "");
    };
    const IcsZones zones(m_content->root.get(), calendar);
    if (found->second.master)
        texts[""] = textOf(*found->second.master);
    for (const IcsEvent& changed : found->second.changed)
        texts[occurrenceOf(found->second, changed, zones).text()] = textOf(changed);
    return texts;
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

IcsReading IcsCalendar::between(
    Instant from, Instant to, char letter, const Calendar& calendar, const Patience& patience) const
{
    const IcsZones zones(m_content->root.get(), calendar);
    IcsEvent::Search search{from, to, zones, patience};
    IcsReading reading;
    for (const auto& [uid, series] : m_content->series()) {
        search.omissions.time = patience.isOver();
        search.omissions.amount = reading.events.size() > IcsLimits::mostOccurrences;
        if (search.omissions.time || search.omissions.amount)
            break;
        addShown(series, letter, search, reading.events);
    }
    std::stable_sort(reading.events.begin(), reading.events.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    if (reading.events.size() > IcsLimits::mostOccurrences) {
        reading.events.resize(IcsLimits::mostOccurrences);
        search.omissions.amount = true;
    }
    reading.omissions = search.omissions;
    reading.omissions.time = patience.isOver();
    reading.omissions.zones = zones.hasRefused();
    return reading;
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

void IcsCalendar::takeOver(const std::string& uid, const IcsCalendar& other)
{
    const auto isOfEvent = [&uid](icalcomponent* component) {
        const char* found = icalcomponent_get_uid(component);
        return found && uid == found;
    };
    icalcomponent* root = m_content->root.get();
    if (icalcomponent_isa(root) != ICAL_VCALENDAR_COMPONENT)
        return;
    for (icalcomponent* component : m_content->components()) {
        if (!isOfEvent(component))
            continue;
        icalcomponent_remove_component(root, component);
        icalcomponent_free(component);
    }
    for (icalcomponent* component : other.m_content->components())
        if (isOfEvent(component))
            icalcomponent_add_component(root, icalcomponent_new_clone(component));
}

} // namespace quorvell
