// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/EventsOfDataServer.h"

#include "Quorvell/agenda/IcsLimits.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* ownCalendar = "system-calendar"; ///< "Personal", which every installation has.
constexpr unsigned noFlags = 0;

/// The language of its queries: (make-time "20261122T000000Z").
std::string queryTime(Instant instant)
{
    std::string text;
    for (const char letter : isoText(instant).substr(0, 19))
        if (letter != '-' && letter != ':')
            text += letter;
    return "(make-time \"" + text + "Z\")";
}

std::string rangeQuery(Instant from, Instant to)
{
    return "(occur-in-time-range? " + queryTime(from) + " " + queryTime(to) + ")";
}

AgendaVerdict failed(std::string problem)
{
    return {std::nullopt, std::move(problem)};
}

constexpr const char* notThere = "There is no event with that id any more. List the events again and use the id given "
                                 "there.";

/// It gives a single event without a calendar around it.
std::string inCalendar(const std::string& text)
{
    return text.starts_with("BEGIN:VCALENDAR") ? text
                                               : "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + text + "\r\nEND:VCALENDAR\r\n";
}

} // namespace

AgendaReading EventsOfDataServer::read(Instant from, Instant to, const Calendar& calendar)
{
    AgendaReading reading;
    if (!m_calendars.connect())
        return reading;
    for (const auto& found : m_calendars.found())
        readCalendar(found, from, to, calendar, reading);
    std::stable_sort(reading.events.begin(), reading.events.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    return reading;
}

/// Its range leaves out occurrences that were moved, so series from further around are asked for whole.
void EventsOfDataServer::readCalendar(
    const DataServerCalendars::Found& found, Instant from, Instant to, const Calendar& calendar, AgendaReading& reading)
{
    constexpr std::chrono::days around{31};
    const auto answer =
        m_calendars.ask(found.uid, "GetObjectList", {QString::fromStdString(rangeQuery(from - around, to + around))});
    if (!answer || answer->isEmpty()) {
        reading.problems.push_back("The calendar “" + found.name + "” did not answer: " + m_calendars.problem());
        return;
    }
    const auto collect = [&](const IcsCalendar& ics) {
        for (CalendarEvent& event : ics.between(from, to, letter(), calendar)) {
            event.id.uid = found.uid + "/" + event.id.uid;
            if (reading.events.size() < IcsLimits::mostOccurrences)
                reading.events.push_back(std::move(event));
        }
    };
    std::set<std::string> followed;
    for (const QString& text : answer->front().toStringList()) {
        const auto one = IcsCalendar::parse(text.toStdString());
        const std::string uid = one ? one->firstUid() : "";
        if (uid.empty() || !followed.insert(uid).second)
            continue;
        if (!one->hasSeries()) {
            collect(*one);
            continue;
        }
        if (const auto series = whole({found.uid, {letter(), uid, {}}}))
            collect(*series);
    }
}

std::optional<EventsOfDataServer::Place> EventsOfDataServer::placeOf(const EventID& id)
{
    const std::size_t slash = id.uid.find('/');
    if (slash == std::string::npos || slash == 0 || slash + 1 == id.uid.size())
        return std::nullopt;
    return Place{id.uid.substr(0, slash), {id.calendar, id.uid.substr(slash + 1), id.occurrence}};
}

/// The event with everything that was changed of single occurrences.
std::optional<IcsCalendar> EventsOfDataServer::whole(const Place& place)
{
    const auto answer = m_calendars.ask(place.calendar, "GetObject", {QString::fromStdString(place.id.uid), QString()});
    return answer && !answer->isEmpty() ? IcsCalendar::parse(inCalendar(answer->front().toString().toStdString()))
                                        : std::nullopt;
}

std::optional<CalendarEvent> EventsOfDataServer::find(const EventID& id, const Calendar& calendar)
{
    const auto place = placeOf(id);
    const auto ics = place && m_calendars.connect() ? whole(*place) : std::nullopt;
    auto event = ics ? ics->find(place->id, calendar) : std::nullopt;
    if (event)
        event->id = id;
    return event;
}

AgendaVerdict EventsOfDataServer::add(const EventDraft& draft, const Calendar& calendar, Instant now)
{
    if (!m_calendars.connect())
        return failed("There is no session bus any more, so the desktop's calendars cannot be reached.");
    const IcsCalendar ics = IcsCalendar::withEvent(draft, calendar, now);
    const QString text = QString::fromStdString(ics.textOf({letter(), draft.uid, {}}, calendar));
    const auto answer = m_calendars.ask(ownCalendar, "CreateObjects", {QStringList{text}, noFlags});
    if (!answer)
        return failed("The desktop's calendar did not take the event: " + m_calendars.problem());
    const QStringList uids = answer->isEmpty() ? QStringList() : answer->front().toStringList();
    const std::string uid = uids.isEmpty() ? draft.uid : uids.front().toStdString();
    const EventID id{letter(), std::string(ownCalendar) + "/" + uid, {}};
    auto event = find(id, calendar);
    return {event, event ? "" : "The desktop's calendar took the event but does not show it. Look it up."};
}

bool EventsOfDataServer::write(const Place& place, const std::string& text, const char* what)
{
    return m_calendars
        .ask(place.calendar, "ModifyObjects",
            {QStringList{QString::fromStdString(text)}, QString::fromLatin1(what), noFlags})
        .has_value();
}

bool EventsOfDataServer::removeObject(const Place& place, const std::string& occurrence)
{
    const QVariant object = DataServerCalendars::removedObject(place.id.uid, occurrence);
    const QString what = QString::fromLatin1(occurrence.empty() ? "all" : "this");
    return m_calendars.ask(place.calendar, "RemoveObjects", {object, what, noFlags}).has_value();
}

/// Hands over what an edit made of an event, part by part, as the service takes it. What is new goes first: a failure
/// on the way leaves something twice rather than lost.
bool EventsOfDataServer::store(
    const Place& place, const IcsCalendar& before, const IcsCalendar& after, const Calendar& calendar)
{
    if (after.eventCount() == 0)
        return removeObject(place, "");
    const auto textIn = [&](const IcsCalendar& ics, const std::string& occurrence) {
        return ics.textOf({letter(), place.id.uid, occurrence}, calendar);
    };
    const std::string event = textIn(after, "");
    if (event != textIn(before, "") && !write(place, event, "all"))
        return false;
    const auto wanted = after.changedOccurrences(place.id.uid, calendar);
    for (const std::string& occurrence : wanted)
        if (const std::string text = textIn(after, occurrence);
            text != textIn(before, occurrence) && !write(place, text, "this"))
            return false;
    bool hasRemoved = false;
    for (const std::string& occurrence : before.changedOccurrences(place.id.uid, calendar)) {
        if (wanted.contains(occurrence))
            continue;
        if (!removeObject(place, occurrence))
            return false;
        hasRemoved = true;
    }
    // What it removes it also strikes out of the series, by a date without a zone.
    return !hasRemoved || event.empty() || write(place, event, "all");
}

AgendaVerdict EventsOfDataServer::change(
    const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now)
{
    const auto place = placeOf(id);
    const auto before = place && m_calendars.connect() ? whole(*place) : std::nullopt;
    auto after = before ? IcsCalendar::parse(before->text()) : std::nullopt;
    if (!after)
        return failed(notThere);
    if (std::string problem = after->change(place->id, scope, change, calendar, now); !problem.empty())
        return failed(std::move(problem));
    if (!store(*place, *before, *after, calendar))
        return failed("The desktop's calendar did not take the change: " + m_calendars.problem());
    auto event = find(id, calendar);
    if (!event) // a series that moved has other occurrences now
        event = find({id.calendar, id.uid, {}}, calendar);
    return {event, event ? "" : notThere};
}

AgendaVerdict EventsOfDataServer::remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now)
{
    const auto place = placeOf(id);
    const auto before = place && m_calendars.connect() ? whole(*place) : std::nullopt;
    auto event = before ? before->find(place->id, calendar) : std::nullopt;
    auto after = event ? IcsCalendar::parse(before->text()) : std::nullopt;
    if (!after)
        return failed(notThere);
    if (std::string problem = after->remove(place->id, scope, calendar, now); !problem.empty())
        return failed(std::move(problem));
    if (!store(*place, *before, *after, calendar))
        return failed("The desktop's calendar did not delete the event: " + m_calendars.problem());
    event->id = id;
    return {event, ""};
}

} // namespace quorvell
