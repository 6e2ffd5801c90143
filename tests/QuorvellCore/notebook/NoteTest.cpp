#include "QuorvellCore/notebook/Note.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(Note, readsStoredTextsExactly)
{
    for (const NoteKind kind : allNoteKinds)
        EXPECT_EQ(noteKind(storedText(kind)), kind);
    for (const char* text : {"", "Note", "howTo", "note ", "aboutMe"})
        EXPECT_EQ(noteKind(text), std::nullopt) << text;
    EXPECT_EQ(noteAuthor("buddy"), std::nullopt);
    EXPECT_EQ(noteAuthorFromStored("buddy"), NoteAuthor::quorvell);
    EXPECT_EQ(noteAuthorFromStored("person"), NoteAuthor::person);
    EXPECT_EQ(noteAuthorFromStored("Person"), std::nullopt);
    EXPECT_EQ(noteOrigin("Web"), std::nullopt);
    for (const auto& [text, untrusted] :
        {std::pair("person", false), {"conversation", false}, {"screen", true}, {"web", true}, {"explainer", false}})
        EXPECT_EQ(isUntrusted(*noteOrigin(text)), untrusted) << text;
}

TEST(Note, labelsItsSource)
{
    struct Row {
        NoteSource source;
        std::optional<std::string> label;
    };
    const Row rows[] = {
        {{.site = "www.example.org"}, "example.org"},
        {{.site = "WWW.example.org"}, "WWW.example.org"},
        {{.site = "shop.www.example.org"}, "shop.www.example.org"},
        {{.site = "www."}, ""},
        {{.app = "Firefox", .site = ""}, "Firefox"},
        {{.app = "Firefox", .site = "example.org"}, "example.org"},
        {{.app = "", .site = ""}, std::nullopt},
        {{.address = "https://example.org", .title = "Example"}, std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.source.label(), row.label) << row.source.app.value_or("-") << row.source.site.value_or("-");
}

TEST(Note, makesIdsFromTheFirstBytes)
{
    std::array<std::uint8_t, 16> bytes{};
    EXPECT_EQ(Note::newID(bytes), "000000000000");
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<std::uint8_t>(0xF0 + index);
    EXPECT_EQ(Note::newID(bytes), "f0f1f2f3f4f5");
}

TEST(Note, givesItsTextForSearchAndReading)
{
    Note note{.id = "1", .title = "T", .body = "B"};
    EXPECT_EQ(note.searchText(), "T B    ");
    note.question = "Q";
    note.goal = "G";
    note.source = NoteSource{.site = "www.example.org", .title = "S"};
    note.steps = {"one", "two"};
    note.thread = {{.question = "why", .answer = "so"}};
    EXPECT_EQ(note.searchText(), "T B Q G example.org S one two why so");

    struct Row {
        const char* name;
        NoteKind kind;
        const char* body;
        std::vector<std::string> steps;
        const char* plain;
    };
    const Row rows[] = {
        {"a note's body stays", NoteKind::note, "a\n\n\n b \n", {"unused"}, "a\n\n\n b \n"},
        {"steps alone", NoteKind::howTo, "", {"Open", "Save"}, "1. Open\n2. Save"},
        {"steps and body", NoteKind::howTo, "Careful.", {"Open"}, "1. Open\n\nCareful."},
        {"body alone", NoteKind::howTo, "Careful.", {}, "Careful."},
        {"a how-to of nothing", NoteKind::howTo, "", {}, ""},
        {"one section", NoteKind::explanation, "a\nb", {}, "a\nb"},
        {"empty sections go", NoteKind::explanation, "\n \na\nb\n\n\t\n\n  c\n", {}, "a\nb\n\n  c"},
        {"an empty explanation", NoteKind::explanation, "\n\n", {}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Note plain{.kind = row.kind, .body = row.body, .steps = row.steps};
        EXPECT_EQ(plain.plainText(), row.plain);
    }
}

TEST(Note, hidesWhatIsPutAwayOrUnconfirmed)
{
    struct Row {
        NoteKind kind;
        bool archived;
        bool confirmed;
        bool visible;
    };
    const Row rows[] = {
        {NoteKind::clip, false, false, true},
        {NoteKind::clip, true, false, false},
        {NoteKind::aboutMe, false, false, false},
        {NoteKind::aboutMe, false, true, true},
        {NoteKind::aboutMe, true, true, false},
    };
    for (const Row& row : rows) {
        const Note note{.kind = row.kind, .archived = row.archived, .confirmed = row.confirmed};
        EXPECT_EQ(note.isVisibleToQuorvell(), row.visible);
    }
}

} // namespace
} // namespace quorvell
