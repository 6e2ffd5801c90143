// SPDX-License-Identifier: MIT
#include "Quorvell/records/EventLogFile.h"

#include "Quorvell/settings/PrivateFile.h"

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

namespace quorvell {

namespace {

constexpr mode_t onlyTheUser = 0600;

std::string lineOf(Instant at, std::string_view name, const std::string& run, const Json& fields)
{
    Json line = {{"at", isoText(at)}, {"event", std::string(name)}, {"run", run}};
    Json whole = line;
    if (fields.is_object())
        whole.update(fields);
    std::string text = dumpJson(whole);
    if (text.size() > EventLogFile::longestLine)
        text = dumpJson(line);
    return text + "\n";
}

} // namespace

EventLogFile::EventLogFile(std::string folder, const Scheduler& clock, std::string run)
    : m_folder(std::move(folder))
    , m_run(std::move(run))
    , m_clock(clock)
{
    PrivateFile::prepareFolder(m_folder);
    openFile();
}

EventLogFile::~EventLogFile()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void EventLogFile::record(std::string_view name, const Json& fields)
{
    if (m_descriptor < 0)
        return;
    struct stat status { };
    if (fstat(m_descriptor, &status) == 0 && status.st_size >= fullSize)
        rotate();
    // In one write, so that the lines of two programs never mix.
    const std::string line = lineOf(m_clock.wallClock(), name, m_run, fields);
    if (write(m_descriptor, line.data(), line.size()) < 0) {
        close(m_descriptor);
        m_descriptor = -1;
    }
}

std::string EventLogFile::readAll(const std::string& folder)
{
    std::string text;
    for (int age = keptFiles; age >= 0; --age)
        text += PrivateFile::readEnd(pathIn(folder, age), fullSize + longestLine);
    return text;
}

std::string EventLogFile::pathIn(const std::string& folder, int age)
{
    return folder + "/events" + (age > 0 ? "." + std::to_string(age) : "") + ".jsonl";
}

void EventLogFile::openFile()
{
    m_descriptor = open(path(0).c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, onlyTheUser);
}

void EventLogFile::rotate()
{
    close(m_descriptor);
    for (int age = keptFiles; age > 0; --age)
        std::rename(path(age - 1).c_str(), path(age).c_str());
    openFile();
}

} // namespace quorvell
