// SPDX-License-Identifier: MIT
// Catches notes that do not come back from their files as they were, and names that leave the folder.
#include "QuorvellCore/notebook/NoteFile.h"

#include <gtest/gtest.h>

#include <functional>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

constexpr Instant now = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 9h;
constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + 17h + 5ms;

Note fullNote()
{
    return {.id = "3f2a90bc1d77",
        .kind = NoteKind::aboutMe,
        .title = "Say \"hi\" to A/B",
        .body = "line one\n---\n",
        .created = monday,
        .updated = monday + 1s,
        .author = NoteAuthor::quorvell,
        .origin = NoteOrigin::web,
        .personEdited = true,
        .pinned = true,
        .archived = true,
        .source = NoteSource{.app = "Firefox", .site = "example.org", .address = "https://example.org/ü", .title = "T"},
        .steps = {"Open", "Save\nall"},
        .goal = "",
        .question = "Why?",
        .thread = {{.question = "q", .answer = "a", .date = monday}},
        .confirmed = true,
        .timesUsed = 3,
        .checked = {0, -2},
        .when = monday,
        .remindAt = monday + 24h,
        .image = "Pictures/3f2a90bc1d77.png",
        .level = "brief",
        .reviewed = monday,
        .basedOn = {"aaaaaaaaaaaa"},
        .repeatRule = "weekly:2",
        .trigger = "back_at_mac",
        .doneAt = monday,
        .then = "then",
        .event = "event",
        .mirror = "mirror"};
}

constexpr const char* fullText = R"(---
id: "3f2a90bc1d77"
kind: "about_me"
title: "Say \"hi\" to A/B"
created: "2026-11-16T17:00:00.005Z"
updated: "2026-11-16T17:00:01.005Z"
author: "quorvell"
origin: "web"
person_edited: true
pinned: true
archived: true
confirmed: true
times_used: 3
source: {"address":"https://example.org/ü","app":"Firefox","site":"example.org","title":"T"}
question: "Why?"
goal: ""
steps: ["Open","Save\nall"]
thread: [{"answer":"a","date":"2026-11-16T17:00:00.005Z","question":"q"}]
checked: [0,-2]
when: "2026-11-16T17:00:00.005Z"
remind_at: "2026-11-17T17:00:00.005Z"
image: "Pictures/3f2a90bc1d77.png"
level: "brief"
reviewed: "2026-11-16T17:00:00.005Z"
based_on: ["aaaaaaaaaaaa"]
repeat: "weekly:2"
trigger: "back_at_mac"
done_at: "2026-11-16T17:00:00.005Z"
then: "then"
event: "event"
mirror: "mirror"
---
line one
---

)";

TEST(NoteFile, writesEveryFieldInItsPlaceAndReadsItBack)
{
    EXPECT_EQ(NoteFile::encode(fullNote()), fullText);
    EXPECT_EQ(NoteFile::decode(fullText, now), fullNote());
}

TEST(NoteFile, writesOnlyWhatANoteHas)
{
    Note note{.id = "1", .created = monday, .updated = monday, .confirmed = true};
    EXPECT_EQ(NoteFile::encode(note),
        "---\nid: \"1\"\nkind: \"note\"\ntitle: \"\"\ncreated: \"2026-11-16T17:00:00.005Z\"\n"
        "updated: \"2026-11-16T17:00:00.005Z\"\nauthor: \"person\"\norigin: \"person\"\n---\n\n");
    note.kind = NoteKind::aboutMe;
    note.confirmed = false;
    EXPECT_NE(NoteFile::encode(note).find("\nconfirmed: false\n"), std::string::npos);
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
    struct Row {
        const char* name;
        std::string text;
        std::function<void(Note&)> expected;
    };
    const auto unchanged = [](Note&) {};
    const Row rows[] = {
        {"nothing but id and kind", fileWith(""), unchanged},
        {"CR LF and a byte-order mark", "\xEF\xBB\xBF---\r\nid: \"1\"\r\nkind: \"note\"\r\n---\r\nb\r\n", unchanged},
        {"several carriage returns", "---\nid: \"1\"\nkind: \"note\"\n---\r\r\nb\r\r\n", unchanged},
        {"half a line end at the end", "---\nid: \"1\"\nkind: \"note\"\n---\nb\r", unchanged},
        {"no line feed at the end", "---\nid: \"1\"\nkind: \"note\"\n---\nb", unchanged},
        {"a body of nothing", "---\nid: \"1\"\nkind: \"note\"\n---", [](Note& note) { note.body = ""; }},
        {"blanks around key and value", fileWith(" \tpinned\t :\t true  "), [](Note& note) { note.pinned = true; }},
        {"a word for a value", fileWith("pinned: yes"), unchanged},
        {"a number for a flag", fileWith("pinned: 1"), unchanged},
        {"a line without a colon", fileWith("pinned true"), unchanged},
        {"an unknown key", fileWith("colour: \"red\""), unchanged},
        {"a colon in the value", fileWith("title: \"a: b\""), [](Note& note) { note.title = "a: b"; }},
        {"the last readable line counts", fileWith("title: \"a\"\ntitle: \"b\"\ntitle: c"),
            [](Note& note) { note.title = "b"; }},
        {"a null title", fileWith("title: \"a\"\ntitle: null"), unchanged},
        {"an author of old", fileWith("author: \"buddy\""), [](Note& note) { note.author = NoteAuthor::quorvell; }},
        {"an author in capitals", fileWith("author: \"Quorvell\""), unchanged},
        {"an unknown origin", fileWith("origin: \"moon\""), unchanged},
        {"one step is no text", fileWith("steps: [\"a\", 1]"), unchanged},
        {"one tick is no number", fileWith("checked: [1, \"2\"]"), unchanged},
        {"ticks with a fraction of nothing", fileWith("checked: [1.0, 2]"),
            [](Note& note) {
                note.checked = {1, 2};
            }},
        {"a count below zero", fileWith("times_used: -4"), unchanged},
        {"a count too large", fileWith("times_used: 99999999999999999999"), unchanged},
        {"confirmed on a plain note", fileWith("confirmed: true"), unchanged},
        {"an empty source", fileWith("source: {}"), [](Note& note) { note.source = NoteSource{}; }},
        {"a source of the wrong type", fileWith("source: \"web\""), unchanged},
        {"a source with a wrong field", fileWith("source: {\"app\": 1, \"site\": \"s\"}"),
            [](Note& note) { note.source = NoteSource{.site = "s"}; }},
        {"a turn without a date", fileWith("thread: [{\"question\": \"q\", \"answer\": \"a\"}, 7]"),
            [](Note& note) { note.thread = {{.question = "q", .answer = "a", .date = now}}; }},
        {"an image that climbs out", fileWith("image: \"Pictures/../../x.png\""), unchanged},
        {"an escaped image that climbs out", fileWith("image: \"\\u002e\\u002e/x.png\""), unchanged},
        {"an absolute image", fileWith("image: \"\\/etc/x.png\""), unchanged},
        {"an image inside", fileWith("image: \"Pictures/x.png\""), [](Note& note) { note.image = "Pictures/x.png"; }},
        {"a value nested too deep", fileWith("title: \"a\"\ntitle: " + std::string(100, '[') + std::string(100, ']')),
            [](Note& note) { note.title = "a"; }},
        {"dates without milliseconds and with an offset",
            fileWith("created: \"2026-11-16T17:00:00Z\"\nremind_at: \"2026-11-16T17:00:00.0051+01:00\""),
            [](Note& note) {
                note.created = note.updated = monday - 5ms;
                note.remindAt = monday - 1h;
            }},
        {"dates that do not exist", fileWith("updated: \"2026-02-30T00:00:00Z\"\nwhen: \"tomorrow\"\ndone_at: 7"),
            unchanged},
        {"a date before the first year", fileWith("when: \"0000-01-01T00:00:00+01:00\""), unchanged},
    };
    const Note base{.id = "1", .body = "b", .created = now, .updated = now};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Note expected = base;
        row.expected(expected);
        const auto note = NoteFile::decode(row.text, now);
        ASSERT_TRUE(note);
        EXPECT_EQ(NoteFile::encode(*note), NoteFile::encode(expected));
        EXPECT_EQ(*note, expected);
    }
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
    struct Row {
        const char* title;
        std::string id;
        const char* name;
        const char* longName;
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
        SCOPED_TRACE(row.title);
        const Note note{.id = row.id, .title = row.title, .created = monday};
        EXPECT_EQ(NoteFile::fileName(note), row.name);
        EXPECT_EQ(NoteFile::longFileName(note), row.longName);
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
