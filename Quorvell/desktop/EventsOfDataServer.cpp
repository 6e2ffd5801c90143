#include "Quorvell/desktop/EventsOfDataServer.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <algorithm>
#include <array>
#include <atomic>
#include <ctime>
#include <set>
#include <utility>

namespace quorvell {

namespace {

const QString prefix = QStringLiteral("org.gnome.evolution.dataserver.");
const QString objects = QStringLiteral("/org/gnome/evolution/dataserver/");
constexpr const char* ownCalendar = "system-calendar"; ///< "Personal", which every installation has.
constexpr int timeOut = 2000; ///< Milliseconds.
constexpr unsigned noFlags = 0;

QDBusMessage callTo(const QString& service, const QString& path, const QString& interface, const char* method)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QString::fromLatin1(method));
    call.setAutoStartService(false);
    return call;
}

/// The value of a key in a group of a key file, without translations.
std::string keyOf(const std::string& data, std::string_view group, std::string_view key)
{
    std::string_view current;
    for (std::size_t start = 0; start < data.size();) {
        const std::size_t end = std::min(data.find('\n', start), data.size());
        const std::string_view line = std::string_view(data).substr(start, end - start);
        start = end + 1;
        if (line.starts_with("[") && line.ends_with("]"))
            current = line.substr(1, line.size() - 2);
        else if (current == group && line.size() > key.size() && line.starts_with(key) && line[key.size()] == '=')
            return std::string(line.substr(key.size() + 1));
    }
    return "";
}

/// A calendar that is switched on and shown.
bool isShownCalendar(const std::string& data)
{
    return data.find("[Calendar]") != std::string::npos && keyOf(data, "Data Source", "Enabled") != "false"
        && keyOf(data, "Calendar", "Enabled") != "false" && keyOf(data, "Calendar", "Selected") != "false"
        && !keyOf(data, "Calendar", "BackendName").empty();
}

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

/// The objects' paths are of no interest; the uid and the data of each source are.
std::vector<std::pair<std::string, std::string>> sourcesIn(const QVariant& answer)
{
    constexpr std::size_t mostSources = 1000;
    std::vector<std::pair<std::string, std::string>> sources;
    if (answer.metaType() != QMetaType::fromType<QDBusArgument>())
        return sources;
    const auto argument = answer.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a{oa{sa{sv}}}"))
        return sources;
    argument.beginMap();
    while (!argument.atEnd()) {
        QDBusObjectPath path;
        QMap<QString, QVariantMap> interfaces;
        argument.beginMapEntry();
        argument >> path >> interfaces;
        argument.endMapEntry();
        const QVariantMap source = interfaces.value(prefix + QStringLiteral("Source"));
        if (sources.size() < mostSources)
            sources.emplace_back(source.value(QStringLiteral("UID")).toString().toStdString(),
                source.value(QStringLiteral("Data")).toString().toStdString());
    }
    argument.endMap();
    return sources;
}

/// One occurrence of one series, or all of it, as RemoveObjects takes them.
struct RemovedObject {
    QString uid;
    QString occurrence;
};

QDBusArgument& operator<<(QDBusArgument& argument, const RemovedObject& object)
{
    argument.beginStructure();
    argument << object.uid << object.occurrence;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RemovedObject& object)
{
    argument.beginStructure();
    argument >> object.uid >> object.occurrence;
    argument.endStructure();
    return argument;
}

} // namespace

} // namespace quorvell

Q_DECLARE_METATYPE(quorvell::RemovedObject)

namespace quorvell {

EventsOfDataServer::~EventsOfDataServer()
{
    m_bus.reset();
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
}

bool EventsOfDataServer::connect()
{
    static std::atomic<int> made = 0;
    if (m_bus && m_bus->isConnected())
        return true;
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
    m_opened.clear();
    m_connectionName = QStringLiteral("quorvell-calendars-%1").arg(++made);
    m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    qDBusRegisterMetaType<RemovedObject>();
    qDBusRegisterMetaType<QList<RemovedObject>>();
    return m_bus->isConnected();
}

std::optional<QVariantList> EventsOfDataServer::ask(const QDBusMessage& call)
{
    const QDBusMessage reply = m_bus->call(call, QDBus::Block, timeOut);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments();
    m_problem = reply.errorMessage().toStdString();
    return std::nullopt;
}

bool EventsOfDataServer::isThere()
{
    if (!connect())
        return false;
    QDBusMessage call = callTo(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), "NameHasOwner");
    call << prefix + QStringLiteral("Calendar8");
    const auto answer = ask(call);
    return answer && !answer->isEmpty() && answer->front().toBool();
}

std::vector<EventsOfDataServer::Found> EventsOfDataServer::calendars()
{
    std::vector<Found> found;
    const auto answer = ask(callTo(prefix + QStringLiteral("Sources5"), objects + QStringLiteral("SourceManager"),
        QStringLiteral("org.freedesktop.DBus.ObjectManager"), "GetManagedObjects"));
    if (!answer || answer->isEmpty())
        return found;
    for (const auto& [uid, data] : sourcesIn(answer->front()))
        if (isShownCalendar(data) && !uid.empty() && uid.find('/') == std::string::npos && found.size() < mostCalendars)
            found.push_back({uid, keyOf(data, "Data Source", "DisplayName")});
    return found;
}

std::optional<EventsOfDataServer::Opened> EventsOfDataServer::open(const std::string& calendar)
{
    if (const auto known = m_opened.find(calendar); known != m_opened.end())
        return known->second;
    QDBusMessage call = callTo(prefix + QStringLiteral("Calendar8"), objects + QStringLiteral("CalendarFactory"),
        prefix + QStringLiteral("CalendarFactory"), "OpenCalendar");
    call << QString::fromStdString(calendar);
    const auto answer = ask(call);
    if (!answer || answer->size() < 2)
        return std::nullopt;
    const Opened opened{answer->at(1).toString(), answer->at(0).toString()};
    if (opened.path.isEmpty() || opened.service.isEmpty())
        return std::nullopt;
    const QString interface = prefix + QStringLiteral("Calendar");
    if (!ask(callTo(opened.service, opened.path, interface, "Open")))
        return std::nullopt;
    m_opened[calendar] = opened;
    return opened;
}

/// An object that went away with the program behind it is opened once more.
std::optional<QVariantList> EventsOfDataServer::askCalendar(
    const std::string& calendar, const char* method, const QVariantList& arguments)
{
    for (const bool isLast : {false, true}) {
        const bool wasOpen = m_opened.contains(calendar);
        const auto opened = open(calendar);
        if (!opened)
            return std::nullopt;
        QDBusMessage call = callTo(opened->service, opened->path, prefix + QStringLiteral("Calendar"), method);
        call.setArguments(arguments);
        const QDBusMessage reply = m_bus->call(call, QDBus::Block, timeOut);
        if (reply.type() == QDBusMessage::ReplyMessage)
            return reply.arguments();
        m_problem = reply.errorMessage().toStdString();
        const QDBusError::ErrorType error = QDBusError(reply).type();
        constexpr std::array gone{QDBusError::ServiceUnknown, QDBusError::UnknownObject, QDBusError::UnknownInterface,
            QDBusError::UnknownMethod, QDBusError::Disconnected};
        if (isLast || !wasOpen || std::find(gone.begin(), gone.end(), error) == gone.end())
            return std::nullopt;
        m_opened.erase(calendar);
    }
    return std::nullopt;
}

AgendaReading EventsOfDataServer::read(Instant from, Instant to, const Calendar& calendar)
{
    AgendaReading reading;
    if (!connect())
        return reading;
    for (const Found& found : calendars())
        readCalendar(found, from, to, calendar, reading);
    std::stable_sort(reading.events.begin(), reading.events.end(),
        [](const CalendarEvent& left, const CalendarEvent& right) { return left.start < right.start; });
    return reading;
}

/// Its range leaves out occurrences that were moved, so series from further around are asked for whole.
void EventsOfDataServer::readCalendar(
    const Found& found, Instant from, Instant to, const Calendar& calendar, AgendaReading& reading)
{
    constexpr std::chrono::days around{31};
    const auto answer =
        askCalendar(found.uid, "GetObjectList", {QString::fromStdString(rangeQuery(from - around, to + around))});
    if (!answer || answer->isEmpty()) {
        reading.problems.push_back("The calendar “" + found.name + "” did not answer: " + m_problem);
        return;
    }
    const auto collect = [&](const IcsCalendar& ics) {
        for (CalendarEvent& event : ics.between(from, to, letter(), calendar)) {
            event.id.uid = found.uid + "/" + event.id.uid;
            if (reading.events.size() < IcsCalendar::mostOccurrences)
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
        if (const auto whole = series({found.uid, {letter(), uid, {}}}))
            collect(*whole);
    }
}

std::optional<EventsOfDataServer::Place> EventsOfDataServer::placeOf(const EventID& id)
{
    const std::size_t slash = id.uid.find('/');
    if (slash == std::string::npos || slash == 0 || slash + 1 == id.uid.size())
        return std::nullopt;
    return Place{id.uid.substr(0, slash), {id.calendar, id.uid.substr(slash + 1), id.occurrence}};
}

std::optional<IcsCalendar> EventsOfDataServer::series(const Place& place)
{
    const auto answer = askCalendar(place.calendar, "GetObject", {QString::fromStdString(place.id.uid), QString()});
    return answer && !answer->isEmpty() ? IcsCalendar::parse(answer->front().toString().toStdString()) : std::nullopt;
}

std::optional<CalendarEvent> EventsOfDataServer::find(const EventID& id, const Calendar& calendar)
{
    const auto place = placeOf(id);
    const auto ics = place && connect() ? series(*place) : std::nullopt;
    auto event = ics ? ics->find(place->id, calendar) : std::nullopt;
    if (event)
        event->id = id;
    return event;
}

AgendaVerdict EventsOfDataServer::add(const EventDraft& draft, const Calendar& calendar, Instant now)
{
    if (!connect())
        return failed("There is no session bus any more, so the desktop's calendars cannot be reached.");
    const IcsCalendar ics = IcsCalendar::withEvent(draft, calendar, now);
    const QString text = QString::fromStdString(ics.textOf({letter(), draft.uid, {}}));
    const auto answer = askCalendar(ownCalendar, "CreateObjects", {QStringList{text}, noFlags});
    if (!answer)
        return failed("The desktop's calendar did not take the event: " + m_problem);
    const QStringList uids = answer->isEmpty() ? QStringList() : answer->front().toStringList();
    const std::string uid = uids.isEmpty() ? draft.uid : uids.front().toStdString();
    const EventID id{letter(), std::string(ownCalendar) + "/" + uid, {}};
    auto event = find(id, calendar);
    return {event, event ? "" : "The desktop's calendar took the event but does not show it. Look it up."};
}

AgendaVerdict EventsOfDataServer::change(
    const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now)
{
    const auto place = placeOf(id);
    auto ics = place && connect() ? series(*place) : std::nullopt;
    if (!ics)
        return failed(notThere);
    const bool isSeries = ics->hasSeries() && (scope == EventScope::series || id.occurrence.empty());
    if (isSeries && ics->eventCount() > 1 && (change.start || change.end))
        return failed("Single times of this series were changed before. Move the series in your calendar program.");
    if (std::string problem = ics->change(place->id, scope, change, calendar, now); !problem.empty())
        return failed(std::move(problem));
    const bool isOccurrence = !isSeries && !place->id.occurrence.empty();
    const EventID changed{letter(), place->id.uid, isOccurrence ? place->id.occurrence : ""};
    const QString text = QString::fromStdString(ics->textOf(changed));
    const QString what = isOccurrence ? QStringLiteral("this") : QStringLiteral("all");
    if (!askCalendar(place->calendar, "ModifyObjects", {QStringList{text}, what, noFlags}))
        return failed("The desktop's calendar did not take the change: " + m_problem);
    auto event = find(id, calendar);
    if (!event) // a series that moved has other occurrences now
        event = find({id.calendar, id.uid, {}}, calendar);
    return {event, event ? "" : notThere};
}

AgendaVerdict EventsOfDataServer::remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant)
{
    const auto before = find(id, calendar);
    const auto place = placeOf(id);
    if (!before || !place)
        return failed(notThere);
    const bool isOne = scope == EventScope::occurrence && before->repeats && !place->id.occurrence.empty();
    const RemovedObject object{
        QString::fromStdString(place->id.uid), isOne ? QString::fromStdString(place->id.occurrence) : QString()};
    const QString what = isOne ? QStringLiteral("this") : QStringLiteral("all");
    if (!askCalendar(
            place->calendar, "RemoveObjects", {QVariant::fromValue(QList<RemovedObject>{object}), what, noFlags}))
        return failed("The desktop's calendar did not delete the event: " + m_problem);
    return {before, ""};
}

} // namespace quorvell
