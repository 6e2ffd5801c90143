// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteJson.h"

#include <nlohmann/json.hpp>

#include <type_traits>
#include <utility>

namespace quorvell {

namespace {

// The keys of each record, in their order: the one table that both ways go by. `Record` is const on the way out.

template <typename Record, typename Visitor>
requires std::is_same_v<std::remove_const_t<Record>, NoteSource>
void visit(Record& source, Visitor& visitor)
{
    visitor.field("app", source.app);
    visitor.field("site", source.site);
    visitor.field("address", source.address);
    visitor.field("title", source.title);
}

template <typename Record, typename Visitor>
requires std::is_same_v<std::remove_const_t<Record>, NoteTurn>
void visit(Record& turn, Visitor& visitor)
{
    visitor.field("question", turn.question);
    visitor.field("answer", turn.answer);
    visitor.field("date", turn.date);
}

template <typename Record, typename Visitor>
requires std::is_same_v<std::remove_const_t<Record>, Note>
void visit(Record& note, Visitor& visitor)
{
    visitor.field("id", note.id);
    visitor.field("kind", note.kind);
    visitor.field("title", note.title);
    visitor.field("body", note.body);
    visitor.field("created", note.created);
    visitor.field("updated", note.updated);
    visitor.field("author", note.author);
    visitor.field("origin", note.origin);
    visitor.field("personEdited", note.personEdited);
    visitor.field("pinned", note.pinned);
    visitor.field("archived", note.archived);
    visitor.field("source", note.source);
    visitor.field("steps", note.steps);
    visitor.field("goal", note.goal);
    visitor.field("question", note.question);
    visitor.field("thread", note.thread);
    visitor.field("confirmed", note.confirmed);
    visitor.field("timesUsed", note.timesUsed);
    visitor.field("checked", note.checked);
    visitor.field("when", note.when);
    visitor.field("remindAt", note.remindAt);
    visitor.field("image", note.image);
    visitor.field("level", note.level);
    visitor.field("reviewed", note.reviewed);
    visitor.field("basedOn", note.basedOn);
    visitor.field("repeatRule", note.repeatRule);
    visitor.field("trigger", note.trigger);
    visitor.field("doneAt", note.doneAt);
    visitor.field("then", note.then);
    visitor.field("event", note.event);
    visitor.field("mirror", note.mirror);
}

/// Adds members in the order of the calls.
class Writer {
public:
    template <typename Record> static Json object(const Record& record)
    {
        Writer writer;
        visit(record, writer);
        return std::move(writer.m_object);
    }

    template <typename Value> void field(const char* key, const Value& value) { m_object[key] = json(value); }
    template <typename Value> void field(const char* key, const std::optional<Value>& value)
    {
        if (value)
            field(key, *value);
    }

private:
    static Json json(const std::string& value) { return value; }
    static Json json(bool value) { return value; }
    static Json json(std::int64_t value) { return value; }
    static Json json(Instant value) { return isoText(value); }
    static Json json(NoteKind value) { return storedText(value); }
    static Json json(NoteAuthor value) { return storedText(value); }
    static Json json(NoteOrigin value) { return storedText(value); }
    static Json json(const NoteSource& value) { return object(value); }
    static Json json(const NoteTurn& value) { return object(value); }
    template <typename Value> static Json json(const std::vector<Value>& values)
    {
        Json array = Json::array();
        for (const Value& value : values)
            array.push_back(json(value));
        return array;
    }

    Json m_object = Json::object();
};

/// Fills fields and remembers whether each member was what it had to be.
class Reader {
public:
    template <typename Record> static std::optional<Record> record(const Json& object)
    {
        Record record;
        Reader reader(object);
        visit(record, reader);
        return reader.m_isWhole ? std::optional(std::move(record)) : std::nullopt;
    }

    template <typename Value> void field(const char* key, Value& field)
    {
        const Json* member = memberOf(m_object, key);
        take(member ? read(*member, field) : std::nullopt, field);
    }
    template <typename Value> void field(const char* key, std::optional<Value>& field)
    {
        const Json* member = memberOf(m_object, key);
        if (member && !member->is_null())
            take(read(*member, field.emplace()), *field);
    }

private:
    explicit Reader(const Json& object)
        : m_object(object)
        , m_isWhole(object.is_object())
    {
    }

    template <typename Value> void take(std::optional<Value> value, Value& field)
    {
        m_isWhole = m_isWhole && value;
        if (value)
            field = std::move(*value);
    }

    // The second argument only says what is to be read.
    static std::optional<std::string> read(const Json& value, const std::string&) { return readString(value); }
    static std::optional<bool> read(const Json& value, const bool&) { return readBool(value); }
    static std::optional<std::int64_t> read(const Json& value, const std::int64_t&) { return readInteger(value); }
    static std::optional<Instant> read(const Json& value, const Instant&)
    {
        return parseIsoText(readString(value).value_or(""));
    }
    static std::optional<NoteKind> read(const Json& value, const NoteKind&)
    {
        return noteKind(readString(value).value_or(""));
    }
    static std::optional<NoteAuthor> read(const Json& value, const NoteAuthor&)
    {
        return noteAuthor(readString(value).value_or(""));
    }
    static std::optional<NoteOrigin> read(const Json& value, const NoteOrigin&)
    {
        return noteOrigin(readString(value).value_or(""));
    }
    static std::optional<NoteSource> read(const Json& value, const NoteSource&) { return record<NoteSource>(value); }
    static std::optional<NoteTurn> read(const Json& value, const NoteTurn&) { return record<NoteTurn>(value); }
    template <typename Value>
    static std::optional<std::vector<Value>> read(const Json& value, const std::vector<Value>&)
    {
        if (!value.is_array())
            return std::nullopt;
        std::vector<Value> list;
        for (const Json& element : value) {
            auto one = read(element, Value{});
            if (!one)
                return std::nullopt;
            list.push_back(std::move(*one));
        }
        return list;
    }

    const Json& m_object;
    bool m_isWhole;
};

} // namespace

Json NoteJson::encode(const Note& note)
{
    return Writer::object(note);
}

Json NoteJson::encode(const NoteSource& source)
{
    return Writer::object(source);
}

Json NoteJson::encode(const NoteTurn& turn)
{
    return Writer::object(turn);
}

std::optional<Note> NoteJson::decode(const Json& object)
{
    return Reader::record<Note>(object);
}

} // namespace quorvell
