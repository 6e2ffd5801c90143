// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/Interrupts.h"

#include "Quorvell/app/program/EndDeadline.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <utility>

namespace quorvell {

namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP, SIGWINCH};

/// A signal handler may do next to nothing, so it only writes a byte that the event loop sees.
std::array<int, 2> pipeEnds{-1, -1};

/// Ctrl+C so often, and nobody has looked: the event loop is held up.
constexpr int mostUnseen = 3;
volatile std::sig_atomic_t unseen = 0;

void handleSignal(int signal)
{
    unseen = signal == SIGINT ? unseen + 1 : unseen;
    const char byte = static_cast<char>(signal);
    [[maybe_unused]] const auto written = write(pipeEnds[1], &byte, 1);
    if (signal == SIGTERM || signal == SIGHUP || unseen >= mostUnseen)
        EndDeadline::begin();
}

void setHandler(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : signals)
        sigaction(signal, &action, nullptr);
}

} // namespace

Interrupts::Interrupts(Reports reports)
    : m_reports(std::move(reports))
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        char signal = 0;
        unseen = 0;
        if (read(pipeEnds[0], &signal, 1) == 1)
            report(signal);
    });
    setHandler(handleSignal);
}

void Interrupts::report(int signal) const
{
    const bool isEnd = signal != SIGINT && m_reports.ended;
    const auto& told = signal == SIGWINCH ? m_reports.resized : isEnd ? m_reports.ended : m_reports.interrupted;
    if (told)
        told();
}

Interrupts::~Interrupts()
{
    setHandler(SIG_DFL);
    m_notifier.reset();
    for (int& end : pipeEnds)
        close(std::exchange(end, -1));
}

} // namespace quorvell
