// SPDX-License-Identifier: MIT
// Runs the real program in a home of its own, as a newcomer would.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace quorvell::walk {

struct Outcome {
    int exitCode = -1;
    bool ended = false; ///< False when it had to be killed after the time limit.
    std::string output;
    std::string errors;

    /// The JSON objects of the output, a line each.
    std::vector<Json> events() const;
};

/// A home with nothing in it: no bus, no display, no key.
class ProgramHome {
public:
    explicit ProgramHome(QString timeZone = QStringLiteral("Europe/Berlin"));

    void set(const char* variable, const std::string& value)
    {
        m_variables.insert(QString::fromUtf8(variable), QString::fromStdString(value));
    }

    /// The arguments as they are typed in a shell; double quotes keep words together.
    Outcome run(const std::string& commandLine, const std::string& input = {}) const;
    /// As run, but through another program that starts ours (a private message bus).
    Outcome runThrough(
        const QString& launcher, const QStringList& launcherArguments, const std::string& input = {}) const;
    void start(QProcess& process, const std::string& commandLine) const;

    /// Makes this process the program; comes back only when that is impossible.
    void become(const std::vector<std::string>& arguments) const;

    std::string path(const char* relative) const;
    /// Writes a file of the home, with the folders above it, and gives its path.
    std::string write(const char* relative, const std::string& content) const;
    std::string notebookFolder() const { return path("data/Quorvell/Notebook"); }
    /// The texts of the note files.
    std::vector<std::string> noteFiles() const;

private:
    QTemporaryDir m_folder;
    QProcessEnvironment m_variables;
};

/// The program while it runs, and what it printed so far. It is ended with this object.
class RunningProgram {
public:
    RunningProgram(const ProgramHome& home, const std::string& commandLine);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    /// Waits for a text behind the one that was waited for last.
    bool shows(const std::string& text);
    const std::string& output() const { return m_output; }
    QProcess& process() { return m_process; }
    /// -1 when it does not end by itself.
    int exitCode();
    int exitCodeAfter(int signal);

private:
    QProcess m_process;
    std::string m_output;
    std::size_t m_seen = 0;
};

/// The JSON value of one header line of a note file, as text; empty when the line is missing.
std::string headerValue(const std::string& noteFile, const std::string& key);

} // namespace quorvell::walk
