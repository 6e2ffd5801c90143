// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/EventsOfDataServer.h"

#include "Quorvell/agenda/IcsLimits.h"

#include <algorithm>
#include <map>
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

bool EventsOfDataServer::connect()
{
    m_calendars.havePatience(patience());
    return m_calendars.connect();
}

bool EventsOfDataServer::isThere()
{
    m_calendars.havePatience(patience());
    return m_calendars.isThere();
}

/// What has begun to be written is carried through, with the look at it afterwards.
void EventsOfDataServer::beginToWrite()
{
    constexpr std::chrono::seconds writing{5};
    havePatience({patience().stop, Patience::Clock::now() + writing});
    m_calendars.havePatience(patience());
}

AgendaReading EventsOfDataServer::read(Instant from, Instant to, const Calendar& calendar)
{
    AgendaReading reading;
    if (!connect())
        return reading;
    for (const auto& found : m_calendars.found()) {
        const IcsOmissions omissions = readCalendar(found, {from, to}, calendar, reading);
        for (std::string& sentence : omissions.sentences("The calendar “" + found.name + "”"))
            reading.problems.push_back(std::move(sentence));
        reading.isWhole = reading.isWhole && !omissions.time && !omissions.amount;
    }
    std::stable_sort(reading.events.begin(), reading.events.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    return reading;
}

/// Its range leaves out occurrences that were moved, so series from further around are asked for whole.
IcsOmissions EventsOfDataServer::readCalendar(
    const DataServerCalendars::Found& found, const Stretch& stretch, const Calendar& calendar, AgendaReading& reading)
{
    constexpr std::chrono::days around{31};
    if (patience().isOver())
        return {.time = true};
    const QString query = QString::fromStdString(rangeQuery(stretch.from - around, stretch.to + around));
    const auto answer = m_calendars.ask(found.uid, "GetObjectList", {query});
    if (!answer || answer->isEmpty()) {
        reading.problems.push_back("The calendar “" + found.name + "” did not answer: " + m_calendars.problem());
        return {};
    }
    return readObjects(found, answer->front().toStringList(), stretch, calendar, reading.events);
}

IcsOmissions EventsOfDataServer::readObjects(const DataServerCalendars::Found& found, const QStringList& objects,
    const Stretch& stretch, const Calendar& calendar, std::vector<CalendarEvent>& events)
{
    IcsOmissions omissions;
    const auto collect = [&](const IcsCalendar& ics) {
        IcsReading one = ics.between(stretch.from, stretch.to, letter(), calendar, patience());
        omissions |= one.omissions;
        for (CalendarEvent& event : one.events) {
            event.id.uid = found.uid + "/" + event.id.uid;
            omissions.amount |= events.size() >= IcsLimits::mostOccurrences;
            if (events.size() < IcsLimits::mostOccurrences)
                events.push_back(std::move(event));
        }
    };
    std::set<std::string> followed;
    for (const QString& text : objects) {
        omissions.time |= patience().isOver();
        if (omissions.time || omissions.amount)
            break;
        const auto one = IcsCalendar::parse(text.toStdString());
        const std::string uid = one ? one->firstUid() : "";
        if (uid.empty() || !followed.insert(uid).second)
            continue;
        if (!one->hasSeries())
            collect(*one);
        else if (const auto series = whole({found.uid, {letter(), uid, {}}}))
            collect(*series);
    }
    return omissions;
}

std::string EventsOfDataServer::missing() const
{
    return patience().isOver() ? "The desktop's calendar took too long to answer, so nothing was done. Say so."
                               : notThere;
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

AgendaVerdict EventsOfDataServer::find(const EventID& id, const Calendar& calendar)
{
    const auto place = placeOf(id);
    const auto ics = place && connect() ? whole(*place) : std::nullopt;
    auto event = ics ? ics->find(place->id, calendar) : std::nullopt;
    if (!event)
        return failed(missing());
    event->id = id;
    return {event, ""};
}

AgendaVerdict EventsOfDataServer::add(const EventDraft& draft, const Calendar& calendar, Instant now)
{
    if (!connect())
        return failed("There is no session bus any more, so the desktop's calendars cannot be reached.");
    const auto parts = IcsCalendar::withEvent(draft, calendar, now).parts(draft.uid, calendar);
    const QString text = QString::fromStdString(parts.empty() ? "" : parts.begin()->second);
    beginToWrite();
    const auto answer = m_calendars.ask(ownCalendar, "CreateObjects", {QStringList{text}, noFlags});
    if (!answer)
        return failed("The desktop's calendar did not take the event: " + m_calendars.problem());
    const QStringList uids = answer->isEmpty() ? QStringList() : answer->front().toStringList();
    const std::string uid = uids.isEmpty() ? draft.uid : uids.front().toStdString();
    const EventID id{letter(), std::string(ownCalendar) + "/" + uid, {}};
    AgendaVerdict added = find(id, calendar);
    if (!added.event)
        added.problem = "The desktop's calendar took the event but does not show it. Look it up.";
    else
        added.trace = traceOf({ownCalendar, {letter(), uid, {}}}, "");
    return added;
}

EventTrace EventsOfDataServer::traceOf(const Place& place, const std::string& before)
{
    const auto after = whole(place); // As the service made it its own.
    return {{letter(), place.calendar + "/" + place.id.uid, {}}, place.calendar, before, after ? after->text() : ""};
}

bool EventsOfDataServer::create(const Place& place, const IcsCalendar& event, const Calendar& calendar)
{
    beginToWrite();
    for (const auto& [occurrence, text] : event.parts(place.id.uid, calendar)) { // The series itself comes first.
        const bool isTaken = occurrence.empty()
            ? m_calendars.ask(place.calendar, "CreateObjects", {QStringList{QString::fromStdString(text)}, noFlags})
                  .has_value()
            : write(place, text, "this");
        if (!isTaken)
            return false;
    }
    return true;
}

AgendaVerdict EventsOfDataServer::takeBack(const EventTrace& trace, const Calendar& calendar)
{
    const auto place = placeOf(trace.id);
    if (!place || !connect())
        return failed(missing());
    const auto now = whole(*place);
    if (!now && patience().isOver())
        return failed(missing());
    const auto before = IcsCalendar::parse(trace.before);
    const auto after = IcsCalendar::parse(trace.after);
    using Parts = std::map<std::string, std::string>;
    const auto partsOf = [&](const std::optional<IcsCalendar>& ics) {
        return ics ? ics->parts(place->id.uid, calendar) : Parts();
    };
    if (partsOf(now) != partsOf(after))
        return failed(changedSince);
    beginToWrite();
    const bool isDone = !before ? removeObject(*place, "")
        : now                   ? store(*place, *now, *before, calendar)
                                : create(*place, *before, calendar);
    return isDone ? AgendaVerdict()
                  : failed("The desktop's calendar did not take that back, or not all of it: " + m_calendars.problem()
                      + ". Look the event up.");
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
    beginToWrite();
    if (after.eventCount() == 0)
        return removeObject(place, "");
    const auto old = before.parts(place.id.uid, calendar);
    const auto wanted = after.parts(place.id.uid, calendar);
    const auto event = wanted.find("");
    for (const auto& [occurrence, text] : wanted) { // The series itself comes first.
        const auto known = old.find(occurrence);
        const bool isNews = known == old.end() || known->second != text;
        if (isNews && !write(place, text, occurrence.empty() ? "all" : "this"))
            return false;
    }
    bool hasRemoved = false;
    for (const auto& [occurrence, text] : old) {
        if (occurrence.empty() || wanted.contains(occurrence))
            continue;
        if (!removeObject(place, occurrence))
            return false;
        hasRemoved = true;
    }
    // What it removes it also strikes out of the series, by a date without a zone.
    return !hasRemoved || event == wanted.end() || write(place, event->second, "all");
}

AgendaVerdict EventsOfDataServer::change(
    const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now)
{
    const auto place = placeOf(id);
    const auto before = place && connect() ? whole(*place) : std::nullopt;
    auto after = before ? IcsCalendar::parse(before->text()) : std::nullopt;
    if (!after)
        return failed(missing());
    if (std::string problem = after->change(place->id, scope, change, calendar, now); !problem.empty())
        return failed(std::move(problem));
    if (!store(*place, *before, *after, calendar))
        return failed("The desktop's calendar did not take the change, or not all of it: " + m_calendars.problem()
            + ". Look the event up.");
    AgendaVerdict changed = find(id, calendar);
    if (!changed.event) // a series that moved has other occurrences now
        changed = find({id.calendar, id.uid, {}}, calendar);
    if (!changed.event)
        changed.problem = "The desktop's calendar took the change but does not show the event. Look it up.";
    changed.trace = traceOf(*place, before->text());
    return changed;
}

AgendaVerdict EventsOfDataServer::remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now)
{
    const auto place = placeOf(id);
    const auto before = place && connect() ? whole(*place) : std::nullopt;
    auto event = before ? before->find(place->id, calendar) : std::nullopt;
    auto after = event ? IcsCalendar::parse(before->text()) : std::nullopt;
    if (!after)
        return failed(missing());
    if (std::string problem = after->remove(place->id, scope, calendar, now); !problem.empty())
        return failed(std::move(problem));
    if (!store(*place, *before, *after, calendar))
        return failed("The desktop's calendar did not delete the event, or not all of it: " + m_calendars.problem()
            + ". Look it up.");
    event->id = id;
    return {event, "", traceOf(*place, before->text())};
}

} // namespace quorvell
