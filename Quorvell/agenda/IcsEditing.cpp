// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsEditing.h"

#include "Quorvell/agenda/IcsRule.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;

void removeAll(icalcomponent* component, icalproperty_kind kind)
{
    while (icalproperty* property = icalcomponent_get_first_property(component, kind)) {
        icalcomponent_remove_property(component, property);
        icalproperty_free(property);
    }
}

/// What the value may hold: no control characters but the line end.
std::string cleaned(const std::string& text)
{
    std::string clean = repairUtf8(text);
    std::erase_if(clean, [](char letter) { return letter >= 0 && letter < ' ' && letter != '\n' && letter != '\t'; });
    return clean;
}

void setText(icalcomponent* component, icalproperty_kind kind, const std::string& text)
{
    removeAll(component, kind);
    if (text.empty())
        return;
    icalproperty* property = icalproperty_new(kind);
    icalproperty_set_value(property, icalvalue_new_text(cleaned(text).c_str()));
    icalcomponent_add_property(component, property);
}

void setMoment(icalcomponent* component, icalproperty_kind kind, const IcsMoment& moment)
{
    icalproperty* property = icalcomponent_get_first_property(component, kind);
    if (!property) {
        property = icalproperty_new(kind);
        icalcomponent_add_property(component, property);
    }
    moment.writeTo(property);
}

void setTimes(icalcomponent* component, const IcsMoment& start, const IcsMoment& end)
{
    setMoment(component, ICAL_DTSTART_PROPERTY, start);
    removeAll(component, ICAL_DURATION_PROPERTY);
    setMoment(component, ICAL_DTEND_PROPERTY, end);
}

void stamp(icalcomponent* component, Instant now)
{
    const IcsMoment moment{IcsMoment::Kind::utc, IcsLocalTime(floor<seconds>(now.time_since_epoch())), {}};
    setMoment(component, ICAL_DTSTAMP_PROPERTY, moment);
    setMoment(component, ICAL_LASTMODIFIED_PROPERTY, moment);
}

void countUp(icalcomponent* component)
{
    constexpr int most = 1'000'000;
    icalcomponent_set_sequence(component, std::clamp(icalcomponent_get_sequence(component) + 1, 1, most));
}

void changeTexts(icalcomponent* component, const EventChange& change)
{
    if (change.title)
        setText(component, ICAL_SUMMARY_PROPERTY, *change.title);
    if (change.place)
        setText(component, ICAL_LOCATION_PROPERTY, *change.place);
    if (change.notes)
        setText(component, ICAL_DESCRIPTION_PROPERTY, *change.notes);
}

void finish(icalcomponent* component, const EventChange& change, Instant now)
{
    changeTexts(component, change);
    stamp(component, now);
    countUp(component);
}

struct Times {
    Instant start{};
    Instant end{};
    bool allDay = false;
    std::string problem;
};

Times wantedTimes(const CalendarEvent& shown, const EventChange& change, const Calendar& calendar)
{
    constexpr std::chrono::hours usualLength{1};
    Times times;
    times.allDay = change.allDay.value_or(shown.allDay);
    times.start = change.start.value_or(shown.start);
    const auto length = shown.allDay && !times.allDay ? usualLength : shown.end - shown.start;
    times.end = change.end.value_or(times.start + length);
    if (times.allDay) {
        const LocalDay first = calendar.day(times.start);
        const auto count = shown.allDay && !change.end ? calendar.day(shown.end) - calendar.day(shown.start)
            : change.end                               ? calendar.day(times.end) - first
                                                       : days(1);
        times.start = calendar.instant(first, std::chrono::hours(0));
        times.end = calendar.instant(first + std::max(count, days(1)), std::chrono::hours(0));
    }
    if (times.end < times.start)
        times.problem = "It would end before it begins. Give an end that comes after the start.";
    return times;
}

void shiftMoments(icalcomponent* component, icalproperty_kind kind, seconds shift)
{
    for (icalproperty* property = icalcomponent_get_first_property(component, kind); property;
         property = icalcomponent_get_next_property(component, kind))
        if (const auto moment = IcsMoment::read(property))
            moment->at(moment->local + shift).writeTo(property);
}

} // namespace

icalcomponent* IcsEditing::newEvent(const EventDraft& draft, const IcsZones& zones, Instant now)
{
    icalcomponent* component = icalcomponent_new(ICAL_VEVENT_COMPONENT);
    icalcomponent_set_uid(component, draft.uid.c_str());
    stamp(component, now);
    changeTexts(component, {draft.title, draft.place, draft.notes, {}, {}, {}});
    setTimes(component, zones.newMoment(draft.start, draft.allDay), zones.newMoment(draft.end, draft.allDay));
    if (draft.repeat) {
        const std::string rule = IcsRule::text(*draft.repeat, zones.user().day(draft.start));
        icalcomponent_add_property(component, icalproperty_new_rrule(icalrecurrencetype_from_string(rule.c_str())));
    }
    return component;
}

icalcomponent* IcsEditing::newOccurrence(const IcsEvent& series, const IcsMoment& occurrence, const IcsZones& zones)
{
    icalcomponent* component = icalcomponent_new_clone(series.component);
    for (const auto kind : {ICAL_RRULE_PROPERTY, ICAL_RDATE_PROPERTY, ICAL_EXDATE_PROPERTY, ICAL_EXRULE_PROPERTY})
        removeAll(component, kind);
    setMoment(component, ICAL_RECURRENCEID_PROPERTY, occurrence);
    const auto end = occurrence.kind == IcsMoment::Kind::date
        ? occurrence.at(occurrence.local + floor<days>(series.length(zones)))
        : zones.moment(zones.instant(occurrence) + series.length(zones), occurrence);
    setTimes(component, occurrence, end);
    return component;
}

std::string IcsEditing::change(
    const IcsEvent& event, const CalendarEvent& shown, const EventChange& change, const IcsZones& zones, Instant now)
{
    if (change.start || change.end || change.allDay) {
        const Times times = wantedTimes(shown, change, zones.user());
        if (!times.problem.empty())
            return times.problem;
        const bool keepsZone = !times.allDay && event.start.kind == IcsMoment::Kind::zoned;
        const auto written = [&](Instant moment) {
            return keepsZone ? zones.moment(moment, event.start) : zones.newMoment(moment, times.allDay);
        };
        setTimes(event.component, written(times.start), written(times.end));
    }
    finish(event.component, change, now);
    return "";
}

std::string IcsEditing::changeSeries(const IcsEvent& series, const std::vector<IcsEvent>& changedOccurrences,
    const IcsMoment& occurrence, const EventChange& change, const IcsZones& zones, Instant now)
{
    if (change.allDay && *change.allDay != (series.start.kind == IcsMoment::Kind::date))
        return "A whole series cannot be turned into whole days or back here. Make a new one in its place.";
    if (change.start || change.end) {
        const CalendarEvent shown = series.shown(occurrence, ' ', zones);
        const Times times = wantedTimes(shown, change, zones.user());
        if (!times.problem.empty())
            return times.problem;
        const IcsMoment newStart = zones.moment(times.start, series.start);
        const seconds shift = newStart.local - occurrence.local;
        const days dayShift = floor<days>(newStart.local) - floor<days>(occurrence.local);
        if (!IcsRule::canShift(series.component, dayShift))
            return "The series says by itself on which days it happens, so only its hour can be moved here. Change its "
                   "days in your calendar program.";
        const IcsMoment first = series.start.at(series.start.local + shift);
        const IcsMoment end = first.kind == IcsMoment::Kind::date
            ? first.at(first.local + floor<days>(times.end - times.start + std::chrono::hours(12)))
            : zones.moment(zones.instant(first) + (times.end - times.start), first);
        shiftMoments(series.component, ICAL_EXDATE_PROPERTY, shift);
        shiftMoments(series.component, ICAL_RDATE_PROPERTY, shift);
        IcsRule::shift(series.component, shift, dayShift);
        for (const IcsEvent& changed : changedOccurrences)
            shiftMoments(changed.component, ICAL_RECURRENCEID_PROPERTY, shift);
        setTimes(series.component, first, end);
    }
    finish(series.component, change, now);
    return "";
}

void IcsEditing::strikeOut(const IcsEvent& series, const IcsMoment& occurrence, Instant now)
{
    icalproperty* property = icalproperty_new(ICAL_EXDATE_PROPERTY);
    occurrence.writeTo(property);
    icalcomponent_add_property(series.component, property);
    stamp(series.component, now);
    countUp(series.component);
}

} // namespace quorvell
