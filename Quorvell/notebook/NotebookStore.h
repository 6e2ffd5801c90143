// SPDX-License-Identifier: MIT
// The one writer of the notebook folder. A change shows in the list at once and is put back when it cannot be written.
#pragma once

#include "Quorvell/files/FileWorker.h"
#include "Quorvell/files/FolderWatch.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/notebook/NoteFolderReader.h"
#include "Quorvell/notebook/NoteHistory.h"
#include "Quorvell/notebook/NoteList.h"
#include "Quorvell/notebook/NoteWriting.h"
#include "Quorvell/notebook/NotebookPorts.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace quorvell {

/// Main thread, which is where the worker must post. Whoever makes one holds the folder's lock.
///
/// A change is a function of the note. It may run again on another version of it: on an older one, when an earlier
/// change could not be written, and on a newer one, when somebody changed the file in the meantime, whose text then
/// goes into the history. So it must depend on nothing but the note.
class NotebookStore final : public FullNotebook {
public:
    struct [[nodiscard]] Opened {
        std::unique_ptr<NotebookStore> store;
        std::string problem; ///< When there is no store: what to do.
    };

    /// Makes the folder when it is missing and reads it, on the calling thread.
    static Opened open(std::string folder, FileWorker& worker, Scheduler& scheduler, NotebookPorts ports = {});
    /// Hands what is still waiting to the worker, which writes it before it ends.
    ~NotebookStore() override;

    const std::vector<Note>& notes() const override { return m_list.notes(); }
    std::optional<Note> note(const std::string& id) const override;
    const std::string& folder() const override { return m_folder; }
    std::optional<std::string> fileURL(const std::string& id) const override;

    void add(Note note, NotebookCallback done) override;
    void update(const std::string& id, Change change, NotebookCallback done) override;
    void edit(const std::string& id, Change change, NotebookCallback done) override;
    void delete_(const std::string& id, NotebookCallback done) override;
    void forgetAll(NotebookCallback done) override;
    void savePicture(const std::string& id, std::string picture, NotebookCallback done) override;
    void history(const std::string& id, HistoryCallback done) override;
    /// Whoever asks holds that folder's lock too.
    void moveNotebook(const std::string& folder, Entering enter, NotebookCallback done) override;

    /// Reads again what changed in the folder; changes that are not written yet stay on top.
    void reload(std::function<void()> done);
    /// From now on outside changes are taken over by themselves, and the notebook is tidied now and every day.
    void watch();
    /// Reloads 0.6 s after the last call.
    void folderChanged();
    /// True within two seconds after this store wrote the note: what changes then is most likely its own doing.
    bool freshlyChanged(const std::string& id) const;
    /// Removes pictures and histories whose notes are gone and that nobody touched for a day, and what killed programs
    /// left behind; nothing at all while some file of the folder cannot be read as a note.
    void tidy(Instant now);

private:
    static constexpr const char* unknownNote = "There is no note with that id any more. Look it up again.";

    enum class Kind { write, discard, erase }; ///< Discard: into the waste basket. Erase: for good, history and all.
    struct Waiting {
        Kind kind = Kind::write;
        NoteAuthor by = NoteAuthor::quorvell;
        Change change; ///< Empty for a new note.
        Note result;
        NotebookCallback done;
    };
    /// The changes of one note that are not on the disk yet, in order. The first one is being written.
    struct Queue {
        std::optional<Note> stored; ///< As it is on the disk.
        std::deque<Waiting> changes;
        std::shared_ptr<NotePlace> place; ///< Only the worker reads or changes it while a write is under way.
        int attempts = 0; ///< Of the first one.
        NoteHistory::Keeping keeping = NoteHistory::Keeping::ordinary;
    };
    struct Record {
        NoteFileRecord file;
        std::optional<Instant> written; ///< When this store wrote it last.
    };

    NotebookStore(std::string folder, FileWorker& worker, Scheduler& scheduler, NotebookPorts ports,
        std::shared_ptr<NoteFolderReader> reader, NoteFolderChanges content);

    Note changed(const Note& base, const Change& change) const;
    void changeBy(NoteAuthor by, const std::string& id, Change change, NotebookCallback done);
    void removeNote(Kind kind, const std::string& id, NotebookCallback done);
    void show(const Note& note);
    void hide(const std::string& id);
    void refuse(std::string problem, NotebookCallback done);
    void enqueue(Waiting waiting);
    void writeFirst(Queue& queue);
    std::function<NoteWritten()> workOf(const Queue& queue) const;
    void finishFirst(const std::string& id, const NoteWritten& written);
    void retryFirst(const std::string& id);
    void settle(const std::string& id, Queue& queue, const Waiting& finished, const NoteWritten& written);
    void rebase(const std::string& id, Queue& queue, const std::string& problem);
    void takeOver(NoteFolderChanges changes);
    void keepReplaced(const Note& replaced, const Note& now);
    void finishMove(std::string folder, const std::string& problem, NotebookCallback done);

    std::string m_folder;
    FileWorker& m_worker;
    Scheduler& m_scheduler;
    NotebookPorts m_ports;
    std::shared_ptr<NoteFolderReader> m_reader; ///< Only the worker uses it.
    std::shared_ptr<NoteHistory> m_history; ///< Only the worker uses it.
    NoteList m_list;
    std::unordered_map<std::string, Record> m_records; ///< By id.
    std::map<std::string, Queue> m_queues; ///< By id; none is empty.
    bool m_isMoving = false; ///< Nothing is handed to the worker.
    std::unique_ptr<FolderWatch> m_watch;
    TimerHandle m_reloadSoon;
    TimerHandle m_tidyDaily;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true); ///< Answers that come after the end find it gone.
};

} // namespace quorvell
