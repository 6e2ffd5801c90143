// SPDX-License-Identifier: MIT
// Each slip of the pen in a practice file is told with its place: a world that is not what its author meant would
// measure something else.
#include "Quorvell/practice/file/PracticeFile.h"

#include <gtest/gtest.h>

namespace quorvell::test {

namespace {

/// A world in which all is well, one piece of its text replaced.
std::string worldWith(const std::string& piece, const std::string& by)
{
    std::string text = R"({
  "title": "T", "goal": "G", "front": "Desk", "facts": {"lid": "shut"},
  "apps": [
    {"name": "Desk", "windows": [{"name": "w", "title": "{lid}", "elements": [
      {"name": "one", "role": "AXButton", "label": "One", "press": [{"set": "lid", "to": "open"}]}]}]},
    {"name": "Web", "browser": true, "pages": [{"address": "https://a.example.com", "title": "A"}]}],
  "done_when": [{"fact": "lid", "is": "open"}]})";
    const std::size_t at = text.find(piece);
    EXPECT_NE(at, std::string::npos) << piece;
    return text.replace(at, piece.size(), by);
}

} // namespace

TEST(PracticeFile, tellsEachMistakeWithItsPlace)
{
    struct Row {
        const char* piece;
        const char* by;
        const char* place;
        const char* sentence;
    };
    const Row rows[] = {
        {"\"goal\": \"G\",", "\"goal\": \"G\"", "line 2, column 35", "This is not JSON."},
        {"\"title\": \"T\"", "\"title\": \"\"", "title", "This is missing."},
        {"\"goal\": \"G\",", "", "goal", "This is missing."},
        {"\"goal\": \"G\"", "\"gaol\": \"G\"", "goal", "This is missing."},
        {"\"goal\": \"G\"", "\"goal\": 7", "goal", "This must be a text."},
        {"{\"lid\": \"shut\"}", "[]", "facts", "This must be an object with at most 500 members."},
        {"\"front\": \"Desk\"", "\"front\": \"Dseck\"", "front", "There is no application of this name."},
        {"[{\"fact\": \"lid\", \"is\": \"open\"}]", "[]", "done_when", "It is not said when the goal is reached."},
        {"\"is\": \"open\"", "\"iss\": \"open\"", "done_when[0]", "One of these is missing: is, is_not, contains."},
        {"{\"fact\": \"lid\", \"is\"", "{\"fact\": \"lod\", \"is\"", "done_when[0]", "There is no fact “lod”."},
        {"{lid}", "{lod}", "apps[0].windows[0].title", "There is no fact “lod”."},
        {"AXButton", "AXBottun", "apps[0].windows[0].elements[0].role", "There is no such role."},
        {"\"label\"", "\"lable\"", "apps[0].windows[0].elements[0]", "Nothing is called “lable” here."},
        {"\"set\": \"lid\"", "\"set\": \"lod\"", "apps[0].windows[0].elements[0].press[0]", "There is no fact “lod”."},
        {"{\"set\": \"lid\", \"to\": \"open\"}", "{\"window\": \"v\"}", "apps[0].windows[0].elements[0].press[0]",
            "There is no window of this name."},
        {"{\"set\": \"lid\", \"to\": \"open\"}", "{\"page\": \"b.example.com\"}",
            "apps[0].windows[0].elements[0].press[0]", "There is no page at this address."},
        {"{\"set\": \"lid\", \"to\": \"open\"}", "{\"happens\": \"rain\"}",
            "apps[0].windows[0].elements[0].press[0].happens", "There is no such consequence."},
        {"{\"set\": \"lid\", \"to\": \"open\"}", "{\"set\": \"lid\", \"close\": \"w\"}",
            "apps[0].windows[0].elements[0].press[0].close", "This cannot stand beside “set”."},
        {"\"to\": \"open\"", "\"to\": \"open\", \"after_ms\": -1", "apps[0].windows[0].elements[0].press[0].after_ms",
            "This must be a number from 0 to 600000."},
        {"\"label\": \"One\"", "\"area\": [0, 1, 2]", "apps[0].windows[0].elements[0].area",
            "This must be a list of 4 numbers from 0 to 1000."},
        {"\"title\": \"{lid}\"", "\"keys\": {\"command+q\": []}", "apps[0].windows[0].keys.command+q",
            "There is no such key."},
        {"https://a.example.com", "nowhere at all", "apps[1].pages[0].address", "This is not a web address."},
        {"\"browser\": true, ", "", "apps[1].pages", "Only a browser has pages: \"browser\": true."},
        {"\"name\": \"Web\"", "\"name\": \"DESK\"", "apps[1].name", "This name stands for two."},
        {"\"goal\": \"G\"", "\"goal\": \"G\", \"steps\": [{\"kind\": \"action\", \"message\": \"\"}]", "steps[0]",
            "This is not a decision."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.by);
        const auto read = PracticeFile::parse(worldWith(row.piece, row.by));
        const auto* mistakes = std::get_if<std::vector<PracticeMistake>>(&read);
        ASSERT_TRUE(mistakes);
        EXPECT_EQ(mistakes->front(), (PracticeMistake{row.place, row.sentence}));
    }
    EXPECT_TRUE(std::holds_alternative<PracticeDescription>(PracticeFile::parse(worldWith("G", "Go"))));
    EXPECT_FALSE(std::holds_alternative<PracticeDescription>(
        PracticeFile::parse(worldWith("G", std::string(PracticeFile::mostBytes, 'g')))));
}

} // namespace quorvell::test
