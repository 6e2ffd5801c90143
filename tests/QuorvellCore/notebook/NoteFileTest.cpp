// SPDX-License-Identifier: MIT
// Catches notes that do not come back from their files as they were, and names that leave the folder.
#include "QuorvellCore/notebook/NoteFile.h"

#include "TemporaryFolder.h"
#include "WholeNote.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

constexpr Instant now = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 9h;
constexpr Instant monday = wholeNoteCreated;

TEST(NoteFile, writesEveryFieldInItsPlaceAndReadsItBack)
{
    const std::string text = test::readText(QUORVELL_FIXTURES "/notebook/everyField.md");
    EXPECT_EQ(NoteFile::encode(wholeNote()), text);
    EXPECT_EQ(NoteFile::decode(text, now), wholeNote());
}

TEST(NoteFile, writesOnlyWhatANoteHas)
{
    Note note{.id = "1", .created = monday, .updated = monday, .confirmed = true};
    EXPECT_EQ(NoteFile::encode(note),
        "---\nid: \"1\"\nkind: \"note\"\ntitle: \"\"\ncreated: \"2026-11-16T17:00:00.005Z\"\n"
        "updated: \"2026-11-16T17:00:00.005Z\"\nauthor: \"person\"\norigin: \"person\"\n---\n\n");
    note.kind = NoteKind::aboutMe;
    note.confirmed = false;
    note.timesUsed = 1;
    EXPECT_NE(NoteFile::encode(note).find("\nconfirmed: false\ntimes_used: 1\n"), std::string::npos);
}

TEST(NoteFile, keepsBodiesExactly)
{
    for (const char* body :
        {"", "\n", "\n\n\n", "a", "a\n", "---\na: 1\n---", " \t", "a\rb", "\xEF\xBB\xBF", "\xFF\xFE"}) {
        const Note note{.id = "1", .body = body, .created = monday, .updated = monday};
        EXPECT_EQ(NoteFile::decode(NoteFile::encode(note), now), note) << testing::PrintToString(body);
    }
}

/// A file with these header lines after id and kind, and the body "b".
std::string fileWith(const std::string& lines)
{
    return "---\nid: \"1\"\nkind: \"note\"\n" + lines + "\n---\nb\n";
}

TEST(NoteFile, forgivesWhatPeopleAndEditorsWrite)
{
    const auto unchanged = [](Note&) {};
    const std::tuple<const char*, std::string, std::function<void(Note&)>> rows[] = {
        {"CR LF and a byte-order mark", "\xEF\xBB\xBF---\r\nid: \"1\"\r\nkind: \"note\"\r\n---\r\nb\r\n", unchanged},
        {"several carriage returns", "---\nid: \"1\"\nkind: \"note\"\n---\r\r\nb\r\r\n", unchanged},
        {"half a line end at the end", "---\nid: \"1\"\nkind: \"note\"\n---\nb\r", unchanged},
        {"no line feed at the end", "---\nid: \"1\"\nkind: \"note\"\n---\nb", unchanged},
        {"a body of nothing", "---\nid: \"1\"\nkind: \"note\"\n---", [](Note& note) { note.body = ""; }},
        {"blanks around key and value", fileWith(" \tpinned\t :\t true  "), [](Note& note) { note.pinned = true; }},
        {"a colon in the value", fileWith("title: \"a: b\""), [](Note& note) { note.title = "a: b"; }},
        {"the last readable line counts", fileWith("title: \"a\"\ntitle: \"b\"\ntitle: c"),
            [](Note& note) { note.title = "b"; }},
        {"an author of old", fileWith("author: \"buddy\""), [](Note& note) { note.author = NoteAuthor::quorvell; }},
        {"ticks with a fraction of nothing", fileWith("checked: [1.0, 2]"),
            [](Note& note) {
                note.checked = {1, 2};
            }},
        {"an empty source", fileWith("source: {}"), [](Note& note) { note.source = NoteSource{}; }},
        {"a source with a wrong field", fileWith("source: {\"app\": 1, \"site\": \"s\"}"),
            [](Note& note) { note.source = NoteSource{.site = "s"}; }},
        {"a turn without a date", fileWith("thread: [{\"question\": \"q\", \"answer\": \"a\"}, 7]"),
            [](Note& note) { note.thread = {{.question = "q", .answer = "a", .date = now}}; }},
        {"an image inside", fileWith("image: \"Pictures/x.png\""), [](Note& note) { note.image = "Pictures/x.png"; }},
        {"a value nested too deep", fileWith("title: \"a\"\ntitle: " + std::string(100, '[') + std::string(100, ']')),
            [](Note& note) { note.title = "a"; }},
        {"dates without milliseconds and with an offset",
            fileWith("created: \"2026-11-16T17:00:00Z\"\nremind_at: \"2026-11-16T17:00:00.0051+01:00\""),
            [](Note& note) {
                note.created = note.updated = monday - 5ms;
                note.remindAt = monday - 1h;
            }},
    };
    const Note base{.id = "1", .body = "b", .created = now, .updated = now};
    for (const auto& [name, text, change] : rows) {
        SCOPED_TRACE(name);
        Note expected = base;
        change(expected);
        const auto note = NoteFile::decode(text, now);
        ASSERT_TRUE(note);
        EXPECT_EQ(NoteFile::encode(*note), NoteFile::encode(expected));
        EXPECT_EQ(*note, expected);
    }
    // What cannot be used is as if it were not there.
    for (const char* lines :
        {"", "pinned: yes", "pinned: 1", "pinned true", "colour: \"red\"", "title: \"a\"\ntitle: null",
            "author: \"Quorvell\"", "origin: \"moon\"", "steps: [\"a\", 1]", "checked: [1, \"2\"]", "times_used: -4",
            "times_used: 99999999999999999999", "confirmed: true", "source: \"web\"", "image: \"Pictures/../../x.png\"",
            "image: \"\\u002e\\u002e/x.png\"", "image: \"\\/etc/x.png\"",
            "updated: \"2026-02-30T00:00:00Z\"\nwhen: \"tomorrow\"\ndone_at: 7", "when: \"0000-01-01T00:00:00+01:00\""})
        EXPECT_EQ(NoteFile::decode(fileWith(lines), now), base) << lines;
}

TEST(NoteFile, refusesWhatIsNoNote)
{
    for (const char* text : {"", "\n", "# A heading\n", "---", "---\n", "---\nid: \"1\"\nkind: \"note\"\n",
             " ---\nid: \"1\"\nkind: \"note\"\n---\n", "--- \nid: \"1\"\nkind: \"note\"\n---\n",
             "\n---\nid: \"1\"\nkind: \"note\"\n---\n", "---\rid: \"1\"\rkind: \"note\"\r---\r",
             "---\nid: \"1\"\nkind: \"note\"\n---\r", "---\nid: 1\nkind: \"note\"\n---\n", "---\nkind: \"note\"\n---\n",
             "---\nid: \"1\"\nkind: \"Note\"\n---\n", "---\nid: \"1\"\n---\nkind: \"note\"\n",
             "---\nid: \"\xFF\"\nkind: \"note\"\n---\n"})
        EXPECT_EQ(NoteFile::decode(text, now), std::nullopt) << testing::PrintToString(text);
}

TEST(NoteFile, namesFiles)
{
    const std::tuple<const char*, std::string, const char*, const char*> rows[] = {
        {"Call the dentist!", "3f2a90bc1d77", "2026-11-16-call-the-dentist-3f2a.md",
            "2026-11-16-call-the-dentist-3f2a-3f2a90bc1d77.md"},
        {"one two three four five six seven eight nine ten", "3f2a90bc1d77",
            "2026-11-16-one-two-three-four-five-six-3f2a.md",
            "2026-11-16-one-two-three-four-five-six-3f2a-3f2a90bc1d77.md"},
        {"?!...", "3f2a90bc1d77", "2026-11-16-note-3f2a.md", "2026-11-16-note-3f2a-3f2a90bc1d77.md"},
        {"Zoë's café", "3f2a90bc1d77", "2026-11-16-zoë's-café-3f2a.md", "2026-11-16-zoë's-café-3f2a-3f2a90bc1d77.md"},
        {"../../etc/passwd", "../../etc/x", "2026-11-16-etc-passwd-____.md",
            "2026-11-16-etc-passwd-____-______etc_x.md"},
        {"a", "", "2026-11-16-a-.md", "2026-11-16-a--.md"},
    };
    for (const auto& [title, id, name, longName] : rows) {
        SCOPED_TRACE(title);
        const Note note{.id = id, .title = title, .created = monday};
        EXPECT_EQ(NoteFile::fileName(note), name);
        EXPECT_EQ(NoteFile::longFileName(note), longName);
    }
}

TEST(NoteFile, keepsNamesWithinAFolderAndItsLimits)
{
    std::string jamo; // one user-perceived character of many bytes
    for (int index = 0; index < 100; ++index)
        jamo += "\u1112";
    std::string wide;
    for (int index = 0; index < 100; ++index)
        wide += "𠀀";
    for (const std::string& text :
        {std::string(3000, 'x'), jamo, wide, std::string("a\0b/c\\d", 7), std::string("\xFF\xFF\xFF\xFF")}) {
        const Note note{.id = text, .title = text, .created = monday};
        for (const std::string& name : {NoteFile::fileName(note), NoteFile::longFileName(note, 999)}) {
            EXPECT_LE(name.size(), 255u);
            EXPECT_TRUE(name.starts_with("2026-11-16-") && name.ends_with(".md")) << name;
            EXPECT_EQ(name.find_first_of(std::string_view("/\\\0", 3)), std::string::npos) << name;
        }
    }
    const Note note{.id = "3f2a90bc1d77", .title = std::string(60, 'x'), .created = monday};
    EXPECT_EQ(NoteFile::fileName(note), "2026-11-16-" + std::string(48, 'x') + "-3f2a.md");
    EXPECT_EQ(NoteFile::longFileName(note, 2), "2026-11-16-" + std::string(48, 'x') + "-3f2a-3f2a90bc1d77-2.md");
}

} // namespace
} // namespace quorvell
