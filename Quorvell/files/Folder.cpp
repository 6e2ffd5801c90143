// SPDX-License-Identifier: MIT
#include "Quorvell/files/Folder.h"

#include "Quorvell/files/FileDescriptor.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

constexpr mode_t onlyTheUser = 0700;

bool isFolder(const std::string& path)
{
    struct stat found { };
    return ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

/// A new folder is an entry of the one above, which must reach the disk as well.
void flushFolderAbove(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string above = slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
    const FileDescriptor folder(::open(above.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen())
        ::fsync(folder.number());
}

FileProblem makeOneFolder(const std::string& path)
{
    if (::mkdir(path.c_str(), onlyTheUser) == 0) {
        flushFolderAbove(path);
        return FileProblem::none;
    }
    const int failure = errno;
    if (isFolder(path))
        return FileProblem::none;
    return failure == EEXIST || failure == ELOOP ? FileProblem::notAFolder : fileProblem(failure);
}

} // namespace

FileProblem makeFolder(const std::string& path)
{
    for (std::size_t end = 1; end <= path.size(); ++end) {
        if (end < path.size() && path[end] != '/')
            continue;
        if (const FileProblem problem = makeOneFolder(path.substr(0, end)); problem != FileProblem::none)
            return problem == FileProblem::folderGone ? FileProblem::cannotBeMade : problem; // What is above is there.
    }
    return path.empty() ? FileProblem::folderGone : FileProblem::none;
}

FileProblem makeFolderInside(const std::string& path)
{
    return path.empty() ? FileProblem::folderGone : makeOneFolder(path);
}

std::optional<std::vector<std::string>> fileNamesIn(const std::string& folder)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), ::closedir);
    if (!listing)
        return std::nullopt;
    std::vector<std::string> names;
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            names.emplace_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<std::string> readFile(const std::string& path, std::size_t maximumBytes)
{
    auto read = readStampedFile(AT_FDCWD, path, maximumBytes);
    return read ? std::optional(std::move(read->text)) : std::nullopt;
}

std::optional<StampedText> readStampedFile(int folder, const std::string& name, std::size_t maximumBytes)
{
    const FileDescriptor file(::openat(folder, name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat found { };
    if (!file.isOpen() || ::fstat(file.number(), &found) != 0 || !S_ISREG(found.st_mode)
        || static_cast<std::size_t>(found.st_size) > maximumBytes)
        return std::nullopt;
    // One byte more than the size says, so that the end is seen; a file that grows meanwhile is read on.
    std::string text(static_cast<std::size_t>(found.st_size) + 1, '\0');
    std::size_t length = 0;
    while (length <= maximumBytes) {
        if (length == text.size())
            text.resize(std::min(2 * text.size(), maximumBytes + 1));
        const ssize_t count = ::read(file.number(), text.data() + length, text.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        length += static_cast<std::size_t>(count);
        // A file that gives what it said it holds and not the one byte more is at its end as well.
        if (count == 0 || length == static_cast<std::size_t>(found.st_size)) {
            text.resize(length);
            return StampedText{std::move(text), FileStamp::of(found)};
        }
    }
    return std::nullopt;
}

} // namespace quorvell
