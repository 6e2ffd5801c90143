// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>

namespace quorvell {

namespace {

/// The lowest free number is the missing stream's own, because those below it were seen to first.
void openWhereMissing(int stream, int flags)
{
    if (::fcntl(stream, F_GETFD) < 0 && errno == EBADF) [[maybe_unused]]
        const int opened = ::open("/dev/null", flags);
}

/// Some file systems tell only of a closed file that not all of it could be kept.
bool closes(int stream)
{
    const int copy = ::dup(stream);
    return copy >= 0 && ::close(copy) == 0;
}

} // namespace

void StandardStreams::prepare()
{
    // Output to nowhere is opened for reading only, so that what is lost there is told.
    openWhereMissing(STDIN_FILENO, O_RDONLY);
    openWhereMissing(STDOUT_FILENO, O_RDONLY);
    openWhereMissing(STDERR_FILENO, O_WRONLY);
    // Not ignored but handled, because programs that this one starts would inherit the former.
    struct sigaction action { };
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGXFSZ, &action, nullptr);
}

int StandardStreams::finish(int exitCode)
{
    errno = 0;
    std::cout.flush();
    const bool isWhole = std::fflush(stdout) == 0 && std::cout.good() && std::ferror(stdout) == 0;
    if (isWhole && closes(STDOUT_FILENO))
        return exitCode;
    const std::string reason = errno != 0 ? std::string(" (") + std::strerror(errno) + ")" : std::string();
    std::cerr << "Not everything that was to be printed could be written" << reason
              << ". See that there is room where the output goes, and try again." << std::endl;
    return exitCode == 0 ? 1 : exitCode;
}

} // namespace quorvell
