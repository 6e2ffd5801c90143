#include "Quorvell/app/NotebookBusService.h"

#include "QuorvellCore/notebook/NoteFile.h"

#include <memory>
#include <string_view>

namespace quorvell {

namespace {

constexpr const char* changedElsewhere =
    "The note was changed by somebody else in the meantime. Look at it again before you change it.";

QByteArray encoded(const std::optional<Note>& note)
{
    return note ? QByteArray::fromStdString(NoteFile::encode(*note)) : QByteArray();
}

std::optional<Note> decodedNote(const QVariant& argument)
{
    if (argument.metaType() != QMetaType::fromType<QByteArray>())
        return std::nullopt;
    const QByteArray text = argument.toByteArray();
    if (static_cast<std::size_t>(text.size()) > maximumNoteBytes)
        return std::nullopt;
    return NoteFile::decode({text.constData(), static_cast<std::size_t>(text.size())}, Instant{});
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
    return QStringLiteral(R"(<interface name="org.quorvell.Notebook1">
  <method name="Add">
    <arg name="note" type="ay" direction="in"/>
    <arg name="outcome" type="s" direction="out"/>
    <arg name="stored" type="ay" direction="out"/>
    <arg name="problem" type="s" direction="out"/>
  </method>
  <method name="Update">
    <arg name="note" type="ay" direction="in"/>
    <arg name="updated" type="s" direction="in"/>
    <arg name="outcome" type="s" direction="out"/>
    <arg name="stored" type="ay" direction="out"/>
    <arg name="problem" type="s" direction="out"/>
  </method>
</interface>
)");
}

bool NotebookBusService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const bool isAdd =
        message.member() == QLatin1String(NotebookWire::add) && message.signature() == QLatin1String("ay");
    const bool isUpdate =
        message.member() == QLatin1String(NotebookWire::update) && message.signature() == QLatin1String("ays");
    if (message.type() != QDBusMessage::MethodCallMessage || (!isAdd && !isUpdate)
        || message.interface() != QLatin1String(NotebookWire::interface))
        return false;
    const Answer answer = [message, connection](
                              const char* outcome, const std::optional<Note>& note, const std::string& problem) {
        connection.send(
            message.createReply({QString::fromLatin1(outcome), encoded(note), QString::fromStdString(problem)}));
    };
    const auto note = decodedNote(message.arguments().at(0));
    if (!note)
        answer(NotebookWire::refused, std::nullopt, "What was handed over is no note, or it is too large to be kept.");
    else if (isAdd)
        add(*note, answer);
    else if (const auto base = parseIsoText(message.arguments().at(1).toString().toStdString()))
        update(*note, *base, answer);
    else
        answer(
            NotebookWire::refused, std::nullopt, "The change does not say on which version of the note it is based.");
    return true;
}

void NotebookBusService::add(const Note& note, const Answer& answer)
{
    m_store.add(note, [this, id = note.id, answer](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer(NotebookWire::stored, m_store.note(id), "");
        else
            answer(NotebookWire::refused, std::nullopt, verdict.problem);
    });
}

void NotebookBusService::update(const Note& note, Instant base, const Answer& answer)
{
    const auto current = m_store.note(note.id);
    if (current && current->updated != base)
        return answer(NotebookWire::changed, current, changedElsewhere);
    // Looked at again when it is carried out: the version it is based on may have been put back by then.
    const auto isApplied = std::make_shared<bool>(false);
    const auto change = [note, base, isApplied](Note& stored) {
        *isApplied = stored.updated == base;
        if (*isApplied)
            stored = note;
    };
    m_store.update(note.id, change, [this, id = note.id, isApplied, answer](const NotebookVerdict& verdict) {
        if (!verdict.isStored)
            answer(NotebookWire::refused, std::nullopt, verdict.problem);
        else if (*isApplied)
            answer(NotebookWire::stored, m_store.note(id), "");
        else
            answer(NotebookWire::changed, m_store.note(id), changedElsewhere);
    });
}

} // namespace quorvell
