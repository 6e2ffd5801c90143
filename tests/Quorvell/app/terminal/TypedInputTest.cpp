// SPDX-License-Identifier: MIT
// Catches keys and pastes misread when they arrive in pieces, and others' words taken for the user's.
#include "Quorvell/app/chat/ChatWord.h"
#include "Quorvell/app/terminal/CommandHistoryFile.h"
#include "Quorvell/app/terminal/PastedPieces.h"
#include "Quorvell/app/terminal/TerminalKeys.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quorvell {

using Kind = TerminalInput::Kind;
using Pieces = std::vector<TypedMessage::Piece>;

TEST(TerminalKeys, understandsInputHoweverItIsCut)
{
    struct Row {
        const char* name;
        std::string bytes;
        std::vector<TerminalInput> inputs;
    };
    const std::string big(TerminalKeys::longestPaste + 100, 'x');
    const Row rows[] = {
        {"letters", "né\r", {{Kind::keys, "né\r"}}},
        {"history", "a\x1b[A\x1bOB\x10", {{Kind::keys, "a"}, {Kind::older}, {Kind::newer}, {Kind::older}}},
        {"keys of other terminals", "\x1b[1~x\x1bOF\x1b[3~", {{Kind::keys, "\x01x\x05\x1b[3~"}}},
        {"what would make the editor read on",
            "a\x12\x16\x18\t"
            "b\x1b[5~\x1b[1;2R\x1bz"
            "c",
            {{Kind::keys, "abc"}}},
        {"a paste with keys around it", "a\x1b[200~one\r\ntwo\rthree\x1b[201~b",
            {{Kind::keys, "a"}, {Kind::pasted, "one\ntwo\nthree"}, {Kind::keys, "b"}}},
        {"commands in a paste are text", "\x1b[200~\x1b[A/quit\r\x1b[201~", {{Kind::pasted, "\x1b[A/quit\n"}}},
        {"an empty paste", "\x1b[200~\x1b[201~b", {{Kind::keys, "b"}}},
        {"a paste that is too long", "\x1b[200~" + big + "\x1b[201~b",
            {{Kind::pasted, big.substr(0, TerminalKeys::longestPaste)}, {Kind::keys, "b"}}},
        {"a sequence without end", "\x1b[" + std::string(40, '1') + "b", {{Kind::keys, "111111111b"}}},
        {"two Escapes", "\x1b\x1b[Ab", {{Kind::older}, {Kind::keys, "b"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TerminalKeys().received(row.bytes), row.inputs);
        TerminalKeys bytewise;
        std::vector<TerminalInput> inputs;
        for (const char byte : row.bytes)
            for (TerminalInput& input : bytewise.received({&byte, 1})) {
                if (input.kind == Kind::keys && !inputs.empty() && inputs.back().kind == Kind::keys)
                    inputs.back().text += input.text;
                else
                    inputs.push_back(std::move(input));
            }
        EXPECT_EQ(inputs, row.inputs);
        EXPECT_FALSE(bytewise.isWaiting());
    }
    TerminalKeys keys;
    EXPECT_TRUE(keys.received("\x1b").empty());
    EXPECT_TRUE(keys.isWaiting());
    keys.giveUpWaiting();
    EXPECT_EQ(keys.received("[A"), (std::vector<TerminalInput>{{Kind::keys, "[A"}}));
}

TEST(PastedPieces, tellsTheUsersWordsFromThoseOfOthers)
{
    PastedPieces pastes;
    EXPECT_EQ(pastes.message("plain").pieces, (Pieces{{"plain", false}}));
    EXPECT_EQ(pastes.paste("a\nb"), "a⏎b");
    EXPECT_EQ(pastes.paste("x"), "x");
    const std::string many = pastes.paste(std::string("1\n2\n3\n4\n5"));
    EXPECT_EQ(many, "[pasted: 5 lines]");
    EXPECT_EQ(pastes.message("see a⏎b and " + many + " x?").pieces,
        (Pieces{{"see ", false}, {"a\nb", true}, {" and ", false}, {"1\n2\n3\n4\n5", true}, {" ", false}, {"x", true},
            {"?", false}}));
    EXPECT_EQ(pastes.message("see a⏎c x " + many).pieces, (Pieces{{"see a\nc x " + many, true}}));
    pastes.clear();
    pastes.paste("same");
    pastes.paste("same");
    EXPECT_EQ(pastes.message("samesame same").pieces, (Pieces{{"same", true}, {"same", true}, {" same", false}}));
}

TEST(ChatWord, isOnlyWhatTheUserTypedAsOne)
{
    struct Row {
        const char* line;
        std::optional<ChatWord> word;
    };
    const Row rows[] = {
        {"/help", ChatWord{ChatWord::Kind::help, "help", ""}},
        {"/mode  do ", ChatWord{ChatWord::Kind::mode, "mode", "do"}},
        {"/exit", ChatWord{ChatWord::Kind::quit, "exit", ""}},
        {"/dance now", ChatWord{ChatWord::Kind::unknown, "dance", "now"}},
        {" /help", std::nullopt},
        {"/", std::nullopt},
        {"/etc/passwd", std::nullopt},
        {"/2 of it", std::nullopt},
        {"what is /help", std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ChatWord::read({{{row.line}}, false}), row.word) << row.line;
    EXPECT_EQ(ChatWord::read({{{"/quit", true}}, false}), std::nullopt);
}

TEST(CommandHistoryFile, outlivesTheProgramAndStaysSmallAndPrivate)
{
    const test::TemporaryFolder folder;
    const CommandHistoryFile file(folder.path(), "typed.jsonl");
    EXPECT_TRUE(file.load().entries().empty());
    for (const char* text : {"one", "two\nlines", "  ", "one"})
        file.append(text);
    file.append(std::string(CommandHistoryFile::longestEntry + 1, 'x'));
    EXPECT_EQ(file.load().entries(), (std::vector<std::string>{"two\nlines", "one"}));
    test::writeText(folder / "typed.jsonl", test::readText(folder / "typed.jsonl") + "{\"no\": \"text\"}\nhalf a li");
    EXPECT_EQ(file.load().entries().size(), 2U);
    for (int count = 0; count < 300; ++count)
        file.append("entry " + std::to_string(count));
    EXPECT_EQ(file.load().entries().size(), CommandHistory::usualLimit);
    EXPECT_LT(test::readText(folder / "typed.jsonl").size(), 2000U);
    EXPECT_EQ(file.load().entries().back(), "entry 299");
    struct stat status { };
    ASSERT_EQ(stat((folder / "typed.jsonl").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

} // namespace quorvell
