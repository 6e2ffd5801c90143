// SPDX-License-Identifier: MIT
#include "Quorvell/handover/NotebookBusService.h"

#include "Quorvell/notebook/NoteFileRules.h"
#include "QuorvellCore/notebook/NoteFile.h"

#include <algorithm>
#include <array>
#include <memory>

namespace quorvell {

namespace {

constexpr const char* changedElsewhere =
    "The note was changed by somebody else in the meantime. Look at it again before you change it.";

QByteArray encoded(const std::optional<Note>& note)
{
    return note ? QByteArray::fromStdString(NoteFile::encode(*note)) : QByteArray();
}

std::optional<Note> handedNote(const QVariant& argument)
{
    const QByteArray text = argument.toByteArray();
    if (static_cast<std::size_t>(text.size()) > maximumNoteBytes)
        return std::nullopt;
    return NoteFile::decode({text.constData(), static_cast<std::size_t>(text.size())}, Instant{});
}

struct Method {
    const char* name;
    const char* signature;
};

constexpr std::array methods{Method{NotebookWire::add, "ay"}, Method{NotebookWire::update, "ays"},
    Method{NotebookWire::edit, "ays"}, Method{NotebookWire::delete_, "s"}, Method{NotebookWire::forgetAll, ""},
    Method{NotebookWire::savePicture, "say"}};

bool isKnown(const QDBusMessage& message)
{
    return message.type() == QDBusMessage::MethodCallMessage
        && message.interface() == QLatin1String(NotebookWire::interface)
        && std::any_of(methods.begin(), methods.end(), [&message](const Method& method) {
               return message.member() == QLatin1String(method.name)
                   && message.signature() == QLatin1String(method.signature);
           });
}

QString described(const Method& method)
{
    QString text = QStringLiteral("  <method name=\"%1\">\n").arg(QLatin1String(method.name));
    const QString signature = QLatin1String(method.signature);
    for (int position = 0; position < signature.size(); ++position) {
        const QString type =
            signature[position] == QLatin1Char('a') ? signature.mid(position++, 2) : signature[position];
        text += QStringLiteral("    <arg type=\"%1\" direction=\"in\"/>\n").arg(type);
    }
    return text
        + QStringLiteral("    <arg name=\"outcome\" type=\"s\" direction=\"out\"/>\n"
                         "    <arg name=\"stored\" type=\"ay\" direction=\"out\"/>\n"
                         "    <arg name=\"problem\" type=\"s\" direction=\"out\"/>\n  </method>\n");
}

} // namespace

NotebookBusService::NotebookBusService(const NotebookBus& bus, NotebookStore& store)
    : m_connection(bus.connection())
    , m_store(store)
{
    m_connection.registerVirtualObject(QString::fromLatin1(NotebookWire::path), this);
}

NotebookBusService::~NotebookBusService()
{
    m_connection.unregisterObject(QString::fromLatin1(NotebookWire::path));
}

QString NotebookBusService::introspect(const QString&) const
{
    QString text = QStringLiteral("<interface name=\"%1\">\n").arg(QLatin1String(NotebookWire::interface));
    for (const Method& method : methods)
        text += described(method);
    return text + QStringLiteral("</interface>\n");
}

bool NotebookBusService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (!isKnown(message))
        return false;
    const Answer answer = [message, connection](
                              const char* outcome, const std::optional<Note>& note, const std::string& problem) {
        connection.send(
            message.createReply({QString::fromLatin1(outcome), encoded(note), QString::fromStdString(problem)}));
    };
    carryOut(message.member().toStdString(), message.arguments(), answer);
    return true;
}

void NotebookBusService::carryOut(const std::string& method, const QVariantList& arguments, const Answer& answer)
{
    if (method == NotebookWire::forgetAll)
        return m_store.forgetAll(answering("", answer));
    if (method == NotebookWire::delete_) {
        const std::string id = arguments.at(0).toString().toStdString();
        return m_store.delete_(id, answering(id, answer));
    }
    if (method == NotebookWire::savePicture)
        return savePicture(arguments.at(0).toString().toStdString(), arguments.at(1).toByteArray(), answer);
    const auto note = handedNote(arguments.at(0));
    if (!note)
        return answer(
            NotebookWire::refused, std::nullopt, "What was handed over is no note, or it is too large to be kept.");
    if (method == NotebookWire::add)
        return add(*note, answer);
    update(*note, arguments.at(1).toString().toStdString(),
        method == NotebookWire::edit ? &NotebookStore::edit : &NotebookStore::update, answer);
}

void NotebookBusService::add(const Note& note, const Answer& answer)
{
    m_store.add(note, answering(note.id, answer));
}

void NotebookBusService::update(const Note& note, const std::string& base, Changing how, const Answer& answer)
{
    const auto version = parseIsoText(base);
    if (!version)
        return answer(
            NotebookWire::refused, std::nullopt, "The change does not say on which version of the note it is based.");
    const auto current = m_store.note(note.id);
    if (current && current->updated != *version)
        return answer(NotebookWire::changed, current, changedElsewhere);
    // Looked at again when it is carried out: the version it is based on may have been put back by then.
    const auto isApplied = std::make_shared<bool>(false);
    const auto change = [note, version, isApplied](Note& stored) {
        *isApplied = stored.updated == *version;
        if (*isApplied)
            stored = note;
    };
    (m_store.*how)(note.id, change, [this, id = note.id, isApplied, answer](const NotebookVerdict& verdict) {
        if (verdict.isStored && !*isApplied)
            answer(NotebookWire::changed, m_store.note(id), changedElsewhere);
        else
            answering(id, answer)(verdict);
    });
}

void NotebookBusService::savePicture(const std::string& id, const QByteArray& picture, const Answer& answer)
{
    if (static_cast<std::size_t>(picture.size()) > NotebookWire::maximumPictureBytes)
        return answer(NotebookWire::refused, std::nullopt, "The picture is too large to be kept. Make it smaller.");
    m_store.savePicture(id, picture.toStdString(), answering(id, answer));
}

/// Tells what became of a change, with the note as it stands.
NotebookCallback NotebookBusService::answering(const std::string& id, const Answer& answer) const
{
    return [this, id, answer](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer(NotebookWire::stored, m_store.note(id), "");
        else
            answer(NotebookWire::refused, std::nullopt, verdict.problem);
    };
}

} // namespace quorvell
