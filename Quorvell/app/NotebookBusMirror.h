#pragma once

#include "Quorvell/files/FileWorker.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/session/Scheduler.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The notes of a folder that another program owns: read from the disk, looked at again about every second, and at once
/// what this program handed over. Main thread, which is where the worker posts.
class NotebookBusMirror {
public:
    /// Reads the folder on the calling thread.
    NotebookBusMirror(std::string folder, FileWorker& worker, Scheduler& scheduler);

    const std::vector<Note>& notes() const { return m_notes; }
    std::optional<Note> note(const std::string& id) const;
    /// Takes over what the owner said about one note, unless a later version is known already.
    void put(const Note& note);
    /// Reads the folder now; `done` comes later, also when it could not be read.
    void read(std::function<void()> done);

private:
    /// When the folder was last changed, and whether that is long enough ago for a further change to show.
    struct Stamp {
        std::int64_t nanoseconds = 0;
        bool isSettled = false;
    };

    Stamp stamp() const;
    void look();

    std::string m_folder;
    FileWorker& m_worker;
    Scheduler& m_scheduler;
    std::vector<Note> m_notes;
    Stamp m_seen; ///< Of what m_notes shows.
    bool m_isReading = false;
    TimerHandle m_timer;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

} // namespace quorvell
