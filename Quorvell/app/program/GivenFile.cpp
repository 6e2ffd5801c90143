// SPDX-License-Identifier: MIT
#include "Quorvell/app/program/GivenFile.h"

#include "Quorvell/files/FileDescriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace quorvell {

namespace {

using Clock = std::chrono::steady_clock;

/// A pipe that nobody has opened for writing yet is not at its end: only poll() can tell.
bool hasSomething(int file, Clock::time_point deadline)
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd asked{file, POLLIN, 0};
        const int answer = ::poll(&asked, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (answer >= 0 || errno != EINTR)
            return answer > 0;
    }
}

} // namespace

std::optional<std::string> GivenFile::read(
    const std::string& path, std::size_t mostBytes, std::chrono::milliseconds patience)
{
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat facts { };
    if (!file.isOpen() || ::fstat(file.number(), &facts) != 0 || !(S_ISREG(facts.st_mode) || S_ISFIFO(facts.st_mode)))
        return std::nullopt;
    const auto deadline = Clock::now() + patience;
    std::string content;
    std::string part(4096, '\0');
    while (content.size() < mostBytes) {
        if (!hasSomething(file.number(), deadline))
            return std::nullopt;
        const auto count = ::read(file.number(), part.data(), std::min(part.size(), mostBytes - content.size()));
        if (count < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        content.append(part, 0, static_cast<std::size_t>(count));
    }
    return content;
}

} // namespace quorvell
