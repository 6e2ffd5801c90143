// SPDX-License-Identifier: MIT
// Catches an event log that grows without bound, stops the program, or is readable by others.
#include "Quorvell/records/EventLogFile.h"

#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace quorvell {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> linesOf(const std::string& path)
{
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

TEST(EventLogFile, keepsEventsAsLinesThatOnlyTheUserReads)
{
    const test::TemporaryFolder folder;
    const VirtualScheduler clock;
    const std::string path = folder.path() + "/state/events.jsonl";
    {
        EventLogFile log(folder.path() + "/state", clock, "a1b2c3", Secrets{{"sk-12345678"}});
        log.record("session_started", {{"id", "sess\n1"}});
        log.record("server_error", {{"code", "sk-12345678"}});
        log.record("too_long", {{"detail", std::string(5000, 'x')}});
    }
    EventLogFile(folder.path() + "/state", clock, "a1b2c3").record("again", Json::object());
    EXPECT_EQ(linesOf(path),
        (std::vector<std::string>{
            R"({"at":"2026-11-21T10:00:00.000Z","event":"session_started","run":"a1b2c3","id":"sess\n1"})",
            R"x({"at":"2026-11-21T10:00:00.000Z","event":"server_error","run":"a1b2c3","code":"(key)"})x",
            R"({"at":"2026-11-21T10:00:00.000Z","event":"too_long","run":"a1b2c3"})",
            R"({"at":"2026-11-21T10:00:00.000Z","event":"again","run":"a1b2c3"})"}));
    struct stat status { };
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST(EventLogFile, aFullFileMovesAsideAndTheOldestGoes)
{
    const test::TemporaryFolder folder;
    const VirtualScheduler clock;
    EventLogFile log(folder.path(), clock, "a1b2c3");
    const Json fields = {{"detail", std::string(4000, 'x')}};
    constexpr int enoughForSixFiles = 6 * 1024 * 1024 / 4000;
    for (int count = 0; count < enoughForSixFiles; ++count)
        log.record("event", fields);
    int files = 0;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        ++files;
        EXPECT_LT(entry.file_size(), EventLogFile::fullSize + EventLogFile::longestLine);
    }
    EXPECT_EQ(files, 1 + EventLogFile::keptFiles);
    const std::string all = EventLogFile::readAll(folder.path());
    EXPECT_GT(all.size(), EventLogFile::keptFiles * static_cast<std::size_t>(EventLogFile::fullSize));
    EXPECT_EQ(all.front(), '{');
}

TEST(EventLogFile, worksOnWhereNothingCanBeWritten)
{
    const VirtualScheduler clock;
    EventLogFile("/proc/nonexistent", clock, "a1b2c3").record("event", Json::object());
    // Nobody reads the pipe, so that who opens it to write waits.
    const test::TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "events.jsonl").c_str(), 0600), 0);
    EventLogFile(folder.path(), clock, "a1b2c3").record("event", Json::object());
    EXPECT_EQ(EventLogFile::readAll(folder.path()), "");
}

} // namespace
} // namespace quorvell
