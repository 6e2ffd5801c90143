#include "LiveService/server/UpgradeRequest.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

const std::string start = "GET /v1/live/sessions HTTP/1.1\r\nHost: localhost\r\n";
const std::string key = "authorization: bearer secret\r\n";
const std::string upgrade = "Upgrade: WebSocket\r\nConnection: keep-alive, Upgrade\r\nSec-WebSocket-Key: abc\r\n"
                            "Sec-WebSocket-Version: 13\r\n";

} // namespace

TEST(UpgradeRequest, refusesWithTheRightStatus)
{
    struct Row {
        const char* name;
        std::string bytes;
        int status; ///< 0 accepted, -1 incomplete.
    };
    const Row rows[] = {
        {"everything", start + key + upgrade + "\r\n", 0},
        {"a query is not looked at", "GET /v1/live/sessions?a=b HTTP/1.1\r\n" + key + upgrade + "\r\n", 0},
        {"not whole yet", start + key + upgrade, -1},
        {"nothing", "", -1},
        {"no key", start + upgrade + "\r\n", 401},
        {"another key", start + "Authorization: Bearer secreT\r\n" + upgrade + "\r\n", 401},
        {"the key twice over", start + "Authorization: Bearer secretsecret\r\n" + upgrade + "\r\n", 401},
        {"half the key", start + "Authorization: Bearer sec\r\n" + upgrade + "\r\n", 401},
        {"an empty key", start + "Authorization: Bearer \r\n" + upgrade + "\r\n", 401},
        {"two keys", start + key + key + upgrade + "\r\n", 401},
        {"another scheme", start + "Authorization: Basic secret\r\n" + upgrade + "\r\n", 401},
        {"another path", "GET /v1/live/sessions/7 HTTP/1.1\r\n" + key + upgrade + "\r\n", 404},
        {"another method", "POST /v1/live/sessions HTTP/1.1\r\n" + key + upgrade + "\r\n", 405},
        {"no upgrade", start + key + "\r\n", 400},
        {"an old version",
            start + key
                + "Upgrade: websocket\r\nConnection: upgrade\r\nSec-WebSocket-Key: a\r\nSec-WebSocket-Version: "
                  "8\r\n\r\n",
            426},
        {"old HTTP", "GET /v1/live/sessions HTTP/1.0\r\n\r\n", 400},
        {"no HTTP", "hello\r\n\r\n", 400},
        {"a field without a colon", start + "nonsense\r\n\r\n", 400},
        {"a folded field", start + "A: b\r\n c\r\n\r\n", 400},
        {"endless", std::string(UpgradeRequest::longestHead, 'a'), 431},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto verdict = UpgradeRequest::judge(row.bytes, "secret");
        EXPECT_EQ(verdict.kind == UpgradeVerdict::Kind::accepted, row.status == 0);
        EXPECT_EQ(verdict.kind == UpgradeVerdict::Kind::incomplete, row.status == -1);
        EXPECT_EQ(verdict.status, std::max(row.status, 0));
    }
    EXPECT_EQ(UpgradeRequest::judge(start + "Authorization: Bearer\r\n" + upgrade + "\r\n", "").status, 401);
    const std::string response = UpgradeRequest::judge(start + upgrade + "\r\n", "secret").response();
    EXPECT_TRUE(response.starts_with("HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Bearer\r\n")) << response;
    EXPECT_NE(response.find("Content-Length: " + std::to_string(response.size() - response.find("\r\n\r\n") - 4)),
        response.npos);
}

} // namespace quorvell
