// SPDX-License-Identifier: MIT
#include "Quorvell/handover/NotebookBusClient.h"

#include "Quorvell/notebook/NoteFileRules.h"
#include "QuorvellCore/notebook/NoteFile.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

using Outcome = NotebookHandOver::Outcome;
using Reply = QDBusPendingReply<QString, QByteArray, QString>;

/// An owner that is just starting or ending may have its name on the bus and not be there to take the call.
Outcome outcomeOf(const QDBusError& error)
{
    constexpr std::array unreceived{
        QDBusError::ServiceUnknown, QDBusError::UnknownObject, QDBusError::UnknownInterface, QDBusError::UnknownMethod};
    const bool isGone = std::find(unreceived.begin(), unreceived.end(), error.type()) != unreceived.end()
        || error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
    return isGone ? Outcome::ownerGone : Outcome::noAnswer;
}

std::optional<Note> decodedNote(const QByteArray& text)
{
    if (static_cast<std::size_t>(text.size()) > maximumNoteBytes)
        return std::nullopt;
    return NoteFile::decode({text.constData(), static_cast<std::size_t>(text.size())}, Instant{});
}

QByteArray encodedNote(const Note& note)
{
    return QByteArray::fromStdString(NoteFile::encode(note));
}

NotebookHandOver handOverOf(const Reply& reply)
{
    if (reply.isError())
        return {outcomeOf(reply.error()), std::nullopt, ""};
    NotebookHandOver result{Outcome::refused, decodedNote(reply.argumentAt<1>()), reply.argumentAt<2>().toStdString()};
    const QString word = reply.argumentAt<0>();
    if (word == QLatin1String(NotebookWire::stored))
        result.outcome = Outcome::stored;
    else if (word == QLatin1String(NotebookWire::changed))
        result.outcome = Outcome::changed;
    return result;
}

} // namespace

NotebookBusClient::NotebookBusClient(const NotebookBus& bus)
    : m_bus(bus)
    , m_context(std::make_unique<QObject>())
{
}

NotebookBusClient::~NotebookBusClient() = default;

void NotebookBusClient::add(const Note& note, Callback done)
{
    QDBusMessage call = callTo(NotebookWire::add);
    call << encodedNote(note);
    send(call, std::move(done));
}

void NotebookBusClient::update(const Note& note, Instant base, Changed how, Callback done)
{
    QDBusMessage call = callTo(how == Changed::byHand ? NotebookWire::edit : NotebookWire::update);
    call << encodedNote(note) << QString::fromStdString(isoText(base));
    send(call, std::move(done));
}

void NotebookBusClient::delete_(const std::string& id, Callback done)
{
    QDBusMessage call = callTo(NotebookWire::delete_);
    call << QString::fromStdString(id);
    send(call, std::move(done));
}

void NotebookBusClient::forgetAll(Callback done)
{
    send(callTo(NotebookWire::forgetAll), std::move(done));
}

void NotebookBusClient::savePicture(const std::string& id, const std::string& picture, Callback done)
{
    QDBusMessage call = callTo(NotebookWire::savePicture);
    call << QString::fromStdString(id) << QByteArray::fromStdString(picture);
    send(call, std::move(done));
}

QDBusMessage NotebookBusClient::callTo(const char* method) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(m_bus.name(), QString::fromLatin1(NotebookWire::path),
        QString::fromLatin1(NotebookWire::interface), QString::fromLatin1(method));
    call.setAutoStartService(false);
    return call;
}

void NotebookBusClient::send(const QDBusMessage& call, Callback done)
{
    const QDBusPendingCall pending =
        m_bus.connection().asyncCall(call, static_cast<int>(NotebookWire::timeOut.count()));
    auto* watcher = new QDBusPendingCallWatcher(pending, m_context.get());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_context.get(),
        [done = std::move(done)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            done(handOverOf(Reply(*finished)));
        });
}

} // namespace quorvell
