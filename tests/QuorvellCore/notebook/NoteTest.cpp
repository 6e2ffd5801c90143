// SPDX-License-Identifier: MIT
// Catches fields of a note lost or misread on their way, and notes shown that are hidden.
#include "QuorvellCore/notebook/NoteJson.h"
#include "WholeNote.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <tuple>

namespace quorvell {

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

TEST(Note, isUpdatedWhenItIsCreatedUnlessToldOtherwise)
{
    const Instant day = *parseIsoText("2026-11-21T09:00:00.123Z");
    EXPECT_EQ(Note{.created = day}.updated, day);
}

TEST(Note, labelsItsSource)
{
    const std::pair<NoteSource, std::optional<std::string>> rows[] = {
        {{.site = "www.example.org"}, "example.org"},
        {{.site = "WWW.example.org"}, "WWW.example.org"},
        {{.site = "shop.www.example.org"}, "shop.www.example.org"},
        {{.site = "www."}, ""},
        {{.app = "Firefox", .site = ""}, "Firefox"},
        {{.app = "Firefox", .site = "example.org"}, "example.org"},
        {{.app = "", .site = ""}, std::nullopt},
        {{.address = "https://example.org", .title = "Example"}, std::nullopt},
    };
    for (const auto& [source, label] : rows)
        EXPECT_EQ(source.label(), label) << source.app.value_or("-") << source.site.value_or("-");
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

    const struct Row {
        const char* name;
        NoteKind kind;
        const char* body;
        std::vector<std::string> steps;
        const char* plain;
    } rows[] = {
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
    const std::tuple<NoteKind, bool, bool, bool> rows[] = {{NoteKind::clip, false, false, true},
        {NoteKind::clip, true, false, false}, {NoteKind::aboutMe, false, false, false},
        {NoteKind::aboutMe, false, true, true}, {NoteKind::aboutMe, true, true, false}};
    for (const auto& [kind, archived, confirmed, visible] : rows) {
        const Note note{.kind = kind, .archived = archived, .confirmed = confirmed};
        EXPECT_EQ(note.isVisibleToQuorvell(), visible);
    }
}

TEST(NoteJson, everyFieldTravels)
{
    const Json whole = NoteJson::encode(wholeNote());
    EXPECT_EQ(whole.size(), 31u);
    EXPECT_EQ(NoteJson::decode(whole), wholeNote());
    EXPECT_EQ(dumpJson(NoteJson::encode(Note{.id = "1", .source = NoteSource{}})),
        R"({"id":"1","kind":"note","title":"","body":"","created":"1970-01-01T00:00:00.000Z",)"
        R"("updated":"1970-01-01T00:00:00.000Z","author":"person","origin":"person","personEdited":false,)"
        R"("pinned":false,"archived":false,"source":{},"steps":[],"thread":[],"confirmed":false,"timesUsed":0,)"
        R"("checked":[],"basedOn":[]})");

    // Each field in turn missing, null and of another type.
    for (const auto& [key, value] : whole.items()) {
        const bool isOptional = !NoteJson::encode(Note{}).contains(key);
        Json changed = whole;
        changed[key] = nullptr;
        EXPECT_EQ(NoteJson::decode(changed).has_value(), isOptional) << key;
        changed[key] = value.is_object() ? Json("text") : Json{{"an", "object"}};
        if (key == "source")
            changed[key] = {{"site", 7}};
        EXPECT_FALSE(NoteJson::decode(changed)) << key;
        changed.erase(key);
        EXPECT_EQ(NoteJson::decode(changed).has_value(), isOptional) << key;
    }
    for (const auto& [key, value] :
        {std::pair("kind", Json("howTo")), {"author", Json("buddy")}, {"origin", Json("Web")},
            {"created", Json("yesterday")}, {"timesUsed", Json(1.5)}, {"checked", Json::array({0, "1"})},
            {"thread", Json::array({Json{{"question", "Why?"}}})}, {"remindAt", Json("2026-02-30T09:00:00.000Z")}}) {
        Json changed = whole;
        changed[key] = value;
        EXPECT_FALSE(NoteJson::decode(changed)) << key;
    }
    EXPECT_FALSE(NoteJson::decode(Json::array()));
}

} // namespace quorvell
