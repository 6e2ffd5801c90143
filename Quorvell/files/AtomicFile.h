// SPDX-License-Identifier: MIT
// A file that appears whole and durable or not at all, whenever the program or the computer stops.
#pragma once

#include "Quorvell/files/FileDescriptor.h"
#include "Quorvell/files/FileProblem.h"
#include "Quorvell/files/FileStamp.h"

#include <chrono>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The text goes to a hidden temporary file of the same folder, which is flushed, renamed and its folder flushed.
/// Blocks; one thread.
class AtomicFile {
public:
    enum class Existing { replace, keep };
    enum class Flushing {
        yes,
        no, ///< Still whole or not at all while the computer runs; where thousands are written that can be missed.
    };

    explicit AtomicFile(std::string folder, Flushing flushing = Flushing::yes);
    /// Removes what was written and not committed, and nothing that another program wrote.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Mode 0600. Nothing is to be seen under a real name yet.
    FileProblem write(std::string_view text);

    /// Gives the written file its name. After `nameTaken` another name may be tried. What is no ordinary file is never
    /// replaced: `notAFile`. Of a link only the link is.
    FileProblem commit(const std::string& name, Existing existing);

    /// Takes the place of the file `name` while that is still as `expected`, else `changedMeanwhile` and nothing is
    /// changed. Even a change in the last instant is noticed, where the file system can exchange two files. A program
    /// that is killed in that instant leaves it in a temporary file (temporaryFilesIn).
    FileProblem commitOver(const std::string& name, const FileStamp& expected);

    /// Of the written file.
    FileStamp stamp() const;

private:
    FileProblem openTemporary();
    bool exchangeWith(const std::string& name) const;
    FileProblem putBack(const std::string& name);
    bool isTemporaryOurs() const;
    FileProblem flush(int file) const;
    FileProblem writeAll(std::string_view text);

    std::string m_folderPath;
    Flushing m_flushing;
    FileDescriptor m_folder;
    FileDescriptor m_file;
    std::string m_temporaryName; ///< Empty when there is no temporary file.
};

/// Both steps for a name that may be replaced.
FileProblem writeFileDurably(const std::string& folder, const std::string& name, std::string_view text,
    AtomicFile::Flushing flushing = AtomicFile::Flushing::yes);

/// A file or folder that is not there is no problem. Blocks.
FileProblem removeFileDurably(const std::string& folder, const std::string& name);

/// While it is still as `expected`, else `changedMeanwhile` and it stays. As commitOver, a change in the last instant
/// is noticed; a program that is killed in that instant leaves it in a temporary file.
FileProblem removeFileExpected(const std::string& folder, const std::string& name, const FileStamp& expected);

/// Names of ordinary files of this user in `folder` that are named as AtomicFile names its own: of writers at work, and
/// of those that were stopped.
std::vector<std::string> temporaryFilesIn(const std::string& folder);

/// Removes those of them that nobody has written to for `age` and that are not `kept`.
void removeStaleTemporaryFiles(
    const std::string& folder, std::chrono::seconds age, const std::set<std::string>& kept = {});

} // namespace quorvell
