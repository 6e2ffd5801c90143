#include "Quorvell/app/EventLogFile.h"

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvell {

namespace {

constexpr mode_t onlyTheUser = 0600;

std::string lineOf(Instant at, std::string_view name, const Json& fields)
{
    Json line = {{"at", isoText(at)}, {"event", std::string(name)}};
    Json whole = line;
    if (fields.is_object())
        whole.update(fields);
    std::string text = dumpJson(whole);
    if (text.size() > EventLogFile::longestLine)
        text = dumpJson(line);
    return text + "\n";
}

} // namespace

EventLogFile::EventLogFile(std::string folder, const Scheduler& clock)
    : m_folder(std::move(folder))
    , m_clock(clock)
{
    std::error_code failure;
    std::filesystem::create_directories(m_folder, failure);
    std::filesystem::permissions(m_folder, std::filesystem::perms::owner_all, failure);
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
    const std::string line = lineOf(m_clock.wallClock(), name, fields);
    if (write(m_descriptor, line.data(), line.size()) < 0) {
        close(m_descriptor);
        m_descriptor = -1;
    }
}

std::string EventLogFile::path(int age) const
{
    return m_folder + "/events" + (age > 0 ? "." + std::to_string(age) : "") + ".jsonl";
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
