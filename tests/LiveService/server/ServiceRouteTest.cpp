// SPDX-License-Identifier: MIT
// Catches requests that reach a door of the service without its key.
#include "LiveService/server/ServiceRoute.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using Kind = ServiceRoute::Kind;

const std::string bearer = "authorization: bearer secret\r\n";
const std::string upgrade = "Upgrade: WebSocket\r\nConnection: keep-alive, Upgrade\r\nSec-WebSocket-Key: abc\r\n"
                            "Sec-WebSocket-Version: 13\r\n";
const std::string gemini = "/ws/google.ai.generativelanguage.v1beta.GenerativeService.BidiGenerateContent";

} // namespace

TEST(ServiceRoute, letsInOnlyThoseWhoShowTheKey)
{
    const auto get = [](const std::string& path, const std::string& fields) {
        return "GET " + path + " HTTP/1.1\r\n" + fields + "\r\n";
    };
    const std::string old = "Upgrade: websocket\r\nConnection: upgrade\r\nSec-WebSocket-Key: a\r\n"
                            "Sec-WebSocket-Version: 8\r\n";
    const struct Row {
        const char* name;
        std::string bytes;
        std::optional<Kind> kind;
        int status = 200;
    } rows[] = {
        {"a WebSocket", get("/v1/live/sessions", bearer + upgrade), Kind::openAISocket},
        {"a query is not looked at", get("/v1/live/sessions?a=b", bearer + upgrade), Kind::openAISocket},
        {"an offer", "POST /v1/live/sessions HTTP/1.1\r\n" + bearer + "\r\n", Kind::openAICall},
        {"a typed turn", "POST /v1/responses HTTP/1.1\r\n" + bearer + "\r\n", Kind::response},
        {"Gemini", get(gemini, "X-Goog-Api-Key: secret\r\n" + upgrade), Kind::geminiSocket},
        {"Gemini with the other kind of key", get(gemini, bearer + upgrade), {}, 401},
        {"no key", get("/v1/live/sessions", upgrade), {}, 401},
        {"another key", get("/v1/live/sessions", "Authorization: Bearer secreT\r\n" + upgrade), {}, 401},
        {"two keys", get("/v1/live/sessions", bearer + bearer + upgrade), {}, 401},
        {"another scheme", get("/v1/live/sessions", "Authorization: Basic secret\r\n" + upgrade), {}, 401},
        {"a key without an upgrade", get("/v1/live/sessions", bearer), {}, 400},
        {"an old version", get("/v1/live/sessions", bearer + old), {}, 426},
        {"another path", get("/v1/live/sessions/7", bearer + upgrade), {}, 404},
        {"another method", "PUT /v1/live/sessions HTTP/1.1\r\n" + bearer + "\r\n", {}, 405},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto route = ServiceRoute::of(HttpReading::of(row.bytes).request, "secret");
        EXPECT_EQ(route.kind, row.kind);
        EXPECT_EQ(route.refusal.status, row.status);
        EXPECT_EQ(route.refusal.allow, row.status == 405 ? "GET, POST" : "");
    }
    EXPECT_EQ(ServiceRoute::of(HttpReading::of(get("/v1/live/sessions", "Authorization: Bearer\r\n")).request, "")
                  .refusal.status,
        401);
}

} // namespace quorvell
