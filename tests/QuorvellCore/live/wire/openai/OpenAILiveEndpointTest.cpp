// SPDX-License-Identifier: MIT
// Catches sessions opened at the wrong address, and refusals misread.
#include "QuorvellCore/live/wire/openai/OpenAILiveEndpoint.h"

#include "QuorvellCore/text/Json.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

using Header = std::pair<std::string, std::string>;

TEST(OpenAILiveEndpoint, readsAddresses)
{
    const std::pair<const char*, const char*> rows[] = {
        {"example.com", "wss://example.com/v1/live/sessions"},
        {" https://Example.com/ ", "wss://example.com/v1/live/sessions"},
        {"wss://example.com:8443", "wss://example.com:8443/v1/live/sessions"},
        {"ws://127.0.0.1:4711", "ws://127.0.0.1:4711/v1/live/sessions"},
        {"ws://127.255.1.0", "ws://127.255.1.0/v1/live/sessions"},
        {"http://localhost", "ws://localhost/v1/live/sessions"},
        {"ws://[::1]:80", "ws://[::1]:80/v1/live/sessions"},
    };
    for (const auto& [address, socket] : rows) {
        const auto endpoint = OpenAILiveEndpoint::create(address);
        ASSERT_TRUE(endpoint) << address;
        EXPECT_EQ(endpoint->request("k").url, socket);
    }
}

TEST(OpenAILiveEndpoint, refusesAddresses)
{
    for (const char* address :
        {"", "https://", "ftp://example.com", "http://example.com", "ws://10.0.0.1", "ws://127.evil.example",
            "ws://127.999.1.1", "ws://127.1", "ws://127.0.0.1.", "ws://127.0.0.1.1", "ws://127.0.0.01", "ws://127..0.1",
            "ws://127.0.0.256", "ws://127.0.0.1.example.com", "ws://localhost.example.com",
            "ws://localhost@example.com", "https://user@example.com", "example.com/path", "example.com:0",
            "example.com:65536", "example.com:", "exa mple.com", "example.com\nHost: other", "[::1", "wss://[::1]x:1"})
        EXPECT_FALSE(OpenAILiveEndpoint::create(address)) << address;
}

TEST(OpenAILiveEndpoint, requestsCarryTheKeyAndTheSession)
{
    const OpenAILiveEndpoint endpoint;
    const WebRequest socket = endpoint.request("KEY");
    EXPECT_EQ(socket.url, "wss://api.openai.com/v1/live/sessions");
    EXPECT_EQ(socket.timeout.count(), 60);
    EXPECT_EQ(socket.headers.front(), Header("Authorization", "Bearer KEY"));

    const WebRequest request = endpoint.webRTCRequest("KEY", {}, "v=0\r\n");
    EXPECT_EQ(request.method, WebRequest::Method::post);
    EXPECT_EQ(request.url, "https://api.openai.com/v1/live/sessions");
    EXPECT_EQ(request.timeout.count(), 20);
    EXPECT_EQ(request.headers.back(), Header("Content-Type", "application/json"));
    const Json body = parseJson(request.body).value_or(Json());
    EXPECT_EQ(dumpJson(body["transport"]), R"({"type":"webrtc","sdp":"v=0\r\n"})");
    EXPECT_FALSE(body["session"]["audio"].contains("format"));
}

TEST(OpenAILiveEndpoint, readsWebRTCAnswers)
{
    using Answer = OpenAILiveEndpoint::WebRTCAnswer;
    const std::pair<const char*, std::optional<Answer>> rows[] = {
        {R"({"transport":{"type":"webrtc","sdp":"v=0"},"session":{"id":"s"}})", Answer{"v=0", "s"}},
        {R"({"transport":{"sdp":"v=0"},"session":{}})", Answer{"v=0", ""}},
        {R"({"transport":{"sdp":"v=0"}})", std::nullopt},
        {R"({"transport":{"sdp":7},"session":{}})", std::nullopt},
        {R"({"session":{"id":"s"}})", std::nullopt},
        {R"({"transport":{"sdp":"v=0\nno line"},"session":{}})", std::nullopt},
        {"v=0", std::nullopt},
    };
    for (const auto& [body, answer] : rows)
        EXPECT_TRUE(OpenAILiveEndpoint::webRTCAnswer(body) == answer) << body;
}

TEST(OpenAILiveEndpoint, namesTheRefusedSetting)
{
    const std::tuple<int, std::string, RefusedSetting> rows[] = {
        {400, "Unknown SERVICE_TIER 'priority', summary 'auto'", RefusedSetting::serviceTier},
        {400, R"({"error":{"param":"reasoning.summary"}})", RefusedSetting::summary},
        {403, "Your organization must be Verified to use this", RefusedSetting::summary},
        {403, "\xff\xfe verif", RefusedSetting::summary},
        {403, "forbidden", RefusedSetting::none},
        {401, "service_tier", RefusedSetting::none},
        {500, "summary", RefusedSetting::none},
        {400, "", RefusedSetting::none},
    };
    for (const auto& [status, body, setting] : rows)
        EXPECT_EQ(OpenAILiveEndpoint::refusedSetting(status, body), setting) << status << body;
}

} // namespace quorvell
