// SPDX-License-Identifier: MIT
// Catches the wrong service, transport or way chosen, and refusals forgotten.
#include "Quorvell/connections/choice/LiveConnectionChoice.h"

#include "Quorvell/connections/access/LiveEndpointSettings.h"
#include "Quorvell/connections/choice/NetworkFingerprint.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveSetupOptions.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {

using namespace std::chrono_literals;
using Way = OpenAIRoute::Way;
using Ways = std::vector<Way>;
using Protocol = LiveProtocol;

TEST(LiveEndpointSettings, choosesTheServiceByHostAndKey)
{
    using B = LiveBackend;
    struct Row {
        const char* name;
        LiveEndpointSettings settings;
        const char* address; ///< Empty: the service on the device, or a problem.
        const char* problem;
        LiveBackend backend = LiveBackend::openAI;
    };
    const LiveKeys k{{B::openAI, "k"}};
    const LiveKeys otherK{{B::gemini, "k"}};
    const Row rows[] = {
        {"nothing said", {}, "", "", B::onDevice},
        {"a key alone", {{}, k}, "wss://api.openai.com/", ""},
        {"another host", {"live.example.org:8443", k}, "wss://live.example.org:8443/", ""},
        {"loopback in the clear", {"ws://127.0.0.1:9000", k}, "ws://127.0.0.1:9000/", ""},
        {"elsewhere in the clear", {"ws://live.example.org", k}, "", "without encryption (ws://) only this computer"},
        {"no address", {"not a host", k}, "", "is not an address of a live service"},
        {"a key copied with its line break", {{}, {{B::openAI, "k\n"}}}, "wss://api.openai.com/", ""},
        {"a key that would forge a header", {{}, {{B::openAI, "k\r\nX: y"}}}, "", "Set it again"},
        {"a host without a key", {"live.example.org"}, "", "needs a key. Set OPENAI_API_KEY"},
        {"both keys", {{}, {{B::openAI, "k"}, {B::gemini, "g"}}}, "wss://api.openai.com/", ""},
        {"the other key alone", {{}, otherK}, "wss://generativelanguage.googleapis.com/", "", B::gemini},
        {"asked for, with its key", {{}, {{B::openAI, "o"}, {B::gemini, "k"}}, B::gemini},
            "wss://generativelanguage.googleapis.com/", "", B::gemini},
        {"asked for, without its key", {{}, k, B::gemini}, "", "needs a key. Set GEMINI_API_KEY", B::gemini},
        {"kept on the device", {"live.example.org", k, B::onDevice}, "", "", B::onDevice},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto choice = row.settings.choose();
        EXPECT_EQ(choice.hosted ? choice.hosted->address().socketUrl("/") : "", row.address);
        EXPECT_EQ(choice.hosted ? choice.hosted->key : "k", "k");
        EXPECT_EQ(choice.backend, row.backend);
        EXPECT_EQ(choice.isOnDevice(), !choice.hosted && *row.problem == '\0');
        EXPECT_EQ(choice.problem.empty(), *row.problem == '\0') << choice.problem;
        EXPECT_NE(choice.problem.find(row.problem), std::string::npos) << choice.problem;
    }
}

TEST(LiveConnectionChoice, goesByBackendMediumTransportAndNetwork)
{
    using T = LiveTransport;
    struct Row {
        const char* name;
        LiveConnectionChoice::Settings settings;
        LiveMedium medium;
        bool isBlocked;
        Protocol protocol;
        Ways ways;
    };
    const Row rows[] = {
        {"hosted voice", {}, LiveMedium::voice, false, Protocol::openAI, {Way::peer, Way::socket}},
        {"hosted voice, media blocked here", {}, LiveMedium::voice, true, Protocol::openAI, {Way::socket}},
        {"only WebRTC", {LiveBackend::openAI, T::webRTC}, LiveMedium::voice, true, Protocol::openAI, {Way::peer}},
        {"only WebSocket", {LiveBackend::openAI, T::webSocket}, LiveMedium::voice, false, Protocol::openAI,
            {Way::socket}},
        {"on the device", {LiveBackend::onDevice}, LiveMedium::voice, false, Protocol::openAI, {Way::socket}},
        {"on the device, typed", {LiveBackend::onDevice}, LiveMedium::text, false, Protocol::openAI, {Way::socket}},
        {"on the device over WebRTC", {LiveBackend::onDevice, T::webRTC}, LiveMedium::voice, false, Protocol::openAI,
            {Way::peer}},
        {"hosted, typed", {}, LiveMedium::text, false, Protocol::responses, {Way::peer, Way::socket}},
        {"the other backend", {LiveBackend::gemini}, LiveMedium::text, false, Protocol::gemini, {Way::socket}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(LiveConnectionChoice::protocolFor(row.settings, row.medium), row.protocol);
        EXPECT_EQ(LiveConnectionChoice::waysFor(row.settings, row.isBlocked), row.ways);
    }
}

TEST(ServiceExperience, remembersWhatWasRefused)
{
    ServiceExperience experience;
    OpenAILiveSetupOptions first;
    first.serviceTier = first.reasoningSummary = "auto";
    OpenAILiveSetupOptions second = first;
    EXPECT_FALSE(experience.drop(first, RefusedSetting::none));
    EXPECT_TRUE(experience.drop(first, RefusedSetting::serviceTier));
    EXPECT_FALSE(experience.drop(first, RefusedSetting::serviceTier)) << "what is absent cannot be refused";
    experience.dropRefused(second);
    EXPECT_EQ(second, first);
    EXPECT_EQ(second.reasoningSummary, "auto");
}

TEST(BlockedNetworks, areTriedAgainAfterAWhile)
{
    const Instant noon{std::chrono::milliseconds(1'800'000'000'000)};
    BlockedNetworks blocked;
    blocked.noteBlocked("café", noon);
    EXPECT_TRUE(blocked.isBlocked("café", noon));
    EXPECT_TRUE(blocked.isBlocked("café", noon + 6h - 1ms));
    EXPECT_FALSE(blocked.isBlocked("café", noon + 6h));
    EXPECT_FALSE(blocked.isBlocked("café", noon - 1ms)) << "noted by a clock that was wrong";
    EXPECT_FALSE(blocked.isBlocked("home", noon));
    EXPECT_EQ(BlockedNetworks::fromJson(blocked.json()), blocked);
    for (int index = 0; index < 100; ++index)
        blocked.noteBlocked(std::to_string(index), noon);
    EXPECT_EQ(blocked.entries.size(), BlockedNetworks::most);
    EXPECT_TRUE(blocked.forget("99"));
    EXPECT_FALSE(blocked.forget("99"));
    for (const char* broken : {"7", "[]", R"({"a":"x","b":-1,"c":1e300})"})
        EXPECT_TRUE(BlockedNetworks::fromJson(parseJson(broken).value_or(Json())).entries.empty()) << broken;
}

TEST(NetworkFingerprint, comesFromTheWayOut)
{
    const std::string head = "Iface\tDestination\tGateway \tFlags\n";
    const std::string out = "eth0\t00000000\t0101A8C0\t0003\n";
    const std::string local = "eth0\t0001A8C0\t00000000\t0001\n";
    const std::string known = NetworkFingerprint::of(head + out + local);
    EXPECT_EQ(known.size(), 16U);
    EXPECT_EQ(NetworkFingerprint::of(head + local + out), known);
    EXPECT_NE(NetworkFingerprint::of(head + "wlan0\t00000000\t0101A8C0\t0003\n"), known);
    for (const std::string& none : {std::string(), head, head + local, std::string("\xFF\0\n", 3)})
        EXPECT_EQ(NetworkFingerprint::of(none), "");
}

} // namespace quorvell
