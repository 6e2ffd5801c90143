// SPDX-License-Identifier: MIT
// Keeps a write to a connection that the other side has closed from ending the program.
#pragma once

#include <csignal>

namespace quorvell {

/// For the thread and the time that it lives in: SIGPIPE, which TLS libraries let the system send, reaches nobody.
/// Nothing else in the program notices, as it would if the signal were ignored for all.
class PipeSilence {
public:
    PipeSilence();
    ~PipeSilence();
    PipeSilence(const PipeSilence&) = delete;
    PipeSilence& operator=(const PipeSilence&) = delete;

private:
    sigset_t m_before{};
    bool m_wasPending = false;
};

} // namespace quorvell
