// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteIndex.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/TextMatch.h"

#include <sqlite3.h>

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

namespace quorvell {

namespace {

/// One prepared statement. Values are numbered from 1, columns from 0.
class Statement {
public:
    Statement(sqlite3* database, const char* text)
    {
        sqlite3_prepare_v3(database, text, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// The text must live until the statement is reset, and another one be bound before it runs again.
    Statement& bind(int number, std::string_view text)
    {
        sqlite3_bind_text64(m_statement, number, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
        return *this;
    }
    Statement& bind(int number, std::int64_t value)
    {
        sqlite3_bind_int64(m_statement, number, value);
        return *this;
    }
    bool step() { return sqlite3_step(m_statement) == SQLITE_ROW; }
    void run()
    {
        step();
        reset();
    }
    void reset() { sqlite3_reset(m_statement); }
    std::string text(int column) const
    {
        const auto* const start = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
        return start ? std::string(start, static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column))) : "";
    }
    std::int64_t integer(int column) const { return sqlite3_column_int64(m_statement, column); }
    double number(int column) const { return sqlite3_column_double(m_statement, column); }

private:
    sqlite3_stmt* m_statement = nullptr; ///< Null when it could not be prepared; every call is then harmless.
};

constexpr const char* tables = R"(
CREATE VIRTUAL TABLE texts USING fts5(title, text, tokenize = 'porter unicode61 remove_diacritics 2', prefix = '2 3');
CREATE TABLE notes (number INTEGER PRIMARY KEY, id TEXT UNIQUE, kind INTEGER, visible INTEGER, used INTEGER,
    updated INTEGER);
CREATE INDEX notes_by_age ON notes (updated);
)";

constexpr std::size_t maximumWords = 16;
constexpr std::size_t maximumPhrases = 40; // the words of a question, and what means the same
constexpr std::size_t mostOfAny = 50; // notes; those that hold most of the phrases come first
constexpr std::size_t maximumCharacters = 500;

/// "call dr" as an expression of the search engine: "call"* "dr"*. Empty without words.
std::string expression(const std::string& words)
{
    const std::string normalized = TextMatch::normalized(firstCharacters(repairUtf8(words), maximumCharacters));
    std::string text;
    std::size_t count = 0;
    for (std::size_t start = 0; start < normalized.size() && count < maximumWords;) {
        const std::size_t end = std::min(normalized.find(' ', start), normalized.size());
        // A lone apostrophe is no word to the engine, which would find nothing for it.
        if (normalized.find_first_not_of('\'', start) < end) {
            text.append(text.empty() ? "\"" : " \"").append(normalized, start, end - start).append("\"*");
            ++count;
        }
        start = end + 1;
    }
    return text;
}

/// "wifi" OR "wi fi"
std::string expression(const std::vector<std::string>& phrases)
{
    std::string text;
    for (std::size_t index = 0; index < std::min(phrases.size(), maximumPhrases); ++index) {
        const std::string phrase =
            TextMatch::normalized(firstCharacters(repairUtf8(phrases[index]), maximumCharacters));
        if (phrase.find_first_not_of("' ") != std::string::npos)
            text.append(text.empty() ? "\"" : " OR \"").append(phrase).append("\"");
    }
    return text;
}

struct Candidate {
    std::int64_t number = 0;
    double score = 0; ///< More negative is better.
    std::int64_t used = 0;
    std::int64_t updated = 0;
};

/// Scores that differ little say nothing; then the how-to that was of use is the likelier one, or the note changed
/// last.
void rank(std::vector<Candidate>& candidates)
{
    if (candidates.empty())
        return;
    constexpr double steps = 5;
    const double best = candidates.front().score;
    const auto step = [best](const Candidate& candidate) {
        return best < 0 ? static_cast<int>(steps * candidate.score / best) : 0;
    };
    std::stable_sort(candidates.begin(), candidates.end(), [&step](const Candidate& left, const Candidate& right) {
        return std::tuple(step(left), left.used, left.updated) > std::tuple(step(right), right.used, right.updated);
    });
}

std::string shortened(const std::string& snippet)
{
    constexpr std::size_t longest = 160; // characters; a word may be endless
    const std::string line = onOneLine(repairUtf8(snippet));
    std::string start = firstCharacters(line, longest);
    return start.size() < line.size() ? start + "…" : start;
}

} // namespace

/// The statements are kept, because preparing them costs more than most searches.
struct NoteIndex::Database {
    static sqlite3* opened()
    {
        sqlite3* handle = nullptr;
        constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX;
        sqlite3_open_v2(":memory:", &handle, flags, nullptr);
        sqlite3_exec(handle, tables, nullptr, nullptr, nullptr);
        return handle;
    }
    struct Closer {
        void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
    };

    std::unique_ptr<sqlite3, Closer> handle{opened()};
    Statement begin{handle.get(), "BEGIN"};
    Statement commit{handle.get(), "COMMIT"};
    Statement number{handle.get(), "SELECT number FROM notes WHERE id = ?1"};
    Statement identity{handle.get(), "SELECT id FROM notes WHERE number = ?1"};
    Statement removeNote{handle.get(), "DELETE FROM notes WHERE number = ?1"};
    Statement removeText{handle.get(), "DELETE FROM texts WHERE rowid = ?1"};
    Statement addNote{handle.get(), "INSERT INTO notes (id, kind, visible, used, updated) VALUES (?1, ?2, ?3, ?4, ?5)"};
    Statement addText{handle.get(), "INSERT INTO texts (rowid, title, text) VALUES (?1, ?2, ?3)"};
    Statement newest{
        handle.get(), "SELECT number FROM notes WHERE (?1 < 0 OR kind = ?1) AND visible >= ?2 ORDER BY updated DESC"};
    Statement match{handle.get(),
        "SELECT notes.number, bm25(texts, 8.0, 1.0), used, updated FROM texts JOIN notes ON notes.number = texts.rowid "
        "WHERE texts MATCH ?3 AND (?1 < 0 OR kind = ?1) AND visible >= ?2 ORDER BY 2"};
    Statement matchAny{handle.get(),
        "SELECT notes.number, rank, used, updated FROM texts JOIN notes ON notes.number = texts.rowid "
        "WHERE texts MATCH ?3 AND rank MATCH 'bm25(8.0, 1.0)' AND (?1 < 0 OR kind = ?1) AND visible >= ?2 "
        "ORDER BY rank LIMIT ?4"};
    Statement start{handle.get(),
        "SELECT id, substr(text, 1, 1000) FROM notes JOIN texts ON texts.rowid = number WHERE number = ?1"};
    Statement snippet{handle.get(),
        "SELECT id, snippet(texts, 1, '', '', '…', 24) FROM texts JOIN notes ON notes.number = texts.rowid "
        "WHERE texts MATCH ?2 AND texts.rowid = ?1"};

    std::optional<std::int64_t> numberOf(const std::string& id)
    {
        number.bind(1, id);
        const auto found = number.step() ? std::optional(number.integer(0)) : std::nullopt;
        number.reset();
        return found;
    }
    std::vector<Candidate> candidates(const NoteQuery& query, const std::string& words)
    {
        const bool isAny = !query.anyOf.empty();
        Statement& search = words.empty() ? newest : isAny ? matchAny : match;
        search.bind(1, query.kind ? static_cast<std::int64_t>(*query.kind) : -1);
        search.bind(2, query.reader == NoteQuery::Reader::assistant ? 1 : 0);
        if (!words.empty())
            search.bind(3, words);
        if (!words.empty() && isAny)
            search.bind(4, static_cast<std::int64_t>(mostOfAny));
        std::vector<Candidate> found;
        while (search.step())
            found.push_back({search.integer(0), search.number(1), search.integer(2), search.integer(3)});
        search.reset();
        return found;
    }
    /// Without a snippet.
    NoteHit idOf(std::int64_t found)
    {
        identity.bind(1, found);
        NoteHit hit;
        if (identity.step())
            hit.id = identity.text(0);
        identity.reset();
        return hit;
    }
    NoteHit hit(std::int64_t found, const std::string& words)
    {
        Statement& show = words.empty() ? start : snippet;
        show.bind(1, found);
        if (!words.empty())
            show.bind(2, words);
        NoteHit hit;
        if (show.step())
            hit = {show.text(0), shortened(show.text(1))};
        show.reset();
        return hit;
    }
};

NoteIndex::NoteIndex()
    : m_database(std::make_unique<Database>())
{
}

NoteIndex::~NoteIndex() = default;
NoteIndex::NoteIndex(NoteIndex&&) noexcept = default;
NoteIndex& NoteIndex::operator=(NoteIndex&&) noexcept = default;

void NoteIndex::put(const Note& note)
{
    remove(note.id);
    Database& database = *m_database;
    database.addNote.bind(1, note.id)
        .bind(2, static_cast<std::int64_t>(note.kind))
        .bind(3, note.isVisibleToQuorvell() ? 1 : 0)
        .bind(4, note.timesUsed)
        .bind(5, note.updated.time_since_epoch().count())
        .run();
    // The title stands in a column of its own, so that it weighs more and is not shown twice.
    const std::string text = note.searchText();
    database.addText.bind(1, sqlite3_last_insert_rowid(database.handle.get()))
        .bind(2, note.title)
        .bind(3, std::string_view(text).substr(note.title.size()))
        .run();
}

void NoteIndex::putAll(const std::vector<Note>& notes)
{
    m_database->begin.run();
    for (const Note& note : notes)
        put(note);
    m_database->commit.run();
}

void NoteIndex::remove(const std::string& id)
{
    const auto number = m_database->numberOf(id);
    if (!number)
        return;
    m_database->removeText.bind(1, *number).run();
    m_database->removeNote.bind(1, *number).run();
}

NotesFound NoteIndex::find(const NoteQuery& query) const
{
    const std::string words = query.anyOf.empty() ? expression(query.words) : expression(query.anyOf);
    std::vector<Candidate> candidates = m_database->candidates(query, words);
    if (!words.empty())
        rank(candidates);
    NotesFound found;
    found.count = candidates.size();
    candidates.resize(std::min(candidates.size(), query.limit));
    for (const Candidate& candidate : candidates)
        found.hits.push_back(
            query.withSnippets ? m_database->hit(candidate.number, words) : m_database->idOf(candidate.number));
    return found;
}

} // namespace quorvell
