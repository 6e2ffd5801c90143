// SPDX-License-Identifier: MIT
#include "Quorvell/handover/NotebookLock.h"

#include "Quorvell/files/Folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* lockName = "/.quorvell.lock";

FileDescriptor openLockFile(const std::string& path)
{
    constexpr mode_t onlyTheUser = 0600;
    constexpr int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    return FileDescriptor(::open(path.c_str(), flags, onlyTheUser));
}

/// True when something is there that no lock can be: a folder, a link, a pipe.
bool isObstructed(const std::string& path)
{
    struct stat found { };
    return ::lstat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode);
}

/// False when somebody removed or replaced the file between its opening and its locking.
bool isStillThere(const FileDescriptor& file, const std::string& path)
{
    struct stat opened { };
    struct stat found { };
    return ::fstat(file.number(), &opened) == 0 && ::stat(path.c_str(), &found) == 0 && opened.st_ino == found.st_ino
        && opened.st_dev == found.st_dev;
}

/// For the sentence that another program shows when it finds the lock held. Losing it harms nothing.
void writeOwnNumber(const FileDescriptor& file)
{
    const std::string text = std::to_string(::getpid()) + "\n";
    if (::ftruncate(file.number(), 0) != 0 || ::pwrite(file.number(), text.data(), text.size(), 0) < 0)
        return;
}

std::string holderOf(const std::string& path)
{
    constexpr std::size_t longestNumber = 20;
    const std::string text = readFile(path, longestNumber).value_or("");
    const std::string number = text.substr(0, text.find('\n'));
    const bool isNumber = !number.empty() && number.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? " (process " + number + ")" : "";
}

NotebookLock::Attempt impossible(FileProblem problem, const std::string& folder)
{
    return {NotebookLock::Outcome::impossible, std::nullopt, problemSentence(problem, folder)};
}

NotebookLock::Attempt obstructed(const std::string& path)
{
    return {NotebookLock::Outcome::impossible, std::nullopt,
        path + " is in the way: it must be an ordinary file, or not be there. Move it away and try again."};
}

NotebookLock::Attempt heldElsewhere(const std::string& folder)
{
    return {NotebookLock::Outcome::heldElsewhere, std::nullopt,
        "The notebook in " + folder + " is in use by another program" + holderOf(folder + lockName)
            + " that cannot be reached. Close that program and try again."};
}

} // namespace

NotebookLock::Attempt NotebookLock::take(const std::string& folder)
{
    if (const FileProblem problem = makeFolder(folder); problem != FileProblem::none)
        return impossible(problem, folder);
    const std::string path = folder + lockName;
    constexpr int maximumReplacements = 10;
    for (int attempt = 0; attempt < maximumReplacements; ++attempt) {
        if (isObstructed(path))
            return obstructed(path);
        FileDescriptor file = openLockFile(path);
        if (!file.isOpen())
            return impossible(fileProblem(errno), folder);
        if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0)
            return errno == EWOULDBLOCK ? heldElsewhere(folder) : impossible(FileProblem::other, folder);
        if (!isStillThere(file, path))
            continue;
        writeOwnNumber(file);
        return {Outcome::taken, NotebookLock(std::move(file)), ""};
    }
    return impossible(FileProblem::other, folder);
}

} // namespace quorvell
