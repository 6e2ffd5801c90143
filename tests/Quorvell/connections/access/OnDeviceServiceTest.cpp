// SPDX-License-Identifier: MIT
// Catches a service on the device that does not start, dies, or does not learn its key.
#include "Quorvell/connections/access/OnDeviceService.h"

#include "QtApplication.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

OnDeviceService::Command shell(const char* script)
{
    return {"/bin/sh", {"-c", script}};
}

/// Looks once and waits for the answer.
LiveAccessSource::Found find(OnDeviceService& service)
{
    std::optional<LiveAccessSource::Found> answer;
    service.find([&](const LiveAccessSource::Found& found) { answer = found; });
    EXPECT_TRUE(runUntil([&] { return answer.has_value(); }));
    return answer.value_or(LiveAccessSource::Found{});
}

class OnDeviceServiceTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(OnDeviceServiceTest, aChildThatCannotServeIsToldInASentence)
{
    struct Row {
        const char* name;
        OnDeviceService::Command command;
        const char* sentence;
    };
    const Row rows[] = {
        {"not there", {"/nonexistent/quorvell", {}}, "could not be started: /nonexistent/quorvell"},
        {"ends with a word", shell("echo first >&2; echo 'no speech model' >&2; exit 1"),
            "ended unexpectedly. Ask again to start it anew. It said: no speech model"},
        {"says nothing", shell("cat >/dev/null"), "did not become ready"},
        {"says something else", shell("echo hello; cat >/dev/null"), "did not become ready"},
        {"is not ready", shell("echo '{\"ready\":false}'; cat >/dev/null"), "did not become ready"},
        {"never ends its line", shell("yes | tr -d '\\n'"), "did not become ready"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        OnDeviceService service(row.command, 500ms);
        const auto found = find(service);
        EXPECT_FALSE(found.access);
        EXPECT_NE(found.problem.find(row.sentence), std::string::npos) << found.problem;
    }
}

TEST_F(OnDeviceServiceTest, theChildLearnsItsKeyAndIsStartedAnewWhenItDied)
{
    // That it is ready says how it was started: the key came as one line of 64 hexadecimal digits, and not as an
    // argument, over a socket. It inherits no key of another service.
    setenv("SOME_API_KEY", "sk-12345678", 1);
    const char* script =
        "read key; test ${#key} = 64 && test $# = 0 && test -z \"$SOME_API_KEY\" && test -S /dev/stdin "
        "&& echo '{\"ready\":true}'; "
        "echo $$ >&2; while read more; do :; done";
    OnDeviceService service(shell(script));
    const auto first = find(service);
    ASSERT_TRUE(first.access) << first.problem;
    EXPECT_EQ(first.access->place, LiveAccess::Place::onDevice);
    EXPECT_EQ(find(service).access, first.access);

    const int connection = first.access->line->connect();
    EXPECT_GE(connection, 0);
    close(connection);

    OnDeviceService shortLived(shell("read key; echo '{\"ready\":true}'"));
    const auto before = find(shortLived);
    ASSERT_TRUE(before.access);
    LiveAccessSource::Found after = before;
    EXPECT_TRUE(runUntil([&] {
        after = find(shortLived);
        return after.access && after.access->key != before.access->key;
    }));
    EXPECT_LT(before.access->line->connect(), 0) << "nobody is there any more";
}

} // namespace
} // namespace quorvell
