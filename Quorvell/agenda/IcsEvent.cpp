// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsEvent.h"

#include "Quorvell/agenda/IcsLimits.h"
#include "Quorvell/agenda/IcsRule.h"
#include "Quorvell/agenda/IcsWeekNumbers.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <cstdint>
#include <set>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::size_t longestTitle = 500; ///< Characters.
constexpr std::size_t longestNotes = 5000;

std::string bounded(const char* text, std::size_t characters)
{
    if (!text)
        return "";
    const std::string_view start = std::string_view(text).substr(0, characters * 8);
    return firstCharacters(trimmed(repairUtf8(start)), characters);
}

icalproperty* first(icalcomponent* component, icalproperty_kind kind)
{
    return icalcomponent_get_first_property(component, kind);
}

bool mentions(const char* text, const char* word)
{
    return text && std::string_view(text) == word;
}

} // namespace

std::optional<IcsEvent> IcsEvent::read(icalcomponent* component)
{
    constexpr std::size_t longestUid = 512;
    IcsEvent event;
    event.component = component;
    const char* uid = icalcomponent_get_uid(component);
    const auto start = IcsMoment::read(first(component, ICAL_DTSTART_PROPERTY));
    if (!uid || !start || *uid == '\0' || std::string_view(uid).size() > longestUid)
        return std::nullopt;
    event.uid = repairUtf8(uid);
    event.start = *start;
    event.end = IcsMoment::read(first(component, ICAL_DTEND_PROPERTY));
    if (icalproperty* duration = first(component, ICAL_DURATION_PROPERTY)) {
        constexpr int longest = 400 * 24 * 3600;
        event.duration = seconds(std::clamp(icaldurationtype_as_int(icalproperty_get_duration(duration)), 0, longest));
    }
    event.recurrence = IcsMoment::read(first(component, ICAL_RECURRENCEID_PROPERTY));
    event.isCancelled = icalcomponent_get_status(component) == ICAL_STATUS_CANCELLED;
    event.repeats = first(component, ICAL_RRULE_PROPERTY) || first(component, ICAL_RDATE_PROPERTY);
    return event;
}

milliseconds IcsEvent::length(const IcsZones& zones) const
{
    constexpr milliseconds longest = days(400);
    if (start.kind == IcsMoment::Kind::date) {
        const auto whole = end ? end->local - start.local : duration;
        return std::clamp<milliseconds>(std::chrono::floor<days>(whole), days(1), longest);
    }
    const milliseconds elapsed = end ? zones.instant(*end) - zones.instant(start) : milliseconds(duration);
    return std::clamp(elapsed, milliseconds(0), longest);
}

CalendarEvent IcsEvent::shown(const IcsMoment& at, char letter, const IcsZones& zones) const
{
    CalendarEvent event;
    event.id = {letter, uid, {}};
    event.title = bounded(icalcomponent_get_summary(component), longestTitle);
    event.place = bounded(icalcomponent_get_location(component), longestTitle);
    event.notes = bounded(icalcomponent_get_description(component), longestNotes);
    event.start = zones.instant(at);
    event.allDay = at.kind == IcsMoment::Kind::date;
    event.end = event.allDay ? zones.instant(at.at(at.local + std::chrono::floor<days>(length(zones))))
                             : event.start + length(zones);
    event.repeats = repeats;
    icalproperty* transparency = first(component, ICAL_TRANSP_PROPERTY);
    event.isBusy = !transparency || !mentions(icalproperty_get_value_as_string(transparency), "TRANSPARENT");
    return event;
}

std::vector<IcsMoment> IcsEvent::occurrences(Search& search) const
{
    const IcsZones& zones = search.zones;
    const milliseconds lasts = length(zones);
    const auto isWanted = [&](const IcsMoment& moment) {
        const Instant begins = zones.instant(moment);
        return begins < search.to
            && (begins + lasts > search.from || (begins >= search.from && lasts == milliseconds(0)));
    };
    std::vector<IcsMoment> found{start};
    int rules = 0;
    for (icalproperty* rule = first(component, ICAL_RRULE_PROPERTY); rule && rules < IcsLimits::mostRules;
         rule = icalcomponent_get_next_property(component, ICAL_RRULE_PROPERTY), ++rules)
        followRule(rule, search.from - lasts, search, found);
    search.omissions.repeats |= icalcomponent_count_properties(component, ICAL_RRULE_PROPERTY) > IcsLimits::mostRules;
    addFurtherDates(search, found);
    std::erase_if(found, [&](const IcsMoment& moment) { return !isWanted(moment); });
    std::sort(found.begin(), found.end(),
        [&](const IcsMoment& left, const IcsMoment& right) { return zones.instant(left) < zones.instant(right); });
    const auto isSame = [&](const IcsMoment& left, const IcsMoment& right) {
        return zones.instant(left) == zones.instant(right);
    };
    found.erase(std::unique(found.begin(), found.end(), isSame), found.end());
    removeStruckOut(zones, found);
    return found;
}

void IcsEvent::addFurtherDates(Search& search, std::vector<IcsMoment>& found) const
{
    const IcsZones& zones = search.zones;
    int dates = 0;
    for (icalproperty* date = first(component, ICAL_RDATE_PROPERTY); date;
         date = icalcomponent_get_next_property(component, ICAL_RDATE_PROPERTY)) {
        if (++dates > IcsLimits::longestSearch) {
            search.omissions.repeats = true;
            return;
        }
        const auto moment = IcsMoment::read(date);
        if (moment && start.kind == IcsMoment::Kind::date)
            found.push_back(start.at(std::chrono::floor<days>(moment->local)));
        else if (moment && moment->kind != IcsMoment::Kind::date)
            found.push_back(zones.moment(zones.instant(moment->like(start)), start));
    }
}

/// The rule counts on the clock of the series' own zone, so that nine o'clock stays nine o'clock.
void IcsEvent::followRule(icalproperty* property, Instant from, Search& search, std::vector<IcsMoment>& found) const
{
    icalrecurrencetype rule = icalproperty_get_rrule(property);
    const bool isHourly = rule.freq == ICAL_HOURLY_RECURRENCE;
    if (IcsRule::neverComes(rule))
        return;
    if (!IcsRule::canBeFollowed(rule) || (isHourly && start.kind == IcsMoment::Kind::date)) {
        search.omissions.repeats = true;
        return;
    }
    IcsRule::simplify(rule);
    if (isHourly)
        return followHours(rule, from, search, found);
    if (IcsWeekNumbers::areNamed(rule))
        return followWeeks(rule, from, search, found);
    const IcsZones& zones = search.zones;
    IcsMoment plain = start;
    if (plain.kind != IcsMoment::Kind::date)
        plain.kind = IcsMoment::Kind::floating;
    rule.until = plain.at(farthest(rule, search)).time();
    icalrecur_iterator* iterator = icalrecur_iterator_new(rule, plain.time());
    if (!iterator)
        return;
    const IcsMoment near = zones.moment(from - days(2), start);
    // Skipping ahead loses count of occurrences that are numbered.
    if (rule.count == 0 && near.local > plain.local)
        icalrecur_iterator_set_start(iterator, plain.at(near.local).time());
    bool isWhole = false;
    for (int step = 0; step < IcsLimits::longestSearch && found.size() < IcsLimits::mostOccurrences; ++step) {
        const auto next = IcsMoment::from(icalrecur_iterator_next(iterator));
        const IcsMoment occurrence = next ? start.at(next->local) : start;
        const Instant begins = next ? zones.instant(occurrence) : search.to;
        isWhole = begins >= search.to;
        if (isWhole || search.patience.isOver())
            break;
        if (begins >= from)
            found.push_back(occurrence);
    }
    search.omissions.repeats |= !isWhole && !search.patience.isOver();
    icalrecur_iterator_free(iterator);
}

/// No further than asked, so that a rule that never comes again is not followed to the end of time.
IcsLocalTime IcsEvent::farthest(const icalrecurrencetype& rule, const Search& search) const
{
    const IcsZones& zones = search.zones;
    const IcsLocalTime asked = zones.moment(search.to, start).local + days(1);
    auto until = IcsMoment::from(rule.until);
    if (until && until->kind == IcsMoment::Kind::utc && start.kind != IcsMoment::Kind::utc)
        until->local = zones.moment(zones.instant(*until), start).local;
    if (until && until->kind == IcsMoment::Kind::date && start.kind != IcsMoment::Kind::date)
        until->local += days(1) - seconds(1);
    return until ? std::min(until->local, asked) : asked;
}

void IcsEvent::followWeeks(
    const icalrecurrencetype& rule, Instant from, Search& search, std::vector<IcsMoment>& found) const
{
    const IcsLocalTime last = farthest(rule, search);
    const auto yearOf = [&rule](IcsLocalTime local) {
        return IcsWeekNumbers::yearOf(rule, std::chrono::floor<days>(local));
    };
    const LocalDay first = std::chrono::floor<days>(start.local);
    const int interval = std::max<int>(rule.interval, 1);
    const int begins = yearOf(start.local);
    const int near = rule.count == 0 ? yearOf(search.zones.moment(from - days(2), start).local) : begins;
    int step = 0;
    for (int year = begins + std::max(near - begins, 0) / interval * interval; year <= yearOf(last); year += interval) {
        for (const LocalDay day : IcsWeekNumbers::days(rule, first, year)) {
            const IcsMoment occurrence = start.at(day + (start.local - first));
            if (occurrence.local < start.local)
                continue;
            const bool isOver = occurrence.local > last || (rule.count > 0 && step >= rule.count);
            const bool isTooFar = ++step > IcsLimits::longestSearch || found.size() >= IcsLimits::mostOccurrences;
            search.omissions.repeats |= isTooFar && !isOver;
            if (isOver || isTooFar || search.patience.isOver())
                return;
            if (search.zones.instant(occurrence) >= from)
                found.push_back(occurrence);
        }
    }
}

/// Hours need no calendar, and years of them no patience.
void IcsEvent::followHours(
    const icalrecurrencetype& rule, Instant from, Search& search, std::vector<IcsMoment>& found) const
{
    const auto interval = std::chrono::hours(std::max<int>(rule.interval, 1));
    const Instant first = search.zones.instant(start);
    const auto until = IcsMoment::from(rule.until);
    const Instant last = until ? std::min(search.to, search.zones.instant(until->like(start)) + seconds(1)) : search.to;
    std::int64_t step = from > first ? (from - first) / interval : 0;
    for (; rule.count == 0 || step < rule.count; ++step) {
        const Instant begins = first + step * interval;
        search.omissions.repeats |= begins < last && found.size() >= IcsLimits::mostOccurrences;
        if (begins >= last || found.size() >= IcsLimits::mostOccurrences)
            break;
        if (begins >= from)
            found.push_back(search.zones.moment(begins, start));
    }
}

/// A day that is struck out of a series with times takes all that happens on it.
void IcsEvent::removeStruckOut(const IcsZones& zones, std::vector<IcsMoment>& found) const
{
    std::set<Instant> moments;
    std::set<LocalDay> wholeDays;
    for (icalproperty* property = first(component, ICAL_EXDATE_PROPERTY); property;
         property = icalcomponent_get_next_property(component, ICAL_EXDATE_PROPERTY)) {
        const auto struck = IcsMoment::read(property);
        if (struck && (struck->kind == IcsMoment::Kind::date || start.kind == IcsMoment::Kind::date))
            wholeDays.insert(std::chrono::floor<days>(struck->local));
        else if (struck)
            moments.insert(zones.instant(struck->like(start)));
    }
    std::erase_if(found, [&](const IcsMoment& moment) {
        return wholeDays.contains(std::chrono::floor<days>(moment.local)) || moments.contains(zones.instant(moment));
    });
}

} // namespace quorvell
