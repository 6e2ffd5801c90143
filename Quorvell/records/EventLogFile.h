// SPDX-License-Identifier: MIT
// The event log as lines of JSON in the state folder: {"at", "event", "run", fields...}.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "QuorvellCore/text/Secrets.h"

#include <cstdint>
#include <string>

namespace quorvell {

/// A full file moves aside, and the oldest goes. Where nothing can be written the program works on without a log.
class EventLogFile : public EventLog {
public:
    static constexpr std::int64_t fullSize = 1024 * 1024; ///< Bytes, from which on a new file begins.
    static constexpr int keptFiles = 3; ///< Full ones.
    static constexpr std::size_t longestLine = 4096; ///< Bytes; a longer event keeps its name only.

    /// `clock` is borrowed. `run` names this run of the program. `secrets` are in no line, whoever repeats them.
    EventLogFile(std::string folder, const Scheduler& clock, std::string run, Secrets secrets = {});

    void record(std::string_view name, const Json& fields) override;

    /// What the log of `folder` holds, oldest first; at most some megabytes.
    static std::string readAll(const std::string& folder);

private:
    std::string path(int age) const { return pathIn(m_folder, age); }
    static std::string pathIn(const std::string& folder, int age);
    void rotate() const;

    std::string m_folder;
    Secrets m_secrets;
    std::string m_run; ///< Tells the lines of several programs apart.
    const Scheduler& m_clock;
};

} // namespace quorvell
