// SPDX-License-Identifier: MIT
// Catches answers that are taken for something else, or for a WebSocket that nobody agreed on.
#include "Http/HttpAnswerHead.h"

#include "Http/WebSocketUpgrade.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(HttpAnswerHead, isReadOrRefused)
{
    using Kind = HttpAnswerReading::Kind;
    const struct Row {
        const char* name;
        std::string bytes;
        Kind kind;
        int status = 0;
        std::optional<std::size_t> body{};
    } rows[] = {
        {"a body of some length", "HTTP/1.1 503 Busy\r\nRetry-After: 2\r\ncontent-length: 12\r\n\r\n{", Kind::whole,
            503, 12},
        {"one that ends with the connection", "HTTP/1.0 200 OK\r\n\r\nbody", Kind::whole, 200},
        {"no words", "HTTP/1.1 404\r\n\r\n", Kind::whole, 404},
        {"not whole", "HTTP/1.1 200 OK\r\nA: b\r\n", Kind::incomplete},
        {"endless", std::string(HttpAnswerHead::longestHead, 'a'), Kind::notUnderstood},
        {"another protocol", "220 mail.example.org ready\r\n\r\n", Kind::notUnderstood},
        {"no status", "HTTP/1.1 OK fine\r\n\r\n", Kind::notUnderstood},
        {"no field", "HTTP/1.1 200 OK\r\nnonsense\r\n\r\n", Kind::notUnderstood},
        {"no length", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n", Kind::notUnderstood},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto reading = HttpAnswerReading::of(row.bytes);
        EXPECT_EQ(reading.kind, row.kind);
        EXPECT_EQ(reading.head.status, row.status);
        EXPECT_EQ(reading.head.bodyBytes, row.body);
    }
}

TEST(WebSocketUpgrade, isAcceptedOnlyAsItWasAskedFor)
{
    const std::string accepted = "HTTP/1.1 101 Switching\r\nupgrade: WebSocket\r\nConnection: keep-alive, Upgrade\r\n";
    const std::string proof = "Sec-WebSocket-Accept: abc=\r\n";
    const struct {
        std::string head;
        bool isAccepted;
    } rows[] = {
        {accepted + proof, true},
        {accepted, false},
        {accepted + "Sec-WebSocket-Accept: ABC=\r\n", false},
        {accepted + proof + "Sec-WebSocket-Extensions: permessage-deflate\r\n", false},
        {accepted + proof + "Sec-WebSocket-Protocol: chat\r\n", false},
        {"HTTP/1.1 200 OK\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n" + proof, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(websocket_upgrade::isAccepted(HttpAnswerReading::of(row.head + "\r\n").head, "abc="), row.isAccepted)
            << row.head;
}

} // namespace quorvell
