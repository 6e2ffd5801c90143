// SPDX-License-Identifier: MIT
#include "Quorvell/settings/PrivateFile.h"

#include "Quorvell/files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

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
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
}

} // namespace

void PrivateFile::prepareFolder(const std::string& folder)
{
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, failure);
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

void PrivateFile::append(const std::string& path, std::string_view lines)
{
    const FileDescriptor file(
        open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, onlyTheUser));
    if (sizeOf(file.number()) >= 0) [[maybe_unused]]
        const auto written = write(file.number(), lines.data(), lines.size());
}

bool PrivateFile::replace(const std::string& path, std::string_view content)
{
    std::string temporary = path + ".XXXXXX";
    FileDescriptor file(mkostemp(temporary.data(), O_CLOEXEC)); // With mode 0600.
    if (!file.isOpen())
        return false;
    const bool isWhole = write(file.number(), content.data(), content.size()) == static_cast<ssize_t>(content.size());
    file.close();
    if (isWhole && std::rename(temporary.c_str(), path.c_str()) == 0)
        return true;
    unlink(temporary.c_str());
    return false;
}

} // namespace quorvell
