// SPDX-License-Identifier: MIT
// The real service in a process of its own, told how to fail.
#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <functional>
#include <string>
#include <vector>

namespace quorvell::walk {

/// Ends with this object.
class FaultyService {
public:
    /// `ready` gets the address once it listens, "" when it never does.
    FaultyService(const std::vector<std::string>& faults, const std::string& certificate,
        std::function<void(const std::string& address)> ready);
    ~FaultyService();

    static constexpr const char* key = "a-key-for-tests";

private:
    void readOutput();

    QTemporaryDir m_folder;
    std::function<void(const std::string&)> m_ready;
    QProcess m_process;
};

} // namespace quorvell::walk
