// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/DataServerCalendars.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCall>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

namespace quorvell {

namespace {

const QString prefix = QStringLiteral("org.gnome.evolution.dataserver.");
const QString objects = QStringLiteral("/org/gnome/evolution/dataserver/");
constexpr int timeOut = 2000; ///< Milliseconds.

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

DataServerCalendars::~DataServerCalendars()
{
    m_bus.reset();
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
}

bool DataServerCalendars::connect()
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

bool DataServerCalendars::isThere()
{
    if (!connect())
        return false;
    QDBusMessage call = callTo(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), "NameHasOwner");
    call << prefix + QStringLiteral("Calendar8");
    const auto answer = ask(call);
    return answer && !answer->isEmpty() && answer->front().toBool();
}

std::vector<DataServerCalendars::Found> DataServerCalendars::found()
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

std::optional<DataServerCalendars::Opened> DataServerCalendars::open(const std::string& calendar)
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
std::optional<QVariantList> DataServerCalendars::ask(
    const std::string& calendar, const char* method, const QVariantList& arguments)
{
    for (const bool isLast : {false, true}) {
        const bool wasOpen = m_opened.contains(calendar);
        const auto opened = open(calendar);
        if (!opened)
            return std::nullopt;
        QDBusMessage call = callTo(opened->service, opened->path, prefix + QStringLiteral("Calendar"), method);
        call.setArguments(arguments);
        const QDBusMessage reply = answerTo(call);
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

std::optional<QVariantList> DataServerCalendars::ask(const QDBusMessage& call)
{
    const QDBusMessage reply = answerTo(call);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments();
    m_problem = reply.errorMessage().toStdString();
    return std::nullopt;
}

/// Waits in small steps, since a call that blocks could not be broken off. The connection's own thread takes the
/// answer.
QDBusMessage DataServerCalendars::answerTo(const QDBusMessage& call)
{
    constexpr std::chrono::microseconds shortest{100};
    constexpr std::chrono::microseconds longest{10'000};
    const QDBusPendingCall pending = m_bus->asyncCall(call, timeOut);
    for (auto step = shortest; !pending.isFinished(); step = std::min(step * 2, longest)) {
        if (m_patience.isOver())
            return QDBusMessage::createError(QDBusError::NoReply, QStringLiteral("it took too long"));
        std::this_thread::sleep_for(step);
    }
    return pending.reply();
}

QVariant DataServerCalendars::removedObject(const std::string& uid, const std::string& occurrence)
{
    return QVariant::fromValue(QList<RemovedObject>{{QString::fromStdString(uid), QString::fromStdString(occurrence)}});
}

} // namespace quorvell
