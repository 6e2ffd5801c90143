// SPDX-License-Identifier: MIT
// Catches wrong notes shown, unsafe text printed and changes lost by the notes command.
#include "Quorvell/app/notes/NotesCommand.h"

#include "FixtureTable.h"
#include "Quorvell/app/program/CommandLine.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Json.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <algorithm>
#include <span>
#include <sstream>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + 17h;

struct Shell {
    test::TemporaryFolder folder;
    ProgramEnvironment environment;
    std::string output;
    std::string errors;

    Shell()
    {
        environment.notebookFolder = folder / "Notebook";
        environment.timeZone = "Asia/Tokyo";
        environment.locale = "en_GB";
        environment.runtimeFolder = folder.path();
    }

    void keep(const std::vector<Note>& notes) const
    {
        std::filesystem::create_directory(environment.notebookFolder);
        for (const Note& note : notes)
            test::writeText(environment.notebookFolder + "/" + note.id + ".md", NoteFile::encode(note));
    }

    int run(std::vector<std::string> words)
    {
        Command program("quorvell", "");
        program.commands.push_back(notesCommand(environment));
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int code = CommandLine::run(program, "1", std::move(words));
        output = testing::internal::GetCapturedStdout();
        errors = testing::internal::GetCapturedStderr();
        return code;
    }
};

std::vector<Note> someNotes()
{
    return {
        {.id = "aaaa11112222",
            .title = "Call the dentist",
            .created = monday,
            .author = NoteAuthor::quorvell,
            .remindAt = monday + 24h,
            .repeatRule = "daily"},
        {.id = "aaaa33334444",
            .kind = NoteKind::howTo,
            .title = "Tea",
            .created = monday - 48h,
            .pinned = true,
            .steps = {"Boil", "Pour"}},
        {.id = "bbbb",
            .kind = NoteKind::aboutMe,
            .title = "Two\nlines\x1b[31m",
            .body = "red \x1b[31m\u009bm\ntea",
            .created = monday - 72h,
            .archived = true},
    };
}

/// A fixture's lines: the words, the exit code, what is shown, and "! " before how the complaint begins.
TEST(NotesCommand, listsFindsAndShows)
{
    for (const auto& [name, lines] : test::fixtureRows("app/notes.txt")) {
        SCOPED_TRACE(lines[0]);
        ASSERT_GE(lines.size(), 2U);
        std::vector<std::string> words;
        std::istringstream command(lines[0]);
        for (std::string word; std::getline(command, word, '|');)
            words.push_back(word);
        std::string output;
        std::string errors;
        for (const std::string& line : std::span(lines).subspan(2))
            if (line.starts_with("! "))
                errors += (errors.empty() ? "" : "\n") + line.substr(2);
            else
                output += line + "\n";
        Shell shell;
        shell.keep(someNotes());
        EXPECT_EQ(std::to_string(shell.run(words)), lines[1]);
        EXPECT_EQ(shell.output, output);
        EXPECT_TRUE(shell.errors.starts_with(errors)) << shell.errors;
    }
    for (const auto& [command, word, error] : {std::tuple("delete", "", "No note has"), {"add", " ", "There are no"}}) {
        Shell shell;
        shell.keep(someNotes());
        EXPECT_EQ(shell.run({"notes", command, word}), 1);
        EXPECT_TRUE(shell.errors.starts_with(error)) << shell.errors;
    }
}

TEST(NotesCommand, showsANoteSafely)
{
    Shell shell;
    shell.keep(someNotes());
    const std::string path = shell.environment.notebookFolder;
    EXPECT_EQ(shell.run({"notes", "show", "aaaa3"}), 0);
    EXPECT_EQ(shell.output,
        "Tea\nhow_to, 2026-11-15 02:00, by you  [pinned]\n" + path + "/aaaa33334444.md\n\n1. Boil\n2. Pour\n");
    EXPECT_EQ(shell.run({"notes", "show", "dentist"}), 0);
    EXPECT_TRUE(shell.output.starts_with("Call the dentist\n"));
    EXPECT_EQ(shell.run({"notes", "show", "bbbb"}), 0);
    EXPECT_NE(shell.output.find("\n\nred \x1b[31m\u009bm\ntea\n"), std::string::npos)
        << "a file gets the text as it is";
    shell.environment.isOutputTerminal = true;
    EXPECT_EQ(shell.run({"notes", "show", "bbbb"}), 0);
    EXPECT_NE(shell.output.find("\n\nred [31mm\ntea\n"), std::string::npos);
    EXPECT_EQ(shell.output.find('\x1b'), std::string::npos);
}

TEST(NotesCommand, speaksJsonToScripts)
{
    Shell shell;
    shell.keep(someNotes());
    EXPECT_EQ(shell.run({"notes", "--json", "show", "aaaa1"}), 0);
    EXPECT_EQ(shell.output,
        R"({"id":"aaaa11112222","kind":"note","title":"Call the dentist","created":"2026-11-16T17:00:00.000Z",)"
        R"("updated":"2026-11-16T17:00:00.000Z","author":"quorvell","origin":"person","pinned":false,"archived":false,)"
        R"("remind_at":"2026-11-17T17:00:00.000Z","repeat":"daily","file":")"
            + shell.environment.notebookFolder + "/aaaa11112222.md\",\"text\":\"\"}\n");
    EXPECT_EQ(shell.run({"notes", "find", "tea", "--json"}), 0);
    EXPECT_EQ(std::count(shell.output.begin(), shell.output.end(), '\n'), 2);
    EXPECT_TRUE(parseJson(shell.output.substr(0, shell.output.find('\n')))) << shell.output;
    EXPECT_EQ(shell.run({"notes", "find", "nothing", "--json"}), 0);
    EXPECT_EQ(shell.output, "");
}

TEST(NotesCommand, saysWhenThereIsNothingToRead)
{
    Shell shell;
    EXPECT_EQ(shell.run({"notes"}), 0);
    EXPECT_NE(shell.output.find("no notes in " + shell.environment.notebookFolder), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(shell.environment.notebookFolder)) << "reading made the folder";
    test::writeText(shell.environment.notebookFolder, "a file");
    EXPECT_EQ(shell.run({"notes"}), 1);
    EXPECT_NE(shell.errors.find(shell.environment.notebookFolder), std::string::npos);
    Shell emptied;
    emptied.keep(someNotes());
    test::writeText(emptied.environment.notebookFolder + "/bbbb.md", "");
    EXPECT_EQ(emptied.run({"notes"}), 0);
    EXPECT_NE(emptied.errors.find("Left out: bbbb.md.\n"), std::string::npos) << emptied.errors;
}

TEST(NotesCommand, editsAndRestores)
{
    Shell shell;
    shell.keep(someNotes());
    const auto stored = [&shell] {
        const auto content = readNoteFolder(shell.environment.notebookFolder, monday);
        return content ? *std::find_if(content->notes.begin(), content->notes.end(),
                   [](const Note& note) { return note.id == "aaaa33334444"; })
                       : Note{};
    };
    struct Row {
        const char* editor;
        int code;
        const char* says;
        const char* step;
    };
    const Row rows[] = {
        {"true", 0, "Nothing was changed", "Boil"},
        {"sed -i s/Boil/Heat/", 0, "The note is changed", "Heat"},
        {"false", 1, "ended with an error", "Heat"},
        {"sed -i s/^kind.*//", 1, "must keep its id and a kind", "Heat"},
        {"rm", 1, "cannot be read any more", "Heat"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.editor);
        shell.environment.editor = row.editor;
        EXPECT_EQ(shell.run({"notes", "edit", "aaaa3"}), row.code);
        EXPECT_NE((shell.output + shell.errors).find(row.says), std::string::npos) << shell.output << shell.errors;
        EXPECT_EQ(stored().steps[0], row.step);
    }
    EXPECT_TRUE(stored().personEdited);
    // A note without dates is not taken for one that somebody else changed.
    test::writeText(shell.environment.notebookFolder + "/undated.md", "---\nid: \"cccc\"\nkind: \"note\"\n---\nBoil\n");
    shell.environment.editor = "sed -i s/Boil/Heat/";
    EXPECT_EQ(shell.run({"notes", "edit", "cccc"}), 0);
    EXPECT_EQ(shell.output, "The note is changed.\n");
    // While the editor is open somebody else changes the file: both are kept.
    const std::string outside =
        "printf '\\nfrom outside\\n' >> " + shell.environment.notebookFolder + "/aaaa33334444.md; sed -i s/Pour/Serve/";
    shell.environment.editor = outside;
    EXPECT_EQ(shell.run({"notes", "edit", "aaaa3"}), 0);
    EXPECT_EQ(stored().steps[1], "Serve");
    EXPECT_NE(shell.output.find("Somebody else had changed it"), std::string::npos);
    EXPECT_EQ(shell.run({"notes", "history", "aaaa3", "--json"}), 0);
    EXPECT_NE(shell.output.find("from outside"), std::string::npos) << shell.output;
    EXPECT_EQ(shell.run({"notes", "restore", "aaaa3", "2", "--json"}), 0);
    EXPECT_EQ(shell.output, "{\"status\":\"restored\",\"id\":\"aaaa33334444\"}\n");
    EXPECT_EQ(stored().steps, (std::vector<std::string>{"Boil", "Pour"}));
}

TEST(NotesCommand, keepsTicksAndForgets)
{
    Shell shell;
    shell.keep(someNotes());
    // One red pixel.
    test::writeText(shell.folder / "red.ppm", "P3 1 1 255 255 0 0\n");
    const std::string picture = shell.environment.notebookFolder + "/Pictures/aaaa33334444.png";
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"notes", "add", "Buy", "three loaves"}, "Kept. Its id is "},
        {{"notes", "find", "loaves"}, "Buy three loaves\n"},
        {{"notes", "tick", "aaaa3", "2"}, "The tick is changed.\n"},
        {{"notes", "show", "aaaa3"}, "\nTicked: 2\n"},
        {{"notes", "picture", "aaaa3", shell.folder / "red.ppm"}, "The picture is kept"},
        {{"notes", "picture", "aaaa3"}, picture + "\n"},
        {{"notes", "remember", "I", "have a dog"}, "The assistant knows it"},
        {{"notes", "facts"}, "about_me     I have a dog\n"},
        {{"notes", "forget-facts", "--yes", "--json"}, "{\"status\":\"forgotten\"}\n"},
        {{"notes", "facts", "--json"}, ""},
    };
    for (const auto& [words, says] : rows) {
        EXPECT_EQ(shell.run(words), 0) << words[1] << shell.errors;
        EXPECT_NE(shell.output.find(says), std::string::npos) << words[1] << ": " << shell.output;
    }
    EXPECT_EQ(shell.output, "");
}

TEST(NotesCommand, exports)
{
    Shell shell;
    shell.keep(someNotes());
    EXPECT_EQ(shell.run({"notes", "export", shell.folder / "copy"}), 0);
    EXPECT_EQ(readNoteFolder(shell.folder / "copy", monday)->notes,
        readNoteFolder(shell.environment.notebookFolder, monday)->notes);
    EXPECT_EQ(shell.run({"notes", "export", "-", "--json"}), 0);
    const auto notes = parseJson(shell.output);
    EXPECT_TRUE(notes && notes->size() == 3) << shell.output;
    EXPECT_EQ(shell.run({"notes", "export", shell.folder / "none/x.json", "--json"}), 1);
    EXPECT_NE(shell.errors.find("is gone"), std::string::npos) << shell.errors;
    // Nothing but new and ordinary files is written to.
    ASSERT_EQ(::mkfifo((shell.folder / "pipe").c_str(), 0600), 0);
    test::writeText(shell.folder / "old.json", "old");
    std::filesystem::create_symlink("old.json", shell.folder / "link");
    std::filesystem::create_symlink("pipe", shell.folder / "link to a pipe");
    const std::pair<std::vector<std::string>, const char*> refused[] = {
        {{shell.folder / "pipe", "--json"}, "a device or a pipe"},
        {{shell.folder / "link to a pipe", "--json"}, "a device or a pipe"},
        {{shell.folder / "copy", "--json"}, "is a folder"},
        {{"", "--json"}, "No file is named"},
        {{""}, "no folder is named"},
        {{"-"}, "Only with --json"},
        {{shell.folder / "pipe"}, "is a file, not a folder"},
    };
    for (const auto& [words, says] : refused) {
        std::vector<std::string> all{"notes", "export"};
        all.insert(all.end(), words.begin(), words.end());
        EXPECT_EQ(shell.run(all), 1) << words[0];
        EXPECT_NE(shell.errors.find(says), std::string::npos) << shell.errors;
    }
    EXPECT_TRUE(std::filesystem::is_fifo(shell.folder / "pipe"));
    EXPECT_EQ(shell.run({"notes", "export", shell.folder / "link", "--json"}), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(shell.folder / "link"));
    EXPECT_TRUE(parseJson(test::readText(shell.folder / "old.json")));
}

TEST(NotesCommand, movesTheNotebook)
{
    Shell shell;
    shell.keep(someNotes());
    shell.environment.configFolder = shell.folder / "config/deep";
    shell.environment.localNotebookFolder = shell.environment.notebookFolder;
    const std::string target = shell.folder / "elsewhere";
    EXPECT_EQ(shell.run({"notes", "move", "synced"}), 1);
    std::filesystem::create_directories(shell.environment.configFolder);
    const std::string settings = shell.environment.configFolder + "/settings.json";
    test::writeText(settings, "{not json");
    EXPECT_EQ(shell.run({"notes", "move", target}), 1);
    EXPECT_FALSE(std::filesystem::exists(target)) << "moved although nobody would find it";
    std::filesystem::remove(settings);
    ASSERT_EQ(::mkfifo(settings.c_str(), 0600), 0);
    EXPECT_EQ(shell.run({"notes", "move", target}), 1);
    std::filesystem::remove(settings);
    for (const std::string& bad :
        {std::string("name\xff"), std::string(201, 'x'), std::string("blank "), std::string()}) {
        EXPECT_EQ(shell.run({"notes", "move", bad.empty() ? bad : shell.folder / bad}), 1) << bad;
        EXPECT_FALSE(!bad.empty() && std::filesystem::exists(shell.folder / bad)) << bad;
        EXPECT_FALSE(std::filesystem::exists(settings));
    }
    EXPECT_EQ(readNoteFolder(shell.environment.notebookFolder, monday)->notes.size(), 3u);
    test::writeText(settings, R"({"user_name": "Asha"})");
    EXPECT_EQ(shell.run({"notes", "move", target, "--json"}), 0) << shell.errors;
    EXPECT_EQ(readNoteFolder(target, monday)->notes.size(), 3u);
    EXPECT_TRUE(readNoteFolder(shell.environment.notebookFolder, monday)->notes.empty());
    const auto written = parseJson(test::readText(settings));
    ASSERT_TRUE(written);
    EXPECT_EQ(readString(*written, "user_name"), "Asha");
    EXPECT_EQ(readString(*written, "notebook_folder"), target);
    shell.environment.notebookFolder = target;
    EXPECT_EQ(shell.run({"notes", "move", "local"}), 0) << shell.errors;
    EXPECT_EQ(readNoteFolder(shell.environment.localNotebookFolder, monday)->notes.size(), 3u);
}

} // namespace
} // namespace quorvell
