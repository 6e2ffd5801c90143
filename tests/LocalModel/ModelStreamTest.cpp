// SPDX-License-Identifier: MIT
// Catches a model's answer that is read otherwise than it was sent, or that grows beyond its bounds.
#include "LocalModel/ModelStream.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

std::string event(const std::string& delta, const std::string& finish = "null")
{
    return "data: {\"choices\":[{\"delta\":" + delta + ",\"finish_reason\":" + finish + "}]}\n\n";
}

std::string words(const std::string& text)
{
    return event("{\"content\":\"" + text + "\"}");
}

std::string call(const std::string& head, const std::string& arguments, int index = 0)
{
    return event("{\"tool_calls\":[{\"index\":" + std::to_string(index) + ",\"function\":{" + head + "\"arguments\":\""
        + arguments + "\"}}]}");
}

std::string shown(const ModelStream& stream, const std::string& text)
{
    constexpr const char* names[] = {"waiting", "running", "whole", "broken"};
    std::string all = std::string(names[static_cast<int>(stream.state())]) + "|" + text;
    for (const ModelStream::Call& made : stream.calls())
        all += "|" + made.name + " " + made.arguments;
    return all;
}

std::string read(std::string_view sent, std::size_t pieces)
{
    ModelStream stream;
    std::string text;
    for (; !sent.empty(); sent.remove_prefix(std::min(pieces, sent.size()))) {
        stream.add(sent.substr(0, pieces));
        text += stream.takeText();
    }
    stream.end();
    return shown(stream, text + stream.takeText());
}

} // namespace

TEST(ModelStream, readsWhatServersSend)
{
    const std::string done = "data: [DONE]\n\n";
    const std::string stop = event("{}", "\"stop\"");
    struct Row {
        const char* name;
        std::string sent;
        const char* read;
    };
    const Row rows[] = {
        {"words in pieces", words("It is ") + words("late.") + stop + done, "whole|It is late."},
        {"no mark of the end", words("Yes.") + stop, "whole|Yes."},
        {"no reason for the end", words("Yes.") + done, "whole|Yes."},
        {"a count behind the end", words("Yes.") + stop + "data: {\"choices\":[],\"usage\":{}}\n\n" + done,
            "whole|Yes."},
        {"comments", ": busy\n\n" + words("Yes.") + done, "whole|Yes."},
        {"a call in pieces", call("\"name\":\"keep_note\",", "{\\\"te") + call("", "xt\\\":1}") + done,
            "whole||keep_note {\"text\":1}"},
        {"two calls", call("\"name\":\"a\",", "{}") + call("\"name\":\"b\",", "{}", 1) + done, "whole||a {}|b {}"},
        {"thoughts", words("<think>I could ly") + words("e.</thi") + words("nk>No<") + words("b>.") + done,
            "whole|No<b>."},
        {"a thought without an end", words("<think>on and on") + done, "whole|"},
        {"one object",
            R"({"choices":[{"message":{"content":"Yes.","tool_calls":[{"function":{"name":"a",)"
            R"("arguments":{"b":1}}}]}}]})",
            "whole|Yes.|a {\"b\":1}"},
        {"broken off", words("It is "), "broken|It is "},
        {"nothing", "", "broken|"},
        {"an error", words("It") + "data: {\"error\":{\"message\":\"no memory\"}}\n\n", "broken|It"},
        {"no JSON", "data: {{{\n\n", "broken|"},
        {"a page", "<html><body>Welcome</body></html>", "broken|"},
        {"another form", "data: {\"response\":\"hello\"}\n\n", "broken|"},
        {"a call out of order", call("\"name\":\"a\",", "{}", 5) + done, "broken|"},
        {"the last of too many calls", call("\"name\":\"a\",", "{}", -1) + done, "broken|"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(read(row.sent, 1), row.read);
        EXPECT_EQ(read(row.sent, 100'000), row.read);
    }
}

TEST(ModelStream, endsWhatHasNoEnd)
{
    const std::string much(5000, 'a');
    struct Row {
        const char* name;
        std::string piece;
        std::size_t most; ///< Bytes that are taken.
    };
    const Row rows[] = {
        {"words", words(much), ModelStream::longestText + 2 * much.size()},
        {"arguments", call("", much), ModelStream::longestArguments + 2 * much.size()},
        {"thoughts", words("<think>" + much), ModelStream::mostBytes + 2 * much.size()},
        {"comments", ":" + much + "\n", ModelStream::mostBytes + 2 * much.size()},
        {"one line", much, ModelStream::mostBytes + 2 * much.size()},
        {"one object", "{" + much, ModelStream::mostBytes + 2 * much.size()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ModelStream stream;
        std::size_t taken = 0;
        for (; stream.state() != ModelStream::State::broken && taken < 2 * row.most; taken += row.piece.size())
            stream.add(row.piece);
        EXPECT_LE(taken, row.most);
    }
}

} // namespace quorvell
