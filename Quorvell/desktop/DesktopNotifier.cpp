// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/DesktopNotifier.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

#include <array>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
constexpr int showTimeOut = 5000; ///< Milliseconds; the program that shows them may have to be started.
/// Who has the name already may not be ready to show anything: while a desktop starts, the two lie apart.
constexpr std::array<std::chrono::milliseconds, 3> retriesAfter{
    {std::chrono::milliseconds(500), std::chrono::milliseconds(2500), std::chrono::milliseconds(10'000)}};

QDBusMessage serverCall(const char* method)
{
    return QDBusMessage::createMethodCall(service, path, service, QString::fromLatin1(method));
}

BusSignals::Kind signal(const char* name)
{
    return {service, path, service, QString::fromLatin1(name)};
}

/// First argument of a signal or an answer, which is its notification; 0 for anything else.
uint idOf(const QDBusMessage& message)
{
    const auto arguments = message.arguments();
    return arguments.isEmpty() || arguments.front().metaType() != QMetaType::fromType<uint>()
        ? 0
        : arguments.front().toUInt();
}

} // namespace

DesktopNotifier::DesktopNotifier(const QDBusConnection& sessionBus, NoticeNumbers numbers)
    : m_bus(sessionBus)
    , m_numbers(std::move(numbers))
    , m_owner(std::make_unique<QDBusServiceWatcher>(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange))
    , m_actions(std::make_unique<BusSignals>(
          m_bus, signal("ActionInvoked"), [this](const QDBusMessage& message) { actionInvoked(message); }))
    , m_closings(std::make_unique<BusSignals>(
          m_bus, signal("NotificationClosed"), [this](const QDBusMessage& message) { notificationClosed(message); }))
    , m_context(std::make_unique<QObject>())
{
    QObject::connect(m_owner.get(), &QDBusServiceWatcher::serviceOwnerChanged, m_context.get(),
        [this](const QString&, const QString&, const QString& newOwner) { ownerChanged(!newOwner.isEmpty()); });
    askForAbilities();
}

DesktopNotifier::~DesktopNotifier()
{
    for (auto& [key, shown] : m_shown) {
        if (shown.id == 0 || shown.want == Want::withdrawn || shown.notice.actions.empty())
            continue;
        shown.notice.actions.clear();
        m_bus.send(notifyCall(shown.notice, {shown.id, {}}));
    }
}

void DesktopNotifier::setReports(Reports reports)
{
    m_reports = std::move(reports);
}

void DesktopNotifier::askForAbilities()
{
    QDBusMessage call = serverCall("GetCapabilities");
    call.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, showTimeOut), m_context.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_context.get(), [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QStringList> reply = *watcher;
        if (reply.isError())
            return;
        m_knowsMarkup = reply.value().contains(QStringLiteral("body-markup"));
        m_knowsActions = reply.value().contains(QStringLiteral("actions"));
    });
}

void DesktopNotifier::show(const Notice& notice)
{
    Shown& shown = m_shown[notice.key];
    shown.notice = notice.printable();
    shown.want = Want::shown;
    shown.isStale = shown.isUnderWay;
    if (!shown.isUnderWay)
        send(notice.key);
}

void DesktopNotifier::withdraw(const std::string& key)
{
    const auto found = m_shown.find(key);
    if (found == m_shown.end())
        return;
    if (found->second.isUnderWay) {
        found->second.want = Want::withdrawn;
        return;
    }
    closeNotification(found->second.id);
    m_shown.erase(found);
}

void DesktopNotifier::closeNotification(uint id)
{
    QDBusMessage call = serverCall("CloseNotification");
    call.setAutoStartService(false);
    call << id;
    m_bus.send(call);
}

QDBusMessage DesktopNotifier::notifyCall(const Notice& notice, const NoticeNumbers::Number& inPlaceOf) const
{
    constexpr int stays = 0; // until the user does something with it
    QStringList actions;
    if (m_knowsActions)
        for (const Notice::Action& action : notice.actions)
            actions << QString::fromStdString(action.key) << QString::fromStdString(action.label);
    const QString body = QString::fromStdString(notice.body);
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("quorvell")},
        {QStringLiteral("category"), QStringLiteral("x-quorvell.reminder")},
        // Some services put a notice in the place of one with the same tag, even where its number was never learned.
        {QStringLiteral("x-dunst-stack-tag"), QString::fromStdString(notice.key)}};
    if (notice.isUrgent) {
        constexpr quint8 critical = 2;
        hints.insert(QStringLiteral("urgency"), QVariant::fromValue(critical));
        hints.insert(QStringLiteral("resident"), true);
        hints.insert(QStringLiteral("category"), QStringLiteral("x-quorvell.alarm"));
        hints.insert(QStringLiteral("suppress-sound"), true); // It has one.
    }
    const QString server = inPlaceOf.server.empty() ? service : QString::fromStdString(inPlaceOf.server);
    QDBusMessage call = QDBusMessage::createMethodCall(server, path, service, QStringLiteral("Notify"));
    call << QStringLiteral("Quorvell") << inPlaceOf.id << QStringLiteral("appointment-soon")
         << QString::fromStdString(notice.title) << (m_knowsMarkup ? body.toHtmlEscaped() : body) << actions << hints
         << stays;
    return call;
}

void DesktopNotifier::send(const std::string& key)
{
    Shown& shown = m_shown[key];
    shown.isUnderWay = true;
    shown.isStale = false;
    const auto left = std::exchange(shown.wasSent, true) ? std::nullopt : m_numbers.find(key);
    const NoticeNumbers::Number inPlaceOf = left.value_or(NoticeNumbers::Number{shown.id, {}});
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(notifyCall(shown.notice, inPlaceOf), showTimeOut), m_context.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_context.get(), [this, watcher, key, inPlaceOf] {
        watcher->deleteLater();
        sent(key, inPlaceOf, watcher->reply());
    });
}

void DesktopNotifier::sent(const std::string& key, const NoticeNumbers::Number& inPlaceOf, const QDBusMessage& answer)
{
    const bool isShown = answer.type() == QDBusMessage::ReplyMessage && idOf(answer) != 0;
    // Who showed the notice before is gone, and with it the notice.
    if (!isShown && !inPlaceOf.server.empty() && m_shown.contains(key))
        return send(key);
    if (isShown)
        m_numbers.keep(key, {idOf(answer), answer.service().toStdString()});
    answered(key, isShown ? idOf(answer) : 0, isShown);
    if (!isShown && answer.errorName() != QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown"))
        retry(key);
}

void DesktopNotifier::retry(const std::string& key)
{
    const auto found = m_shown.find(key);
    if (found == m_shown.end() || found->second.retries >= retriesAfter.size())
        return;
    QTimer::singleShot(retriesAfter[found->second.retries++], m_context.get(), [this, key] {
        const auto waiting = m_shown.find(key);
        if (waiting != m_shown.end() && waiting->second.id == 0 && !waiting->second.isUnderWay)
            send(key);
    });
}

void DesktopNotifier::answered(const std::string& key, uint id, bool isShown)
{
    const auto found = m_shown.find(key);
    if (found == m_shown.end())
        return;
    Shown& shown = found->second;
    shown.isUnderWay = false;
    shown.id = id;
    if (shown.want == Want::withdrawn) {
        if (isShown)
            closeNotification(id);
        m_shown.erase(found);
        return;
    }
    if (!isShown) {
        const Notice notice = shown.notice;
        if (m_reports.couldNotShow)
            m_reports.couldNotShow(notice);
        return; // kept: whoever starts to show notifications later gets it
    }
    shown.retries = 0;
    if (shown.isStale)
        return send(key);
    if (m_reports.shown)
        m_reports.shown(key);
}

DesktopNotifier::Shown* DesktopNotifier::withId(uint id)
{
    for (auto& [key, shown] : m_shown)
        if (id != 0 && shown.id == id)
            return &shown;
    return nullptr;
}

void DesktopNotifier::actionInvoked(const QDBusMessage& signal)
{
    const Shown* shown = withId(idOf(signal));
    if (!shown || signal.arguments().size() < 2 || !m_reports.actionTaken)
        return;
    const std::string key = shown->notice.key;
    m_reports.actionTaken(key, signal.arguments().at(1).toString().toStdString());
}

/// Dismissed by the user, or gone by itself: not to be shown again when the program that showed it starts anew.
void DesktopNotifier::notificationClosed(const QDBusMessage& signal)
{
    const Shown* shown = withId(idOf(signal));
    if (!shown)
        return;
    const std::string key = shown->notice.key;
    if (!shown->isUnderWay)
        m_shown.erase(key);
}

void DesktopNotifier::ownerChanged(bool isThere)
{
    for (auto& [key, shown] : m_shown)
        shown.id = 0;
    if (!isThere)
        return;
    askForAbilities();
    for (auto& [key, shown] : m_shown)
        if (!shown.isUnderWay)
            send(key);
}

} // namespace quorvell
