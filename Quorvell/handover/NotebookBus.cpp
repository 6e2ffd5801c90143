// SPDX-License-Identifier: MIT
#include "Quorvell/handover/NotebookBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

/// The folder without links and detours, so that all ways to it lead to one name.
std::string canonicalPath(const std::string& folder)
{
    const std::unique_ptr<char, void (*)(void*)> path(::realpath(folder.c_str(), nullptr), ::free);
    return path ? path.get() : folder;
}

/// FNV-1a, 64 bits. Not a secret: the name must only differ between folders and be the same in every program.
std::uint64_t hashOf(const std::string& text)
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char letter : text)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 1099511628211ULL;
    return hash;
}

QString busNameFor(const std::string& folder)
{
    constexpr int hexadecimal = 16;
    return QStringLiteral("org.quorvell.Notebook1.n%1")
        .arg(hashOf(canonicalPath(folder)), hexadecimal, hexadecimal, QLatin1Char('0'));
}

QDBusMessage callToBus(const char* method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
}

template <typename Value> std::optional<Value> answerOf(const QDBusConnection& connection, const QDBusMessage& call)
{
    QDBusPendingReply<Value> reply = connection.asyncCall(call, static_cast<int>(NotebookWire::timeOut.count()));
    reply.waitForFinished();
    return reply.isError() ? std::nullopt : std::optional<Value>(reply.value());
}

} // namespace

std::optional<NotebookBus> NotebookBus::connect(const std::string& folder)
{
    static int made = 0; // main thread only
    QString connectionName = QStringLiteral("quorvell-notebook-%1").arg(++made);
    QDBusConnection connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(connectionName);
        return std::nullopt;
    }
    return NotebookBus(std::move(connection), std::move(connectionName), busNameFor(folder));
}

NotebookBus::NotebookBus(QDBusConnection connection, QString connectionName, QString name)
    : m_connection(std::move(connection))
    , m_connectionName(std::move(connectionName))
    , m_name(std::move(name))
{
}

NotebookBus::NotebookBus(NotebookBus&& other) noexcept
    : m_connection(other.m_connection)
    , m_connectionName(std::exchange(other.m_connectionName, QString()))
    , m_name(other.m_name)
{
}

NotebookBus::~NotebookBus()
{
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
}

NotebookBus::Claim NotebookBus::claimName() const
{
    constexpr uint doNotQueue = 4;
    constexpr uint primaryOwner = 1;
    constexpr uint alreadyOwner = 4;
    QDBusMessage call = callToBus("RequestName");
    call << m_name << doNotQueue;
    const auto answer = answerOf<uint>(m_connection, call);
    if (!answer)
        return Claim::noAnswer;
    return *answer == primaryOwner || *answer == alreadyOwner ? Claim::granted : Claim::heldElsewhere;
}

bool NotebookBus::hasOwner() const
{
    QDBusMessage call = callToBus("NameHasOwner");
    call << m_name;
    return answerOf<bool>(m_connection, call).value_or(false);
}

} // namespace quorvell
