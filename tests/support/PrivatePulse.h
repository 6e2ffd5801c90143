// SPDX-License-Identifier: MIT
// A sound server of the test's own, with devices that exist only as data: no hardware is touched.
#pragma once

#include "TemporaryFolder.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace quorvell::test {

/// A null sink makes a new client wait for two seconds unless another one plays; on sinks that are to be awake a client
/// of silence does.
class PrivatePulse {
public:
    enum class Server { pulseAudio, pipeWire };

    /// Without modules there is a server and no device.
    explicit PrivatePulse(std::vector<std::string> modules = {}, std::vector<std::string> awakeSinks = {},
        Server server = Server::pulseAudio)
        : m_modules(std::move(modules))
        , m_awake(std::move(awakeSinks))
        , m_server(server)
    {
        start();
    }
    ~PrivatePulse() { stop(SIGTERM); }
    PrivatePulse(const PrivatePulse&) = delete;
    PrivatePulse& operator=(const PrivatePulse&) = delete;

    std::string folder() const { return m_folder.path(); }
    std::string address() const { return "unix:" + socket(); }

    void start()
    {
        if (m_server == Server::pipeWire)
            startPipeWire();
        else
            startPulseAudio();
        for (const std::string& sink : m_awake) {
            control("info");
            m_processes.push_back(launch({"pacat", "-s", address(), "-d", sink, "--latency-msec=10", "/dev/zero"}));
        }
    }

    /// The socket stays behind after SIGKILL, as after a crash.
    void stop(int signal)
    {
        const std::vector<pid_t> processes = std::exchange(m_processes, {});
        for (auto process = processes.rbegin(); process != processes.rend(); ++process) {
            if (*process <= 0)
                continue;
            ::kill(*process, signal);
            ::waitpid(*process, nullptr, 0);
        }
    }

    /// What the server's own command answers; waits for the server to be there.
    std::string control(const std::string& words) const
    {
        for (int attempt = 0; attempt < 100; ++attempt) {
            std::string answer;
            const std::string command = "pactl -s " + address() + " " + words + " 2>/dev/null";
            FILE* pipe = ::popen(command.c_str(), "r");
            for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe))
                answer += static_cast<char>(letter);
            if (::pclose(pipe) == 0)
                return answer;
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
        }
        return {};
    }
    /// The module's number, for unload.
    std::string load(const std::string& module) const { return control("load-module " + inItsWords(module)); }
    void unload(const std::string& module) const { control("unload-module " + module); }

private:
    std::string socket() const { return m_folder / "native"; }

    std::string bus() const { return "unix:path=" + (m_folder / "bus"); }

    void startPulseAudio()
    {
        std::vector<std::string> words{"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
            "--disable-shm=yes", "--log-level=error", "--log-target=file:/dev/null",
            "--load=module-native-protocol-unix auth-anonymous=1 socket=" + socket()};
        for (const std::string& module : m_modules)
            words.push_back("--load=" + module);
        m_processes.push_back(launch(words));
    }

    /// The server, what chooses the devices, which needs a message bus, and what speaks PulseAudio's protocol.
    void startPipeWire()
    {
        const std::pair<const char*, const char*> settings[] = {
            {"main.lua.d",
                "alsa_monitor.enabled = false\nv4l2_monitor.enabled = false\n"
                "libcamera_monitor.enabled = false\n"},
            {"bluetooth.lua.d", "bluez_monitor.enabled = false\n"}};
        for (const auto& [part, text] : settings) {
            const std::string folder = m_folder / ".config/wireplumber/" + part;
            std::filesystem::create_directories(folder);
            writeText(folder + "/60-no-hardware.lua", text);
        }
        startPart({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + bus()}, "bus");
        startPart({"pipewire"}, "pipewire-0");
        startPart({"wireplumber"}, "");
        startPart({"pipewire-pulse"}, "native");
        for (const std::string& module : m_modules)
            load(module);
    }

    void startPart(const std::vector<std::string>& words, const std::string& socketName)
    {
        const std::string made = m_folder / socketName;
        if (!socketName.empty())
            std::filesystem::remove(made);
        m_processes.push_back(launch(words));
        for (int wait = 0; wait < 200 && !std::filesystem::exists(made); ++wait)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    /// PipeWire has no source of silence by that name.
    std::string inItsWords(const std::string& module) const
    {
        const std::string source = "module-null-source source_name=";
        if (m_server == Server::pulseAudio || !module.starts_with(source))
            return module;
        return "module-null-sink media.class=Audio/Source/Virtual sink_name=" + module.substr(source.size());
    }

    pid_t launch(std::vector<std::string> words) const
    {
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        const pid_t process = ::fork();
        if (process != 0)
            return process;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that is killed leaves no server behind
        for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"})
            ::setenv(name, m_folder.path().c_str(), 1);
        ::setenv("DBUS_SESSION_BUS_ADDRESS", bus().c_str(), 1);
        ::unsetenv("XDG_CONFIG_HOME");
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDERR_FILENO); // it warns of running as root, as in a container
        ::execvp(arguments.front(), arguments.data());
        ::_exit(1);
    }

    TemporaryFolder m_folder;
    std::vector<std::string> m_modules;
    std::vector<std::string> m_awake;
    Server m_server;
    std::vector<pid_t> m_processes;
};

} // namespace quorvell::test
