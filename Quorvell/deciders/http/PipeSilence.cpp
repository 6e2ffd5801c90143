// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/http/PipeSilence.h"

#include <ctime>

namespace quorvell {

namespace {

sigset_t pipeSignal()
{
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    return signals;
}

bool isPending()
{
    sigset_t pending{};
    return sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE) == 1;
}

} // namespace

PipeSilence::PipeSilence()
    : m_wasPending(isPending())
{
    const sigset_t signals = pipeSignal();
    pthread_sigmask(SIG_BLOCK, &signals, &m_before);
}

PipeSilence::~PipeSilence()
{
    if (!m_wasPending && isPending()) {
        const sigset_t signals = pipeSignal();
        const std::timespec atOnce{};
        sigtimedwait(&signals, nullptr, &atOnce);
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

} // namespace quorvell
