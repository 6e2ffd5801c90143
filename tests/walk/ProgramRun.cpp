// SPDX-License-Identifier: MIT
#include "ProgramRun.h"

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace quorvell::walk {

std::vector<Json> Outcome::events() const
{
    std::vector<Json> events;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (auto event = parseJson(line); event && event->is_object())
            events.push_back(std::move(*event));
    }
    return events;
}

ProgramHome::ProgramHome(QString timeZone)
    : m_variables(QProcessEnvironment::systemEnvironment())
{
    for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "WAYLAND_DISPLAY", "OPENAI_API_KEY",
             "GEMINI_API_KEY", "ANTHROPIC_API_KEY", "OPENROUTER_API_KEY", "MARLUNE_API_KEY", "QUORVELL_LIVE_HOST",
             "PULSE_SERVER", "XDG_RUNTIME_DIR", "LC_ALL", "LC_TIME"})
        m_variables.remove(QString::fromUtf8(name));
    m_variables.insert(QStringLiteral("HOME"), m_folder.path());
    m_variables.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.filePath(QStringLiteral("data")));
    m_variables.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
    m_variables.insert(QStringLiteral("XDG_STATE_HOME"), m_folder.filePath(QStringLiteral("state")));
    m_variables.insert(QStringLiteral("XDG_CACHE_HOME"), m_folder.filePath(QStringLiteral("cache")));
    m_variables.insert(QStringLiteral("LANG"), QStringLiteral("en_US.UTF-8"));
    m_variables.insert(QStringLiteral("TZ"), timeZone);
}

Outcome ProgramHome::run(const std::string& commandLine, const std::string& input) const
{
    return runThrough(
        QStringLiteral(QUORVELL_PROGRAM), QProcess::splitCommand(QString::fromStdString(commandLine)), input);
}

Outcome ProgramHome::runThrough(
    const QString& launcher, const QStringList& launcherArguments, const std::string& input) const
{
    constexpr int limitMilliseconds = 60000;
    QProcess process;
    process.setProcessEnvironment(m_variables);
    process.start(launcher, launcherArguments);
    process.write(input.data(), static_cast<qint64>(input.size()));
    process.closeWriteChannel();
    Outcome outcome;
    outcome.ended = process.waitForFinished(limitMilliseconds);
    if (!outcome.ended) {
        process.kill();
        process.waitForFinished();
    }
    outcome.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.output = process.readAllStandardOutput().toStdString();
    outcome.errors = process.readAllStandardError().toStdString();
    return outcome;
}

void ProgramHome::start(QProcess& process, const std::string& commandLine) const
{
    process.setProcessEnvironment(m_variables);
    process.start(QStringLiteral(QUORVELL_PROGRAM), QProcess::splitCommand(QString::fromStdString(commandLine)));
    process.waitForStarted();
}

void ProgramHome::become(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> variables;
    for (const QString& variable : m_variables.toStringList())
        variables.push_back(variable.toStdString());
    std::vector<char*> words{const_cast<char*>(QUORVELL_PROGRAM)};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    std::vector<char*> environment;
    for (std::string& variable : variables)
        environment.push_back(variable.data());
    words.push_back(nullptr);
    environment.push_back(nullptr);
    ::execve(words.front(), words.data(), environment.data());
    ::_exit(127);
}

std::string ProgramHome::write(const char* relative, const std::string& content) const
{
    const std::filesystem::path file = path(relative);
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    std::ofstream(file) << content;
    return file.string();
}

std::string ProgramHome::path(const char* relative) const
{
    return m_folder.filePath(QString::fromUtf8(relative)).toStdString();
}

std::vector<std::string> ProgramHome::noteFiles() const
{
    std::vector<std::string> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(notebookFolder(), error)) {
        if (entry.path().extension() != ".md")
            continue;
        std::ifstream file(entry.path());
        std::ostringstream text;
        text << file.rdbuf();
        files.push_back(text.str());
    }
    return files;
}

RunningProgram::RunningProgram(const ProgramHome& home, const std::string& commandLine)
{
    home.start(m_process, commandLine);
}

RunningProgram::~RunningProgram()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool RunningProgram::shows(const std::string& text)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < end) {
        if (const auto place = m_output.find(text, m_seen); place != std::string::npos) {
            m_seen = place + text.size();
            return true;
        }
        m_process.waitForReadyRead(50);
        m_output += m_process.readAllStandardOutput().toStdString();
    }
    return false;
}

int RunningProgram::exitCode()
{
    const bool hasEnded = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(15000);
    return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int RunningProgram::exitCodeAfter(int signal)
{
    ::kill(static_cast<pid_t>(m_process.processId()), signal);
    return exitCode();
}

std::string headerValue(const std::string& noteFile, const std::string& key)
{
    std::istringstream lines(noteFile);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(key + ": ")) {
            const auto value = parseJson(line.substr(key.size() + 2));
            return value ? readString(*value).value_or(dumpJson(*value)) : std::string();
        }
    }
    return {};
}

} // namespace quorvell::walk
