// SPDX-License-Identifier: MIT
// The notes of a folder that another program owns: read from the disk, read again where it changes, and at once what
// this program handed over.
#pragma once

#include "Quorvell/files/FileWorker.h"
#include "Quorvell/files/FolderWatch.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/notebook/NoteFolderReader.h"
#include "Quorvell/notebook/NoteList.h"
#include "Quorvell/notebook/Notebook.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread, which is where the worker posts.
class NotebookBusMirror {
public:
    /// Reads the folder on the calling thread. `changed` hears what is different after a later reading.
    NotebookBusMirror(std::string folder, FileWorker& worker, Scheduler& scheduler, Notebook::Observer changed);

    const std::vector<Note>& notes() const { return m_list.notes(); }
    std::optional<Note> note(const std::string& id) const;
    std::optional<std::string> fileName(const std::string& id) const;
    /// Takes over what the owner said about one note, unless a later version is known already.
    void put(const Note& note);
    /// The owner has removed it.
    void remove(const std::string& id);
    /// Reads what changed now; `done` comes later, also when the folder could not be read.
    void read(std::function<void()> done);

private:
    /// What the folder holds, as far as it matters.
    struct Reading {
        NoteFolderChanges changes;
        std::vector<std::string> ids; ///< Of all its notes.
    };

    void take(Reading reading, int began);
    std::vector<std::string> goneUnseen(const std::vector<std::string>& ids, int began);
    bool isSaidSince(const std::string& id, int began) const;

    FileWorker& m_worker;
    Scheduler& m_scheduler;
    Notebook::Observer m_changed;
    std::shared_ptr<NoteFolderReader> m_reader; ///< Only the worker uses it.
    NoteList m_list;
    std::map<std::string, std::string> m_fileNames; ///< By id.
    int m_count = 0; ///< Of what the owner said, to tell which of that a reading cannot have seen.
    std::map<std::string, int> m_said; ///< By id: the count when the owner last spoke of the note.
    TimerHandle m_readSoon;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
    std::unique_ptr<FolderWatch> m_watch;
};

} // namespace quorvell
