// SPDX-License-Identifier: MIT
// A session bus of the test's own, announced in the environment while it lives.
#pragma once

#include "ChildProcess.h"

#include <cstdlib>
#include <string>

namespace quorvell::test {

class PrivateBus {
public:
    PrivateBus() { ::setenv("DBUS_SESSION_BUS_ADDRESS", m_address.c_str(), 1); }
    ~PrivateBus() { ::unsetenv("DBUS_SESSION_BUS_ADDRESS"); }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool isRunning() const { return !m_address.empty(); }
    const std::string& address() const { return m_address; }

private:
    ChildProcess m_daemon{{"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"}};
    std::string m_address = m_daemon.line();
};

} // namespace quorvell::test
