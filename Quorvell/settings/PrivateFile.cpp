// SPDX-License-Identifier: MIT
#include "Quorvell/settings/PrivateFile.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvell {

namespace {

constexpr mode_t onlyTheUser = 0600;

/// The bytes from `start` on.
std::string readFrom(int descriptor, off_t start, std::size_t most)
{
    std::string content(most, '\0');
    std::size_t length = 0;
    while (length < most) {
        const auto count =
            pread(descriptor, content.data() + length, most - length, start + static_cast<off_t>(length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    content.resize(length);
    return content;
}

/// Of a regular file; negative for anything else.
off_t sizeOf(int descriptor)
{
    struct stat status { };
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : -1;
}

FileDescriptor openToRead(const std::string& path)
{
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
}

} // namespace

void PrivateFile::prepareFolder(const std::string& folder)
{
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, failure);
    removeStaleTemporaryFiles(folder, std::chrono::hours(24));
}

std::string PrivateFile::readEnd(const std::string& path, std::size_t most)
{
    const FileDescriptor file = openToRead(path);
    const off_t size = sizeOf(file.number());
    if (size <= 0)
        return {};
    const off_t start = std::max<off_t>(0, size - static_cast<off_t>(most));
    std::string content = readFrom(file.number(), start, most);
    if (start > 0)
        content.erase(0, std::min(content.find('\n'), content.size() - 1) + 1);
    return content;
}

std::string PrivateFile::readWhole(const std::string& path, std::size_t most)
{
    const FileDescriptor file = openToRead(path);
    const off_t size = sizeOf(file.number());
    return size <= 0 || size > static_cast<off_t>(most) ? std::string() : readFrom(file.number(), 0, most);
}

std::optional<std::int64_t> PrivateFile::append(const std::string& path, std::string_view lines)
{
    constexpr int flags = O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    const FileDescriptor file(open(path.c_str(), flags, onlyTheUser));
    const off_t size = sizeOf(file.number());
    if (size < 0)
        return std::nullopt;
    // A line that a full disk cut short must not take the next one with it.
    const bool isCut = size > 0 && readFrom(file.number(), size - 1, 1) != "\n";
    const std::string text = (isCut ? "\n" : "") + std::string(lines);
    const ssize_t written = write(file.number(), text.data(), text.size());
    return written == static_cast<ssize_t>(text.size()) ? std::optional<std::int64_t>(size + written) : std::nullopt;
}

bool PrivateFile::replace(const std::string& path, std::string_view content)
{
    const std::filesystem::path place(path);
    struct stat found { };
    if (lstat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode))
        return false;
    return writeFileDurably(place.parent_path().string(), place.filename().string(), content, AtomicFile::Flushing::no)
        == FileProblem::none;
}

} // namespace quorvell
