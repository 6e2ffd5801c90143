// SPDX-License-Identifier: MIT
// Catches messages of a speech service that are read otherwise than they were sent, and addresses off this computer.
#include "Wyoming/WyomingReader.h"

#include "Wyoming/WyomingAddress.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

std::string read(std::string_view sent, std::size_t pieces)
{
    WyomingReader reader;
    std::string all;
    for (; !sent.empty(); sent.remove_prefix(std::min(pieces, sent.size()))) {
        reader.add(sent.substr(0, pieces));
        while (const auto event = reader.next())
            all += event->type + dumpJson(event->data) + event->payload + "|";
    }
    return all + (reader.isBroken() ? "broken" : "");
}

} // namespace

TEST(WyomingReader, readsWhatServicesSend)
{
    const std::int16_t samples[] = {0x4241, 0x4443};
    struct Row {
        const char* name;
        std::string sent;
        const char* read;
    };
    const Row rows[] = {
        {"data in the line", "{\"type\":\"transcript\",\"data\":{\"text\":\"hi\"}}\n", "transcript{\"text\":\"hi\"}|"},
        {"data behind it", "{\"type\":\"a\",\"data\":{\"b\":1},\"data_length\":7}\n{\"b\":2}", "a{\"b\":2}|"},
        {"our own", WyomingEvent::audioChunk(16000, samples).bytes() + WyomingEvent::audioStop().bytes(),
            "audio-chunk{\"rate\":16000,\"width\":2,\"channels\":1}ABCD|audio-stop{}|"},
        {"nulls", "{\"type\":\"a\",\"data_length\":null,\"payload_length\":0}\n", "a{}|"},
        {"half a line", "{\"type\":\"a\"}", ""},
        {"half a payload", "{\"type\":\"a\",\"payload_length\":4}\nab", ""},
        {"no type", "{\"data\":{}}\n{\"type\":\"a\"}\n", "broken"},
        {"no JSON", "hello\n", "broken"},
        {"no object", "[1]\n", "broken"},
        {"data that is none", "{\"type\":\"a\",\"data_length\":3}\n[1]", "broken"},
        {"a length below zero", "{\"type\":\"a\",\"payload_length\":-1}\n", "broken"},
        {"a length beyond all", "{\"type\":\"a\",\"payload_length\":99999999999999999999}\n", "broken"},
        {"a length that is none", "{\"type\":\"a\",\"payload_length\":\"4\"}\n", "broken"},
        {"a line without end", std::string(WyomingReader::longestHead + 1, ' '), "broken"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(read(row.sent, row.sent.size() + 1), row.read);
        EXPECT_EQ(read(row.sent, 7), row.read);
    }
}

TEST(WyomingAddress, leavesThisComputerOnlyWhereTheUserSaysSo)
{
    const std::pair<const char*, const char*> rows[] = {{"127.0.0.1:10300", "127.0.0.1:10300"},
        {"tcp://localhost:10200", "localhost:10200"}, {"tcp://[::1]:1", "[::1]:1"},
        {"unencrypted://box.example:10300", "box.example:10300"}, {"unencrypted://10.0.0.7:10300", "10.0.0.7:10300"},
        {"unencrypted://[fd00::7]:10300", "[fd00::7]:10300"}, {"box.example:10300", ""}, {"tcp://10.0.0.7:10300", ""},
        {"127.0.0.1.evil.example:1", ""}, {"127.0.0.1", ""}, {"127.0.0.1:0", ""}, {"127.0.0.1:65536", ""},
        {"127.0.0.1:1/x", ""}, {"unencrypted://a b:1", ""}, {"unencrypted://:1", ""}, {"", ""}};
    for (const auto& [text, read] : rows) {
        const auto address = WyomingAddress::parse(text);
        EXPECT_EQ(address ? address->text() : "", read) << text;
    }
}

} // namespace quorvell
