// SPDX-License-Identifier: MIT
// A session bus of the test's own, announced in the environment while it lives.
#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace quorvell::test {

class PrivateBus {
public:
    PrivateBus()
    {
        int ends[2];
        if (::pipe(ends) != 0)
            return;
        const std::string output = "--print-address=" + std::to_string(ends[1]);
        m_process = ::fork();
        if (m_process == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM); // a test that is killed leaves no daemon behind
            ::close(ends[0]);
            ::execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile", output.c_str(), nullptr);
            ::_exit(1);
        }
        ::close(ends[1]);
        char letter = 0;
        while (::read(ends[0], &letter, 1) == 1 && letter != '\n')
            m_address += letter;
        ::close(ends[0]);
        ::setenv("DBUS_SESSION_BUS_ADDRESS", m_address.c_str(), 1);
    }
    ~PrivateBus()
    {
        ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGTERM);
        ::waitpid(m_process, nullptr, 0);
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool isRunning() const { return !m_address.empty(); }

private:
    pid_t m_process = -1;
    std::string m_address;
};

} // namespace quorvell::test
