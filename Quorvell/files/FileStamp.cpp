// SPDX-License-Identifier: MIT
#include "Quorvell/files/FileStamp.h"

#include <chrono>

namespace quorvell {

namespace {

std::int64_t nanosecondsOf(const timespec& time)
{
    return (std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec)).count();
}

} // namespace

FileStamp FileStamp::of(const struct stat& found)
{
    return {.file = found.st_ino, .bytes = found.st_size, .writtenNanoseconds = nanosecondsOf(found.st_mtim)};
}

std::optional<FileStamp> FileStamp::ofFile(const std::string& path)
{
    struct stat found { };
    const bool isFile = ::stat(path.c_str(), &found) == 0 && S_ISREG(found.st_mode);
    return isFile ? std::optional(of(found)) : std::nullopt;
}

bool FileStamp::isSettled() const
{
    constexpr std::chrono::nanoseconds coarsestClock = std::chrono::seconds(2);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return now - std::chrono::nanoseconds(writtenNanoseconds) > coarsestClock;
}

} // namespace quorvell
