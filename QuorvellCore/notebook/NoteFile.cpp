#include "QuorvellCore/notebook/NoteFile.h"

#include "QuorvellCore/notebook/LineEnds.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view fence = "---";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Header values are texts, numbers and lists of small objects. Deeper ones are nobody's.
constexpr JsonLimits headerLimits{.maximumDepth = 16};

/// Appends the header line by line, in the order of the calls.
class HeaderWriter {
public:
    explicit HeaderWriter(std::string& text)
        : m_text(text)
    {
    }

    void writeJson(std::string_view key, const Json& value)
    {
        m_text.append(key).append(": ").append(dumpSortedJson(value)).append("\n");
    }
    void write(std::string_view key, std::string_view value) { writeJson(key, Json(value)); }
    void write(std::string_view key, Instant value) { write(key, isoText(value)); }
    template <typename Value> void write(std::string_view key, const std::optional<Value>& value)
    {
        if (value)
            write(key, *value);
    }
    template <typename Value> void write(std::string_view key, const std::vector<Value>& values)
    {
        if (!values.empty())
            writeJson(key, Json(values));
    }
    void writeIfTrue(std::string_view key, bool value)
    {
        if (value)
            writeJson(key, Json(true));
    }

private:
    std::string& m_text;
};

Json sourceJson(const NoteSource& source)
{
    Json object = Json::object();
    const auto put = [&object](const char* key, const std::optional<std::string>& value) {
        if (value)
            object[key] = *value;
    };
    put("app", source.app);
    put("site", source.site);
    put("address", source.address);
    put("title", source.title);
    return object;
}

Json threadJson(const std::vector<NoteTurn>& thread)
{
    Json turns = Json::array();
    for (const NoteTurn& turn : thread)
        turns.push_back({{"question", turn.question}, {"answer", turn.answer}, {"date", isoText(turn.date)}});
    return turns;
}

void writeHeader(HeaderWriter& header, const Note& note)
{
    header.write("id", note.id);
    header.write("kind", storedText(note.kind));
    header.write("title", note.title);
    header.write("created", note.created);
    header.write("updated", note.updated);
    header.write("author", storedText(note.author));
    header.write("origin", storedText(note.origin));
    header.writeIfTrue("person_edited", note.personEdited);
    header.writeIfTrue("pinned", note.pinned);
    header.writeIfTrue("archived", note.archived);
    if (note.kind == NoteKind::aboutMe)
        header.writeJson("confirmed", Json(note.confirmed));
    if (note.timesUsed >= 1)
        header.writeJson("times_used", Json(note.timesUsed));
    if (note.source)
        header.writeJson("source", sourceJson(*note.source));
    header.write("question", note.question);
    header.write("goal", note.goal);
    header.write("steps", note.steps);
    if (!note.thread.empty())
        header.writeJson("thread", threadJson(note.thread));
    header.write("checked", note.checked);
    header.write("when", note.when);
    header.write("remind_at", note.remindAt);
    header.write("image", note.image);
    header.write("level", note.level);
    header.write("reviewed", note.reviewed);
    header.write("based_on", note.basedOn);
    header.write("repeat", note.repeatRule);
    header.write("trigger", note.trigger);
    header.write("done_at", note.doneAt);
    header.write("then", note.then);
    header.write("event", note.event);
    header.write("mirror", note.mirror);
}

/// Takes the next line off the front of `rest`, without its line feed. Nothing when no line is left; the text after
/// the last line feed is a line too.
std::optional<std::string_view> takeLine(std::optional<std::string_view>& rest)
{
    if (!rest)
        return std::nullopt;
    const std::size_t end = rest->find('\n');
    const std::string_view line = rest->substr(0, end);
    rest = end == std::string_view::npos ? std::nullopt : std::optional(rest->substr(end + 1));
    return line;
}

std::string_view withoutBlanks(std::string_view text)
{
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

/// The body as stored: what follows the closing fence, without the line feed that encoding adds. A carriage return at
/// its very end is the half of a line end that was cut off.
std::string bodyOf(std::string_view rest)
{
    if (rest.ends_with('\n'))
        rest.remove_suffix(1);
    while (rest.ends_with('\r'))
        rest.remove_suffix(1);
    return std::string(rest);
}

/// The text of a JSON string that is written without escapes, as nearly all are. Nothing for any other value.
std::optional<std::string> unescapedText(std::string_view value)
{
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"'))
        return std::nullopt;
    const std::string_view inside = value.substr(1, value.size() - 2);
    const bool isPlain = std::all_of(inside.begin(), inside.end(), [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte >= 0x20 && byte < 0x80 && letter != '"' && letter != '\\';
    });
    return isPlain ? std::optional<std::string>(inside) : std::nullopt;
}

/// The header's lines; a value is parsed when it is asked for. The last readable value of a key counts. Looks into the
/// text it was given.
class HeaderReader {
public:
    void readLine(std::string_view line)
    {
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos)
            m_lines.push_back({withoutBlanks(line.substr(0, colon)), withoutBlanks(line.substr(colon + 1))});
    }

    std::optional<Json> value(std::string_view key) const
    {
        return last<Json>(key, [](std::string_view value) { return parseJson(value, headerLimits); });
    }
    std::optional<std::string> text(std::string_view key) const;
    bool flag(std::string_view key) const { return read<bool>(key, readBool).value_or(false); }
    std::optional<std::int64_t> integer(std::string_view key) const { return read<std::int64_t>(key, readInteger); }
    std::vector<std::string> texts(std::string_view key) const
    {
        return read<std::vector<std::string>>(key, readStrings).value_or(std::vector<std::string>{});
    }
    std::optional<Instant> instant(std::string_view key) const;
    std::vector<std::int64_t> integers(std::string_view key) const;

private:
    struct Line {
        std::string_view key;
        std::string_view value;
    };

    /// What `parse` makes of the last value of this key that it can parse.
    template <typename Value, typename Parse> std::optional<Value> last(std::string_view key, const Parse& parse) const
    {
        for (auto line = m_lines.rbegin(); line != m_lines.rend(); ++line)
            if (line->key == key)
                if (std::optional<Value> value = parse(line->value))
                    return value;
        return std::nullopt;
    }

    template <typename Value>
    std::optional<Value> read(std::string_view key, std::optional<Value> (*reader)(const Json&)) const
    {
        const auto found = value(key);
        return found ? reader(*found) : std::nullopt;
    }

    std::vector<Line> m_lines;
};

std::optional<std::string> HeaderReader::text(std::string_view key) const
{
    /// What a value that parses says; a value that is no text still hides the ones before it.
    struct Reading {
        std::optional<std::string> text;
    };
    const auto reading = last<Reading>(key, [](std::string_view value) -> std::optional<Reading> {
        if (auto text = unescapedText(value))
            return Reading{std::move(text)};
        const auto json = parseJson(value, headerLimits);
        return json ? std::optional(Reading{readString(*json)}) : std::nullopt;
    });
    return reading ? reading->text : std::nullopt;
}

/// An offset can carry an instant past the years that the text form can hold; such a one is unreadable.
std::optional<Instant> readableInstant(const std::optional<std::string>& text)
{
    constexpr Instant first = std::chrono::sys_days(std::chrono::year(0) / 1 / 1);
    constexpr Instant end = std::chrono::sys_days(std::chrono::year(10000) / 1 / 1);
    const auto instant = text ? parseIsoText(*text) : std::nullopt;
    return instant && *instant >= first && *instant < end ? instant : std::nullopt;
}

std::optional<Instant> HeaderReader::instant(std::string_view key) const
{
    return readableInstant(text(key));
}

std::vector<std::int64_t> HeaderReader::integers(std::string_view key) const
{
    const auto found = value(key);
    std::vector<std::int64_t> integers;
    if (!found || !found->is_array())
        return integers;
    for (const Json& element : *found) {
        const auto integer = readInteger(element);
        if (!integer)
            return {};
        integers.push_back(*integer);
    }
    return integers;
}

std::optional<NoteSource> readSource(const HeaderReader& header)
{
    const auto object = header.value("source");
    if (!object || !object->is_object())
        return std::nullopt;
    return NoteSource{.app = readString(*object, "app"),
        .site = readString(*object, "site"),
        .address = readString(*object, "address"),
        .title = readString(*object, "title")};
}

/// A turn without a readable date takes the note's, so that no answer is lost over it.
std::vector<NoteTurn> readThread(const HeaderReader& header, Instant created)
{
    const auto list = header.value("thread");
    std::vector<NoteTurn> thread;
    if (!list || !list->is_array())
        return thread;
    for (const Json& turn : *list) {
        if (!turn.is_object())
            continue;
        thread.push_back({.question = readString(turn, "question").value_or(""),
            .answer = readString(turn, "answer").value_or(""),
            .date = readableInstant(readString(turn, "date")).value_or(created)});
    }
    return thread;
}

/// Only pictures inside the notebook folder.
std::optional<std::string> readImage(const HeaderReader& header)
{
    auto image = header.text("image");
    if (image && (image->find("..") != std::string::npos || image->starts_with('/')))
        return std::nullopt;
    return image;
}

Note noteOf(const HeaderReader& header, std::string id, NoteKind kind, Instant now)
{
    Note note;
    note.id = std::move(id);
    note.kind = kind;
    note.title = header.text("title").value_or("");
    note.created = header.instant("created").value_or(now);
    note.updated = header.instant("updated").value_or(note.created);
    note.author = noteAuthorFromStored(header.text("author").value_or("")).value_or(NoteAuthor::person);
    note.origin = noteOrigin(header.text("origin").value_or("")).value_or(NoteOrigin::person);
    note.personEdited = header.flag("person_edited");
    note.pinned = header.flag("pinned");
    note.archived = header.flag("archived");
    note.confirmed = kind == NoteKind::aboutMe && header.flag("confirmed");
    note.timesUsed = std::max<std::int64_t>(header.integer("times_used").value_or(0), 0);
    note.source = readSource(header);
    note.question = header.text("question");
    note.goal = header.text("goal");
    note.steps = header.texts("steps");
    note.thread = readThread(header, note.created);
    note.checked = header.integers("checked");
    note.when = header.instant("when");
    note.remindAt = header.instant("remind_at");
    note.image = readImage(header);
    note.level = header.text("level");
    note.reviewed = header.instant("reviewed");
    note.basedOn = header.texts("based_on");
    note.repeatRule = header.text("repeat");
    note.trigger = header.text("trigger");
    note.doneAt = header.instant("done_at");
    note.then = header.text("then");
    note.event = header.text("event");
    note.mirror = header.text("mirror");
    return note;
}

} // namespace

std::string NoteFile::encode(const Note& note)
{
    std::string text(fence);
    text += '\n';
    HeaderWriter header(text);
    writeHeader(header, note);
    return text.append(fence).append("\n").append(note.body).append("\n");
}

std::optional<Note> NoteFile::decode(std::string_view text, Instant now)
{
    const std::string mended = text.find('\r') == std::string_view::npos ? std::string() : withLineFeeds(text);
    std::optional<std::string_view> rest = mended.empty() ? text : std::string_view(mended);
    if (rest->starts_with(byteOrderMark))
        rest->remove_prefix(byteOrderMark.size());
    if (takeLine(rest) != fence)
        return std::nullopt;
    HeaderReader header;
    auto line = takeLine(rest);
    for (; line && line != fence; line = takeLine(rest))
        header.readLine(*line);
    auto id = header.text("id");
    const auto kind = noteKind(header.text("kind").value_or(""));
    if (!line || !id || !kind)
        return std::nullopt;
    Note note = noteOf(header, std::move(*id), *kind, now);
    note.body = bodyOf(rest.value_or(""));
    return note;
}

} // namespace quorvell
