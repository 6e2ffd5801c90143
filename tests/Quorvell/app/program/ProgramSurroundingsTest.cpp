// SPDX-License-Identifier: MIT
// Catches surroundings misread: time zone, locale, folders, timers and lines of input; and output that is lost unseen.
#include "QtApplication.h"
#include "Quorvell/app/program/EndDeadline.h"
#include "Quorvell/app/program/GivenFile.h"
#include "Quorvell/app/program/StandardStreams.h"
#include "Quorvell/app/terminal/PipedLines.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/settings/KeyVariables.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <thread>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

/// The environment of this process with a few variables of its own, put back at the end.
class Variables {
public:
    explicit Variables(const std::map<std::string, std::string>& values)
    {
        for (const char* name : names) {
            if (const char* old = std::getenv(name))
                m_old[name] = old;
            unsetenv(name);
        }
        for (const auto& [name, value] : values)
            setenv(name.c_str(), value.c_str(), 1);
    }
    ~Variables()
    {
        for (const char* name : names)
            unsetenv(name);
        for (const auto& [name, value] : m_old)
            setenv(name.c_str(), value.c_str(), 1);
    }

private:
    static constexpr const char* names[] = {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME",
        "XDG_RUNTIME_DIR", "TZ", "LC_ALL", "LC_TIME", "LANG", "OPENAI_API_KEY", "GEMINI_API_KEY", "ANTHROPIC_API_KEY",
        "OPENROUTER_API_KEY", "MARLUNE_API_KEY", "QUORVELL_LIVE_HOST", "DBUS_SESSION_BUS_ADDRESS", "https_proxy",
        "HTTPS_PROXY", "all_proxy", "ALL_PROXY", "no_proxy", "NO_PROXY"};
    std::map<std::string, std::string> m_old;
};

/// A program whose standard output is what `arrange` makes of it; its exit code tells whether that was noticed.
[[noreturn]] void printWith(void (*arrange)())
{
    arrange();
    StandardStreams::prepare();
    std::cout << "a line\n";
    std::exit(StandardStreams::finish(0));
}

TEST(StandardStreams, tellWhatCouldNotBePrinted)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a program of its own
    struct Row {
        const char* name;
        void (*arrange)();
        int code;
        const char* says;
    };
    const Row rows[] = {
        {"all is well", [] { ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO); }, 0, ""},
        {"a full disk", [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); }, 1, "No space left on device"},
        {"closed", [] { ::close(STDOUT_FILENO); }, 1, "could be written"},
        {"an input that is closed",
            [] {
                ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
                ::close(STDIN_FILENO);
            },
            0, ""},
        {"a limit for files",
            [] {
                constexpr rlim_t most = 10'000;
                const rlimit limit{most, most};
                ::dup2(::fileno(std::tmpfile()), STDOUT_FILENO);
                ::lseek(STDOUT_FILENO, most, SEEK_SET);
                ::setrlimit(RLIMIT_FSIZE, &limit);
            },
            1, "File too large"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EXIT(printWith(row.arrange), testing::ExitedWithCode(row.code), row.says);
    }
}

TEST(KeyVariables, areNoLongerThereOnceTheyHaveBeenRead)
{
    const Variables variables(
        {{"OPENAI_API_KEY", "sk-12345678"}, {"MARLUNE_API_KEY", "mk-12345678"}, {"HOME", "/home/me"}});
    setenv("COPY_OF_IT", "sk-12345678", 1);
    const char* const kept = std::getenv("OPENAI_API_KEY");
    const ProgramEnvironment environment = ProgramEnvironment::read("quorvell");
    clearKeyVariables(environment);
    EXPECT_EQ(secretsOf(environment), (Secrets{{"sk-12345678", "mk-12345678"}}));
    EXPECT_EQ(std::getenv("OPENAI_API_KEY"), nullptr);
    EXPECT_EQ(std::getenv("MARLUNE_API_KEY"), nullptr);
    EXPECT_EQ(std::getenv("COPY_OF_IT"), nullptr);
    EXPECT_STREQ(kept, "") << "nor where it stood";
    EXPECT_STREQ(std::getenv("HOME"), "/home/me");
}

TEST(ProgramEnvironment, readsTimeZoneAndLocale)
{
    struct Row {
        std::map<std::string, std::string> variables;
        const char* zone;
        const char* locale;
    };
    const Row rows[] = {
        {{{"TZ", "Europe/Berlin"}, {"LANG", "de_DE.UTF-8"}}, "Europe/Berlin", "de_DE"},
        {{{"TZ", ":America/New_York"}, {"LANG", "C"}, {"LC_TIME", "en_GB"}}, "America/New_York", "en_GB"},
        {{{"TZ", "/usr/share/zoneinfo/Asia/Tokyo"}, {"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE"}}, "Asia/Tokyo", "en_US"},
        {{{"TZ", "UTC"}, {"LC_ALL", "sr_RS@latin"}}, "UTC", "sr_RS"},
        {{{"TZ", "IST-5:30"}}, "GMT+05:30", "en_US"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.zone);
        const Variables variables(row.variables);
        tzset();
        const auto environment = ProgramEnvironment::read("quorvell");
        EXPECT_EQ(environment.timeZone, row.zone);
        EXPECT_EQ(environment.locale, row.locale);
    }
    tzset();
}

TEST(ProgramEnvironment, findsItsFoldersKeysAndWays)
{
    const Variables variables(
        {{"HOME", "/home/asha"}, {"XDG_DATA_HOME", "relative"}, {"XDG_CONFIG_HOME", "/cfg"}, {"OPENAI_API_KEY", ""},
            {"GEMINI_API_KEY", "g"}, {"ANTHROPIC_API_KEY", "a"}, {"MARLUNE_API_KEY", "m"}, {"https_proxy", ""},
            {"ALL_PROXY", "http://way:3128"}, {"no_proxy", "here"}, {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/x"}});
    const auto environment = ProgramEnvironment::read("quorvell");
    EXPECT_EQ(environment.notebookFolder, "/home/asha/.local/share/Quorvell/Notebook");
    EXPECT_EQ(environment.configFolder, "/cfg/Quorvell");
    EXPECT_EQ(environment.stateFolder, "/home/asha/.local/state/Quorvell");
    EXPECT_EQ(environment.keys, (LiveKeys{{LiveBackend::gemini, "g"}}));
    EXPECT_EQ(environment.deciderKeys, (DeciderKeys{"m", {{PlannerService::anthropic, "a"}}}));
    EXPECT_EQ(environment.webProxy, (WebProxy{"http://way:3128", "here"}));
    EXPECT_TRUE(environment.hasSessionBus);
    EXPECT_EQ(environment.programPath.front(), '/');
    const Variables relative(std::map<std::string, std::string>{{"HOME", "rel"}});
    EXPECT_EQ(ProgramEnvironment::read("quorvell").stateFolder.front(), '/');
}

TEST(QtScheduler, runsTimersUntilTheyAreCancelled)
{
    needQtApplication();
    int once = 0;
    int often = 0;
    int never = 0;
    std::vector<int> posted;
    {
        QtScheduler scheduler;
        const SessionTime start = scheduler.now();
        const TimerHandle single = scheduler.after(5ms, [&] { ++once; });
        TimerHandle repeated;
        repeated = scheduler.every(2ms, [&] {
            if (++often == 3)
                repeated.cancel(); // From inside its own action.
        });
        scheduler.after(1ms, [&] { ++never; }).cancel();
        scheduler.post([&] { posted.push_back(1); });
        scheduler.post([&] { posted.push_back(2); });
        EXPECT_TRUE(posted.empty());
        EXPECT_TRUE(runUntil([&] { return once == 1 && often == 3; }));
        EXPECT_GE(scheduler.now() - start, 5ms);
        const TimerHandle outlived = scheduler.after(1ms, [&] { ++never; });
        scheduler.post([&] { ++never; });
    }
    runUntil([] { return false; }, 20ms);
    EXPECT_EQ(posted, (std::vector<int>{1, 2}));
    EXPECT_EQ(once, 1);
    EXPECT_EQ(often, 3);
    EXPECT_EQ(never, 0);
}

TEST(PipedLines, givesOneLineAtATimeAndLeavesOutWhatIsTooLong)
{
    needQtApplication();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    int complaints = 0;
    PipedLines lines(ends[0], [&](const std::string&) { ++complaints; });
    std::vector<std::string> taken;
    bool isOver = false;
    std::function<void()> ask = [&] {
        lines.readNext([&](const std::optional<TypedMessage>& message) {
            isOver = !message;
            if (!message)
                return;
            taken.push_back(message->text());
            ask();
        });
    };
    ask();
    const auto send = [&](const std::string& text) {
        for (std::size_t start = 0; start < text.size(); start += 4096) {
            const std::string piece = text.substr(start, 4096);
            ASSERT_EQ(write(ends[1], piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
            runUntil([] { return false; }, 1ms);
        }
    };
    send("one\n\ntw");
    send("o\n" + std::string(PipedLines::longestLine + 5000, 'x') + "\nbad \xFF byte\nlast, without an end");
    close(ends[1]);
    EXPECT_TRUE(runUntil([&] { return isOver; }));
    EXPECT_EQ(taken, (std::vector<std::string>{"one", "", "two", "bad \xEF\xBF\xBD byte", "last, without an end"}));
    EXPECT_EQ(complaints, 1);
    close(ends[0]);
}

TEST(EndDeadline, endsWhatDoesNotEnd)
{
    const auto wait = [] {
        EndDeadline::begin(1s);
        EndDeadline::cancel();
        EndDeadline::begin(1s);
        std::jthread([] { pause(); }).join();
    };
    EXPECT_EXIT(wait(), testing::ExitedWithCode(1), "what was changed last may not be saved");
}

TEST(GivenFile, isAFileOrAPipeThatSomebodyFills)
{
    const QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("key")).toStdString();
    const std::string pipe = folder.filePath(QStringLiteral("pipe")).toStdString();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(GivenFile::read(file, 100));
    std::ofstream(file) << "a key\nmore";
    EXPECT_EQ(GivenFile::read(file, 100), "a key\nmore");
    EXPECT_EQ(GivenFile::read(file, 4), "a ke");
    for (const std::string& never : {pipe, folder.path().toStdString(), std::string("/dev/zero")})
        EXPECT_FALSE(GivenFile::read(never, 100, 20ms)) << never;
    std::thread writer([&] { std::ofstream(pipe) << "from a pipe"; });
    EXPECT_EQ(GivenFile::read(pipe, 100), "from a pipe");
    writer.join();
}

} // namespace
} // namespace quorvell
