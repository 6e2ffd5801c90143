// SPDX-License-Identifier: MIT
#include "Quorvell/desktop/LoginWatch.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Answered = std::function<void(const QDBusPendingCall&)>;

const QString login = QStringLiteral("org.freedesktop.login1");
const QString loginPath = QStringLiteral("/org/freedesktop/login1");
const QString loginSession = QStringLiteral("org.freedesktop.login1.Session");
const QString ownSession = QStringLiteral("/org/freedesktop/login1/session/auto");
constexpr int callTimeOut = 2000; ///< Milliseconds.

QDBusMessage propertiesCall(const QString& sessionPath, const char* method)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        login, sessionPath, QStringLiteral("org.freedesktop.DBus.Properties"), QString::fromLatin1(method));
    call.setAutoStartService(false);
    return call;
}

void ask(const QDBusConnection& bus, const QDBusMessage& call, QObject* context, const Answered& answered)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, callTimeOut), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, answered] {
        watcher->deleteLater();
        answered(*watcher);
    });
}

bool isFalse(const QDBusMessage& signal)
{
    const auto arguments = signal.arguments();
    return !arguments.isEmpty() && arguments.front().metaType() == QMetaType::fromType<bool>()
        && !arguments.front().toBool();
}

/// A user as the login manager names it: number and object. Where it cannot be told, the signal counts as ours.
bool isOurs(const QVariant& user)
{
    if (user.metaType() != QMetaType::fromType<QDBusArgument>())
        return true;
    const auto argument = user.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(uo)"))
        return true;
    uint number = 0;
    argument.beginStructure();
    argument >> number;
    argument.endStructure();
    return number == ::getuid();
}

} // namespace

LoginWatch::LoginWatch(const QDBusConnection& systemBus, const QDBusConnection& sessionBus, Scheduler& scheduler)
    : m_system(systemBus)
    , m_session(sessionBus)
    , m_scheduler(scheduler)
    , m_context(std::make_unique<QObject>())
{
    const auto hear = [this](const QDBusConnection& bus, const BusSignals::Kind& kind, BusSignals::Heard heard) {
        if (bus.isConnected())
            m_signals.push_back(std::make_unique<BusSignals>(bus, kind, std::move(heard)));
    };
    hear(m_system,
        {login, loginPath, QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep")},
        [this](const QDBusMessage& signal) {
            if (!isFalse(signal))
                return; // about to sleep
            if (m_woke)
                m_woke();
            report();
        });
    hear(m_system, {login, QString(), loginSession, QStringLiteral("Unlock")},
        [this](const QDBusMessage& signal) { sessionUnlocked(signal); });
    for (const auto* name : {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver"})
        hear(m_session,
            {QString::fromLatin1(name), QString(), QString::fromLatin1(name), QStringLiteral("ActiveChanged")},
            [this](const QDBusMessage& signal) {
                if (isFalse(signal))
                    report();
            });
}

LoginWatch::~LoginWatch() = default;

void LoginWatch::onReturn(std::function<void()> cameBack)
{
    m_cameBack = std::move(cameBack);
}

void LoginWatch::report()
{
    if (m_cameBack)
        m_cameBack();
}

/// Signals of other users' sessions are heard, too.
void LoginWatch::sessionUnlocked(const QDBusMessage& signal)
{
    QDBusMessage call = propertiesCall(signal.path(), "Get");
    call << loginSession << QStringLiteral("User");
    ask(m_system, call, m_context.get(), [this](const QDBusPendingCall& answer) {
        const QDBusPendingReply<QDBusVariant> reply = answer;
        if (reply.isError() || isOurs(reply.value().variant()))
            report();
    });
}

void LoginWatch::setWaiting(bool isWaiting)
{
    if (isWaiting == m_sampling.isSet())
        return;
    m_idle = {};
    if (isWaiting)
        m_sampling = m_scheduler.every(idlePeriod, [this] { askForIdleness(); });
    else
        m_sampling.cancel();
}

/// GNOME's compositor counts by itself; elsewhere the session tells the login manager.
void LoginWatch::askForIdleness()
{
    const QString monitor = QStringLiteral("org.gnome.Mutter.IdleMonitor");
    QDBusMessage call = QDBusMessage::createMethodCall(
        monitor, QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"), monitor, QStringLiteral("GetIdletime"));
    call.setAutoStartService(false);
    ask(m_session, call, m_context.get(), [this](const QDBusPendingCall& answer) {
        const QDBusPendingReply<qulonglong> reply = answer;
        if (reply.isError())
            return askLoginForIdleness();
        constexpr qulonglong aYear = 365ULL * 24 * 3600 * 1000;
        sampled(std::chrono::milliseconds(static_cast<std::int64_t>(std::min(reply.value(), aYear))));
    });
}

void LoginWatch::askLoginForIdleness()
{
    QDBusMessage call = propertiesCall(ownSession, "GetAll");
    call << loginSession;
    ask(m_system, call, m_context.get(), [this](const QDBusPendingCall& answer) {
        const QDBusPendingReply<QVariantMap> reply = answer;
        if (reply.isError())
            return;
        const bool isIdle = reply.value().value(QStringLiteral("IdleHint")).toBool();
        const auto since = reply.value().value(QStringLiteral("IdleSinceHint")).toULongLong() / 1000;
        const auto now = static_cast<qulonglong>(m_scheduler.wallClock().time_since_epoch().count());
        sampled(std::chrono::milliseconds(isIdle && now > since ? static_cast<std::int64_t>(now - since) : 0));
    });
}

void LoginWatch::sampled(std::chrono::milliseconds idle)
{
    if (m_sampling.isSet() && m_idle.cameBack(idle))
        report();
}

} // namespace quorvell
