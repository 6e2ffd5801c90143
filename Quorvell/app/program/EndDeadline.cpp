// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/EndDeadline.h"

#include "Quorvell/app/program/ExitCode.h"

#include <unistd.h>

#include <csignal>
#include <string_view>

namespace quorvell {

namespace {

void giveUp(int)
{
    constexpr std::string_view lastWords =
        "Quorvell was to end, and a disk or a device did not answer: what was changed "
        "last may not be saved. Look at it before you go on.\n";
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, lastWords.data(), lastWords.size());
    ::_exit(exit_code::couldNot);
}

} // namespace

void EndDeadline::begin(std::chrono::seconds limit) noexcept
{
    struct sigaction action { };
    action.sa_handler = giveUp;
    sigaction(SIGALRM, &action, nullptr);
    ::alarm(static_cast<unsigned>(limit.count()));
}

void EndDeadline::cancel() noexcept
{
    ::alarm(0);
}

} // namespace quorvell
