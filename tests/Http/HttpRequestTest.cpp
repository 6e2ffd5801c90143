// SPDX-License-Identifier: MIT
// Catches heads of requests that are let in or refused with the wrong status; secrets compared only in part.
#include "Http/HttpRequest.h"

#include "Http/HttpResponse.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(HttpRequest, readsHeadsAndRefusesWithTheRightStatus)
{
    const std::string post = "POST /a?b=c HTTP/1.1\r\n";
    const struct Row {
        const char* name;
        std::string bytes;
        int status; ///< 0 whole, -1 incomplete.
        std::size_t body = 0;
    } rows[] = {
        {"no body", "GET / HTTP/1.1\r\nHost: x\r\n\r\n", 0},
        {"nothing", "", -1},
        {"not whole yet", "GET / HTTP/1.1\r\nHost: x\r\n", -1},
        {"a body", post + "content-LENGTH:  12 \r\n\r\n{", 0, 12},
        {"the longest body", post + "Content-Length: 16777216\r\n\r\n", 0, 16777216},
        {"a longer one", post + "Content-Length: 16777217\r\n\r\n", 413},
        {"a length beyond counting", post + "Content-Length: 99999999999999999999999\r\n\r\n", 413},
        {"two lengths", post + "Content-Length: 1\r\nContent-Length: 2\r\n\r\n", 400},
        {"a signed length", post + "Content-Length: -1\r\n\r\n", 400},
        {"in pieces", post + "Transfer-Encoding: chunked\r\n\r\n", 411},
        {"old HTTP", "GET / HTTP/1.0\r\n\r\n", 400},
        {"no HTTP", "hello\r\n\r\n", 400},
        {"no method", " / HTTP/1.1\r\n\r\n", 400},
        {"a field without a colon", post + "nonsense\r\n\r\n", 400},
        {"a folded field", post + "A: b\r\n c\r\n\r\n", 400},
        {"endless", std::string(HttpRequest::longestHead, 'a'), 431},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto reading = HttpReading::of(row.bytes);
        EXPECT_EQ(reading.kind == HttpReading::Kind::whole, row.status == 0);
        EXPECT_EQ(reading.kind == HttpReading::Kind::incomplete, row.status == -1);
        EXPECT_EQ(reading.status, std::max(row.status, 0));
        EXPECT_EQ(reading.request.bodyBytes, row.status == 0 ? row.body : reading.request.bodyBytes);
    }
    const auto request = HttpReading::of(post + "Expect: 100-Continue\r\nA: 1\r\na: 2\r\n\r\nbody").request;
    EXPECT_EQ(request.path(), "/a");
    EXPECT_EQ(request.field("a"), "1, 2");
    EXPECT_TRUE(request.expectsContinue());
    EXPECT_EQ(request.headBytes, post.size() + 36);
}

TEST(HttpRequest, comparesWholeSecretsOnly)
{
    for (const char* given : {"secreT", "secretsecret", "sec", "", "secret "})
        EXPECT_FALSE(isSameSecret(given, "secret")) << given;
    EXPECT_FALSE(isSameSecret("", ""));
    EXPECT_TRUE(isSameSecret("secret", "secret"));
    const std::string bytes = HttpResponse::refusal(401, "No \"way\".").bytes();
    EXPECT_TRUE(bytes.starts_with("HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Bearer\r\n")) << bytes;
    const std::string body = R"({"error":{"message":"No \"way\".","type":"invalid_request_error","code":"401"}})"
                             "\n";
    EXPECT_TRUE(
        bytes.ends_with("Content-Length: " + std::to_string(body.size()) + "\r\nConnection: close\r\n\r\n" + body))
        << bytes;
}

} // namespace quorvell
