// SPDX-License-Identifier: MIT
// Another program that ends with the test.
#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <vector>

namespace quorvell::test {

/// What it prints goes nowhere, but for what it writes to descriptor 3.
class ChildProcess {
public:
    explicit ChildProcess(std::vector<std::string> command)
    {
        std::vector<char*> arguments;
        for (std::string& word : command)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        int ends[2];
        if (::pipe(ends) != 0)
            return;
        m_process = ::fork();
        if (m_process == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::dup2(ends[1], 3);
            if (::freopen("/dev/null", "w", stdout) && ::freopen("/dev/null", "w", stderr))
                ::execvp(arguments.front(), arguments.data());
            ::_exit(127);
        }
        ::close(ends[1]);
        m_output = ends[0];
    }
    ~ChildProcess() { end(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    void end()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGTERM);
        ::waitpid(m_process, nullptr, 0);
        ::close(m_output);
        m_process = -1;
    }

    /// Waits for a line on descriptor 3; empty when the program ended without one.
    std::string line() const
    {
        std::string text;
        char letter = 0;
        while (::read(m_output, &letter, 1) == 1 && letter != '\n')
            text += letter;
        return text;
    }

private:
    pid_t m_process = -1;
    int m_output = -1;
};

} // namespace quorvell::test
