// SPDX-License-Identifier: MIT
#include "Quorvell/records/EventLogFile.h"

#include "Quorvell/settings/PrivateFile.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <utility>

namespace quorvell {

namespace {

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

EventLogFile::EventLogFile(std::string folder, const Scheduler& clock, std::string run, Secrets secrets)
    : m_folder(std::move(folder))
    , m_secrets(std::move(secrets))
    , m_run(std::move(run))
    , m_clock(clock)
{
    PrivateFile::prepareFolder(m_folder);
}

void EventLogFile::record(std::string_view name, const Json& fields)
{
    // Opened for each event: another program may have moved a full file aside meanwhile.
    const auto size = PrivateFile::append(path(0), m_secrets.blanked(lineOf(m_clock.wallClock(), name, m_run, fields)));
    if (size && *size >= fullSize)
        rotate();
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

void EventLogFile::rotate() const
{
    for (int age = keptFiles; age > 0; --age)
        std::rename(path(age - 1).c_str(), path(age).c_str());
}

} // namespace quorvell
