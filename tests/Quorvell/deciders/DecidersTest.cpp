// SPDX-License-Identifier: MIT
// Catches a selector whose faults the user would notice, and one that is asked on while it fails.
#include "Quorvell/deciders/Deciders.h"

#include "Screens.h"
#include "ScriptedHTTPServer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Server = test::ScriptedHTTPServer;

DecisionContext aSettingsPage()
{
    return {"show me how it looks",
        test::screenWith({test::element("AXButton", "Appearance"),
            test::element("AXTextField", "Card number", "4111 1111 1111 1111")})};
}

const std::string pressIt = dumpJson(test::stepReply(test::choiceAnswer("click", test::stepOptions),
    test::choiceAnswer("Appearance", {"Appearance", "Card number", "none"})));

/// A selector at `server` whose breaker goes by `time`.
Deciders decidersAt(const Server& server, const std::chrono::steady_clock::time_point& time)
{
    const DeciderChoice choice = DeciderChoice::of({.selectorHost = server.url()}, {"a-key", {}});
    return Deciders::create(choice, {}, [&time] { return time; });
}

TEST(Deciders, askTheSelectorAndTellNoSecret)
{
    Server server([](const std::string&) { return Server::answer(200, pressIt); });
    const std::chrono::steady_clock::time_point time{};
    const Deciders deciders = decidersAt(server, time);
    const auto decision = deciders.selector->select(aSettingsPage(), {});
    ASSERT_TRUE(decision && decision->action);
    EXPECT_EQ(decision->action->target, "Appearance");
    ASSERT_EQ(server.requests().size(), 1U);
    const std::string sent = server.requests()[0];
    EXPECT_EQ(sent.find("POST /v1/systemone HTTP/1.1\r\n"), 0U);
    EXPECT_NE(sent.find("Authorization: Bearer a-key\r\n"), std::string::npos);
    EXPECT_EQ(sent.find("4111"), std::string::npos);
    EXPECT_FALSE(deciders.dismissal.shouldDismiss("goodbye", {})) << "the answer is to another question";
    EXPECT_EQ(server.requests().size(), 2U);
    EXPECT_TRUE(Deciders::create({}, {}, {}).dismissal.shouldDismiss("goodbye", {})) << "without a key, by a table";
}

TEST(Deciders, leaveAFailingSelectorAloneForAWhileAndTheUserSeesNothing)
{
    const Server::Reply failures[] = {
        Server::answer(500, "no"),
        Server::answer(401, "no"),
        Server::answer(429, "no", "Retry-After: 1\r\n"),
        Server::answer(200, "{\"answers\": 7}"),
        Server::answer(200, std::string(2'000'000, ' ')),
        {"", Server::Reply::Then::hangsUp},
        {"", Server::Reply::Then::isSilent},
    };
    for (const Server::Reply& failure : failures) {
        std::atomic<bool> works = false;
        Server server([&](const std::string&) { return works ? Server::answer(200, pressIt) : failure; });
        std::chrono::steady_clock::time_point time{};
        Deciders deciders = decidersAt(server, time);
        deciders.selector->timeout = 300ms;
        for (int count = 0; count < 5; ++count)
            EXPECT_EQ(deciders.selector->select(aSettingsPage(), {}), std::nullopt);
        EXPECT_EQ(server.requests().size(), 3U) << "open after three";
        works = true;
        time += 59s;
        EXPECT_FALSE(deciders.dismissal.shouldDismiss("goodbye", {}));
        EXPECT_EQ(server.requests().size(), 3U) << "for whoever asks that service";
        time += 1s;
        EXPECT_TRUE(deciders.selector->select(aSettingsPage(), {}));
        EXPECT_TRUE(deciders.selector->select(aSettingsPage(), {}));
        EXPECT_EQ(server.requests().size(), 5U);
    }
}

} // namespace
} // namespace quorvell
