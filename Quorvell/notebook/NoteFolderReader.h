// SPDX-License-Identifier: MIT
// Reads the notebook folder again and again and tells what changed.
#pragma once

#include "Quorvell/notebook/StoredNote.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// What is different since the folder was read before.
struct NoteFolderChanges {
    std::vector<StoredNote> changed; ///< New ones too; one for each id, in the order of their files' names.
    std::vector<std::string> gone; ///< Ids.
};

/// Reads a folder again and again; only what changed is read twice. Of two files with one id the one with the later
/// `updated` counts, on a tie the one whose name sorts first. Blocks; lives on one thread at a time.
class NoteFolderReader {
public:
    explicit NoteFolderReader(std::string folder);

    /// Nothing when the folder cannot be read. `now` becomes `created` where a file has no readable one.
    [[nodiscard]] std::optional<NoteFolderChanges> read(Instant now);

    /// What the owner of this reader did to the folder itself, so that it is no news at the next reading.
    void wrote(const Note& note, const NoteFileRecord& file);
    void removed(const std::string& fileName);

    /// Files that are named as notes and could not be read as such.
    std::vector<std::string> unreadable() const;
    /// All ids that the folder holds, those of files that lost against another with the same id too.
    std::vector<std::string> ids() const;

private:
    struct Entry {
        FileStamp stamp{};
        bool isSettled = false;
        bool counts = false; ///< It is the file that counts for its id.
        bool isTold = false; ///< It was handed out as that.
        std::optional<std::string> id{}; ///< Nothing when it is no note.
        Instant updated{};
    };
    using Entries = std::map<std::string, Entry>; ///< By file name.
    /// A file that was read, before it is known whether it counts.
    struct Fresh {
        Entries::value_type* entry = nullptr;
        std::optional<Note> note{};
    };

    bool carryOver(int folder, const std::string& name, Entries& before);
    static void readAll(int folder, Instant now, std::vector<Fresh>& files);
    static void readEntry(int folder, Instant now, Fresh& fresh);
    void chooseCounting();
    NoteFolderChanges compare(int folder, Instant now, std::vector<Fresh> fresh, const Entries& before);
    std::vector<std::string> idsGone(const Entries& before) const;

    std::string m_folder;
    Entries m_entries;
};

} // namespace quorvell
