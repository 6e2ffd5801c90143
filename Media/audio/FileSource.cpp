// SPDX-License-Identifier: MIT
#include "Media/audio/FileSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace quorvell {

FileSource::Made FileSource::open(const std::string& path)
{
    // Without waiting, so that a pipe that nobody writes to is refused instead of waited for.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return {nullptr, "Could not open " + path + ": " + std::strerror(errno) + ". Check the name and try again."};
    struct stat status { };
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return {nullptr, path + " is not a file. Name a recording and try again."};
    }
    return {std::unique_ptr<FileSource>(new FileSource(descriptor, static_cast<std::uint64_t>(status.st_size))), {}};
}

FileSource::~FileSource()
{
    close(m_descriptor);
}

std::size_t FileSource::read(std::uint64_t offset, std::span<std::uint8_t> into) const
{
    std::size_t done = 0;
    while (done < into.size()) {
        const auto count =
            pread(m_descriptor, into.data() + done, into.size() - done, static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

} // namespace quorvell
