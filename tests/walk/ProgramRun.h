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

    void set(const QString& variable, const QString& value) { m_variables.insert(variable, value); }

    Outcome run(const QStringList& arguments, const std::string& input = {}, int limitMilliseconds = 60000) const;
    /// The arguments as they are typed in a shell; double quotes keep words together.
    Outcome run(const char* commandLine, const std::string& input = {}) const;
    /// As run, but through another program that starts ours (a private message bus).
    Outcome runThrough(const QString& launcher, const QStringList& launcherArguments, const std::string& input = {},
        int limitMilliseconds = 60000) const;
    std::unique_ptr<QProcess> start(const QStringList& arguments) const;
    std::unique_ptr<QProcess> start(const char* commandLine) const;

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

/// The JSON value of one header line of a note file, as text; empty when the line is missing.
std::string headerValue(const std::string& noteFile, const std::string& key);

} // namespace quorvell::walk
