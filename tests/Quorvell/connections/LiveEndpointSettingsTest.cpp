#include "Quorvell/connections/LiveEndpointSettings.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(LiveEndpointSettings, choosesTheServiceByHostAndKey)
{
    struct Row {
        const char* name;
        std::optional<std::string> host;
        std::optional<std::string> key;
        const char* url; ///< Empty: the service on the device, or a problem.
        const char* problem;
    };
    const Row rows[] = {
        {"nothing said", {}, {}, "", ""},
        {"a key alone", {}, "k", "wss://api.openai.com/v1/live/sessions", ""},
        {"another host", "live.example.org:8443", "k", "wss://live.example.org:8443/v1/live/sessions", ""},
        {"loopback in the clear", "ws://127.0.0.1:9000", "k", "ws://127.0.0.1:9000/v1/live/sessions", ""},
        {"elsewhere in the clear", "ws://live.example.org", "k", "", "without encryption (ws://) only this computer"},
        {"no address", "not a host", "k", "", "is not an address of a live service"},
        {"a key copied with its line break", {}, "k\n", "wss://api.openai.com/v1/live/sessions", ""},
        {"a key that would forge a header", {}, "k\r\nX: y", "", "Set it again"},
        {"a host without a key", "live.example.org", {}, "", "needs a key. Set OPENAI_API_KEY"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto choice = LiveEndpointSettings{row.host, row.key}.choose();
        EXPECT_EQ(choice.hosted ? choice.hosted->endpoint.request("k").url : "", row.url);
        EXPECT_EQ(choice.hosted ? choice.hosted->key : "k", "k");
        EXPECT_EQ(choice.isOnDevice, !row.host && !row.key);
        EXPECT_EQ(choice.problem.empty(), std::string_view(row.problem).empty()) << choice.problem;
        EXPECT_NE(choice.problem.find(row.problem), std::string::npos) << choice.problem;
    }
}

} // namespace
} // namespace quorvell
