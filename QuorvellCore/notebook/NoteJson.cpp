#include "QuorvellCore/notebook/NoteJson.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

/// Adds members in the order of the calls.
class Writer {
public:
    void write(const char* key, Json value) { m_object[key] = std::move(value); }
    void write(const char* key, Instant value) { m_object[key] = isoText(value); }
    template <typename Value> void write(const char* key, const std::optional<Value>& value)
    {
        if (value)
            write(key, *value);
    }
    Json take() { return std::move(m_object); }

private:
    Json m_object = Json::object();
};

Json sourceJson(const NoteSource& source)
{
    Writer writer;
    writer.write("app", source.app);
    writer.write("site", source.site);
    writer.write("address", source.address);
    writer.write("title", source.title);
    return writer.take();
}

Json threadJson(const std::vector<NoteTurn>& thread)
{
    Json turns = Json::array();
    for (const NoteTurn& turn : thread)
        turns.push_back({{"question", turn.question}, {"answer", turn.answer}, {"date", isoText(turn.date)}});
    return turns;
}

/// Reads members and remembers whether each was what it had to be.
class Reader {
public:
    template <typename Value> using Read = std::optional<Value> (*)(const Json&);

    explicit Reader(const Json& object)
        : m_object(object)
        , m_isWhole(object.is_object())
    {
    }

    template <typename Value> Value required(std::string_view key, Read<Value> read)
    {
        const Json* member = memberOf(m_object, key);
        auto value = member ? read(*member) : std::nullopt;
        m_isWhole = m_isWhole && value;
        return std::move(value).value_or(Value{});
    }

    template <typename Value> std::optional<Value> optional(std::string_view key, Read<Value> read)
    {
        const Json* member = memberOf(m_object, key);
        if (!member || member->is_null())
            return std::nullopt;
        auto value = read(*member);
        m_isWhole = m_isWhole && value;
        return value;
    }

    bool isWhole() const { return m_isWhole; }

private:
    const Json& m_object;
    bool m_isWhole;
};

std::optional<std::string> readText(const Json& value)
{
    return readString(value);
}

std::optional<bool> readFlag(const Json& value)
{
    return readBool(value);
}

std::optional<std::int64_t> readNumber64(const Json& value)
{
    return readInteger(value);
}

std::optional<std::vector<std::string>> readTexts(const Json& value)
{
    return readStrings(value);
}

/// In the years that the text form can hold, which an offset may leave.
std::optional<Instant> readInstant(const Json& value)
{
    constexpr Instant first = std::chrono::sys_days(std::chrono::year(0) / 1 / 1);
    constexpr Instant end = std::chrono::sys_days(std::chrono::year(10000) / 1 / 1);
    const auto text = readString(value);
    const auto instant = text ? parseIsoText(*text) : std::nullopt;
    return instant && *instant >= first && *instant < end ? instant : std::nullopt;
}

std::optional<NoteKind> readKind(const Json& value)
{
    return noteKind(readString(value).value_or(""));
}

std::optional<NoteAuthor> readAuthor(const Json& value)
{
    return noteAuthor(readString(value).value_or(""));
}

std::optional<NoteOrigin> readOrigin(const Json& value)
{
    return noteOrigin(readString(value).value_or(""));
}

template <typename Value>
std::optional<std::vector<Value>> readList(const Json& value, std::optional<Value> (*read)(const Json&))
{
    if (!value.is_array())
        return std::nullopt;
    std::vector<Value> list;
    for (const Json& element : value) {
        auto one = read(element);
        if (!one)
            return std::nullopt;
        list.push_back(std::move(*one));
    }
    return list;
}

std::optional<std::vector<std::int64_t>> readNumbers(const Json& value)
{
    return readList<std::int64_t>(value, readNumber64);
}

std::optional<NoteTurn> readTurn(const Json& value)
{
    Reader reader(value);
    NoteTurn turn;
    turn.question = reader.required("question", readText);
    turn.answer = reader.required("answer", readText);
    turn.date = reader.required("date", readInstant);
    return reader.isWhole() ? std::optional(std::move(turn)) : std::nullopt;
}

std::optional<std::vector<NoteTurn>> readThread(const Json& value)
{
    return readList<NoteTurn>(value, readTurn);
}

std::optional<NoteSource> readSource(const Json& value)
{
    Reader reader(value);
    NoteSource source;
    source.app = reader.optional("app", readText);
    source.site = reader.optional("site", readText);
    source.address = reader.optional("address", readText);
    source.title = reader.optional("title", readText);
    return reader.isWhole() ? std::optional(std::move(source)) : std::nullopt;
}

} // namespace

Json NoteJson::encode(const Note& note)
{
    Writer writer;
    writer.write("id", note.id);
    writer.write("kind", storedText(note.kind));
    writer.write("title", note.title);
    writer.write("body", note.body);
    writer.write("created", note.created);
    writer.write("updated", note.updated);
    writer.write("author", storedText(note.author));
    writer.write("origin", storedText(note.origin));
    writer.write("personEdited", note.personEdited);
    writer.write("pinned", note.pinned);
    writer.write("archived", note.archived);
    if (note.source)
        writer.write("source", sourceJson(*note.source));
    writer.write("steps", note.steps);
    writer.write("goal", note.goal);
    writer.write("question", note.question);
    writer.write("thread", threadJson(note.thread));
    writer.write("confirmed", note.confirmed);
    writer.write("timesUsed", note.timesUsed);
    writer.write("checked", note.checked);
    writer.write("when", note.when);
    writer.write("remindAt", note.remindAt);
    writer.write("image", note.image);
    writer.write("level", note.level);
    writer.write("reviewed", note.reviewed);
    writer.write("basedOn", note.basedOn);
    writer.write("repeatRule", note.repeatRule);
    writer.write("trigger", note.trigger);
    writer.write("doneAt", note.doneAt);
    writer.write("then", note.then);
    writer.write("event", note.event);
    writer.write("mirror", note.mirror);
    return writer.take();
}

std::optional<Note> NoteJson::decode(const Json& object)
{
    Reader reader(object);
    Note note;
    note.id = reader.required("id", readText);
    note.kind = reader.required("kind", readKind);
    note.title = reader.required("title", readText);
    note.body = reader.required("body", readText);
    note.created = reader.required("created", readInstant);
    note.updated = reader.required("updated", readInstant);
    note.author = reader.required("author", readAuthor);
    note.origin = reader.required("origin", readOrigin);
    note.personEdited = reader.required("personEdited", readFlag);
    note.pinned = reader.required("pinned", readFlag);
    note.archived = reader.required("archived", readFlag);
    note.source = reader.optional("source", readSource);
    note.steps = reader.required("steps", readTexts);
    note.goal = reader.optional("goal", readText);
    note.question = reader.optional("question", readText);
    note.thread = reader.required("thread", readThread);
    note.confirmed = reader.required("confirmed", readFlag);
    note.timesUsed = reader.required("timesUsed", readNumber64);
    note.checked = reader.required("checked", readNumbers);
    note.when = reader.optional("when", readInstant);
    note.remindAt = reader.optional("remindAt", readInstant);
    note.image = reader.optional("image", readText);
    note.level = reader.optional("level", readText);
    note.reviewed = reader.optional("reviewed", readInstant);
    note.basedOn = reader.required("basedOn", readTexts);
    note.repeatRule = reader.optional("repeatRule", readText);
    note.trigger = reader.optional("trigger", readText);
    note.doneAt = reader.optional("doneAt", readInstant);
    note.then = reader.optional("then", readText);
    note.event = reader.optional("event", readText);
    note.mirror = reader.optional("mirror", readText);
    return reader.isWhole() ? std::optional(std::move(note)) : std::nullopt;
}

} // namespace quorvell
