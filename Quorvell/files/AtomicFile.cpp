// SPDX-License-Identifier: MIT
#include "Quorvell/files/AtomicFile.h"

#include "Quorvell/files/Folder.h"
#include "Quorvell/files/RandomBytes.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <span>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view temporaryStart = ".quorvell-";
constexpr std::string_view temporaryEnd = ".tmp";
constexpr std::string_view hexadecimals = "0123456789abcdef";
constexpr std::size_t randomDigits = 16;

std::string newTemporaryName()
{
    const auto bytes = randomBytes();
    std::string name(temporaryStart);
    for (const std::uint8_t byte : std::span(bytes).first<randomDigits / 2>()) {
        name += hexadecimals[byte >> 4];
        name += hexadecimals[byte & 0x0F];
    }
    return name.append(temporaryEnd);
}

bool isTemporaryName(std::string_view name)
{
    if (name.size() != temporaryStart.size() + randomDigits + temporaryEnd.size() || !name.starts_with(temporaryStart)
        || !name.ends_with(temporaryEnd))
        return false;
    return name.substr(temporaryStart.size(), randomDigits).find_first_not_of(hexadecimals) == std::string_view::npos;
}

FileProblem problemOf(int result)
{
    return result == 0 ? FileProblem::none : fileProblem(errno);
}

/// Where the file system knows neither an exclusive rename nor hard links, a look beforehand is the best there is.
FileProblem renameAfterLooking(int folder, const std::string& from, const std::string& to)
{
    struct stat existing { };
    if (::fstatat(folder, to.c_str(), &existing, AT_SYMLINK_NOFOLLOW) == 0)
        return FileProblem::nameTaken;
    return problemOf(::renameat(folder, from.c_str(), folder, to.c_str()));
}

FileProblem renameKeepingExisting(int folder, const std::string& from, const std::string& to)
{
    const char* source = from.c_str();
    const char* target = to.c_str();
    if (::renameat2(folder, source, folder, target, RENAME_NOREPLACE) == 0)
        return FileProblem::none;
    if (errno != EINVAL && errno != ENOSYS)
        return fileProblem(errno);
    if (::linkat(folder, source, folder, target, 0) != 0)
        return errno == EEXIST ? FileProblem::nameTaken : renameAfterLooking(folder, from, to);
    return problemOf(::unlinkat(folder, source, 0));
}

std::optional<FileStamp> stampAt(int folder, const std::string& name)
{
    struct stat found { };
    const bool isFile = ::fstatat(folder, name.c_str(), &found, 0) == 0 && S_ISREG(found.st_mode);
    return isFile ? std::optional(FileStamp::of(found)) : std::nullopt;
}

/// A folder, a device or a pipe would be lost for good; a link is only a way to a file.
bool mayBeReplaced(int folder, const std::string& name)
{
    struct stat found { };
    return ::fstatat(folder, name.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0 || S_ISREG(found.st_mode)
        || S_ISLNK(found.st_mode);
}

/// Some file systems cannot flush a folder and say so; there is nothing more to be done on those.
FileProblem flushFile(int file)
{
    if (::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP)
        return FileProblem::none;
    return fileProblem(errno);
}

} // namespace

AtomicFile::AtomicFile(std::string folder, Flushing flushing)
    : m_folderPath(std::move(folder))
    , m_flushing(flushing)
{
}

AtomicFile::~AtomicFile()
{
    if (!m_temporaryName.empty() && isTemporaryOurs())
        ::unlinkat(m_folder.number(), m_temporaryName.c_str(), 0);
}

FileProblem AtomicFile::write(std::string_view text)
{
    if (const FileProblem problem = openTemporary(); problem != FileProblem::none)
        return problem;
    if (const FileProblem problem = writeAll(text); problem != FileProblem::none)
        return problem;
    return flush(m_file.number());
}

FileProblem AtomicFile::commit(const std::string& name, Existing existing)
{
    const int folder = m_folder.number();
    if (existing == Existing::replace && !mayBeReplaced(folder, name))
        return FileProblem::notAFile;
    const FileProblem problem = existing == Existing::keep
        ? renameKeepingExisting(folder, m_temporaryName, name)
        : problemOf(::renameat(folder, m_temporaryName.c_str(), folder, name.c_str()));
    if (problem != FileProblem::none)
        return problem;
    m_temporaryName.clear();
    return flush(folder);
}

FileProblem AtomicFile::commitOver(const std::string& name, const FileStamp& expected)
{
    const int folder = m_folder.number();
    if (stampAt(folder, name) != expected)
        return FileProblem::changedMeanwhile;
    // Swapped rather than replaced, so that what was there until this instant can be looked at and put back.
    if (!exchangeWith(name)) {
        if (errno == ENOENT)
            return FileProblem::changedMeanwhile;
        return errno == EINVAL || errno == ENOSYS ? commit(name, Existing::replace) : fileProblem(errno);
    }
    if (stampAt(folder, m_temporaryName) != expected)
        return putBack(name);
    ::unlinkat(folder, m_temporaryName.c_str(), 0);
    m_temporaryName.clear();
    return flush(folder);
}

bool AtomicFile::exchangeWith(const std::string& name) const
{
    const int folder = m_folder.number();
    return ::renameat2(folder, m_temporaryName.c_str(), folder, name.c_str(), RENAME_EXCHANGE) == 0;
}

/// What came out of the exchange was written by another program in the last instant and gets its name again. Where that
/// cannot be done it stays in the temporary file, which is all there is of it.
FileProblem AtomicFile::putBack(const std::string& name)
{
    if (exchangeWith(name)) {
        // Ours had been replaced in its turn: the newest gets the name, the other one stays in the temporary file.
        if (!isTemporaryOurs())
            exchangeWith(name);
        return FileProblem::changedMeanwhile;
    }
    const int failure = errno;
    const std::string theirs = std::exchange(m_temporaryName, {});
    // Ours was taken away meanwhile, so the name is free.
    if (failure == ENOENT && renameKeepingExisting(m_folder.number(), theirs, name) == FileProblem::none)
        return FileProblem::changedMeanwhile;
    return fileProblem(failure);
}

/// Not while another program's file lies there, for which ours was exchanged.
bool AtomicFile::isTemporaryOurs() const
{
    struct stat written { };
    struct stat found { };
    return ::fstat(m_file.number(), &written) == 0
        && ::fstatat(m_folder.number(), m_temporaryName.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0
        && written.st_ino == found.st_ino && written.st_dev == found.st_dev;
}

FileProblem AtomicFile::flush(int file) const
{
    return m_flushing == Flushing::yes ? flushFile(file) : FileProblem::none;
}

FileStamp AtomicFile::stamp() const
{
    struct stat found { };
    return ::fstat(m_file.number(), &found) == 0 ? FileStamp::of(found) : FileStamp{};
}

FileProblem AtomicFile::openTemporary()
{
    m_folder = FileDescriptor(::open(m_folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!m_folder.isOpen())
        return fileProblem(errno);
    constexpr mode_t onlyTheUser = 0600;
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
    std::string name = newTemporaryName();
    m_file = FileDescriptor(::openat(m_folder.number(), name.c_str(), flags, onlyTheUser));
    if (!m_file.isOpen())
        return fileProblem(errno);
    m_temporaryName = std::move(name);
    return FileProblem::none;
}

FileProblem AtomicFile::writeAll(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(m_file.number(), text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return fileProblem(errno);
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return FileProblem::none;
}

FileProblem writeFileDurably(
    const std::string& folder, const std::string& name, std::string_view text, AtomicFile::Flushing flushing)
{
    AtomicFile file(folder, flushing);
    if (const FileProblem problem = file.write(text); problem != FileProblem::none)
        return problem;
    return file.commit(name, AtomicFile::Existing::replace);
}

FileProblem removeFileDurably(const std::string& folder, const std::string& name)
{
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen())
        return errno == ENOENT ? FileProblem::none : fileProblem(errno);
    if (::unlinkat(opened.number(), name.c_str(), 0) != 0)
        return errno == ENOENT ? FileProblem::none : fileProblem(errno);
    return flushFile(opened.number());
}

FileProblem removeFileExpected(const std::string& folder, const std::string& name, const FileStamp& expected)
{
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen())
        return fileProblem(errno);
    if (stampAt(opened.number(), name) != expected)
        return FileProblem::changedMeanwhile;
    // Taken aside first, so that what was there until this instant can be looked at and put back.
    const std::string aside = newTemporaryName();
    if (const auto problem = renameKeepingExisting(opened.number(), name, aside); problem != FileProblem::none)
        return problem;
    if (stampAt(opened.number(), aside) != expected) {
        // Where the name was taken anew meanwhile, it stays in the temporary file.
        static_cast<void>(renameKeepingExisting(opened.number(), aside, name));
        return FileProblem::changedMeanwhile;
    }
    return ::unlinkat(opened.number(), aside.c_str(), 0) == 0 ? flushFile(opened.number()) : fileProblem(errno);
}

std::vector<std::string> temporaryFilesIn(const std::string& folder)
{
    std::vector<std::string> found = fileNamesIn(folder).value_or(std::vector<std::string>{});
    std::erase_if(found, [&folder](const std::string& name) {
        struct stat status { };
        return !isTemporaryName(name) || ::lstat((folder + "/" + name).c_str(), &status) != 0
            || !S_ISREG(status.st_mode) || status.st_uid != ::geteuid();
    });
    return found;
}

void removeStaleTemporaryFiles(const std::string& folder, std::chrono::seconds age, const std::set<std::string>& kept)
{
    const std::time_t newest = std::time(nullptr) - static_cast<std::time_t>(age.count());
    for (const std::string& name : temporaryFilesIn(folder)) {
        const std::string path = folder + "/" + name;
        struct stat found { };
        if (!kept.contains(name) && ::lstat(path.c_str(), &found) == 0 && found.st_mtime <= newest)
            ::unlink(path.c_str());
    }
}

} // namespace quorvell
