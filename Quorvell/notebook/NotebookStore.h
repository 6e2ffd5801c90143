// The one writer of the notebook folder. A change shows in the list at once and is put back when it cannot be written.
#pragma once

#include "Quorvell/files/FileWorker.h"
#include "Quorvell/notebook/NoteFolder.h"
#include "Quorvell/notebook/NoteWriting.h"
#include "Quorvell/notebook/Notebook.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread, which is where the worker must post. Whoever makes one holds the folder's lock.
class NotebookStore final : public Notebook {
public:
    /// A change to one note. It may run a second time, on an older note, when an earlier change could not be written;
    /// so it must depend on nothing but the note.
    using Change = std::function<void(Note&)>;
    using Clock = std::function<Instant()>;

    struct Opened {
        std::unique_ptr<NotebookStore> store;
        std::string problem; ///< When there is no store: what to do.
    };

    /// Makes the folder when it is missing and reads it, on the calling thread.
    static Opened open(std::string folder, FileWorker& worker, Clock now);
    /// Hands what is still waiting to the worker, which writes it before it ends.
    ~NotebookStore() override;

    const std::vector<Note>& notes() const override { return m_notes; }
    std::optional<Note> note(const std::string& id) const override;
    /// Absolute path of the note's file. Nothing before a new note is stored.
    std::optional<std::string> fileURL(const std::string& id) const;

    void add(Note note, NotebookCallback done) override;
    void update(const std::string& id, Change change, NotebookCallback done) override;
    /// As update, for what the person changed by hand.
    void edit(const std::string& id, Change change, NotebookCallback done);

    /// Reads the whole folder again; changes that are not written yet stay on top.
    void reload(std::function<void()> done);

private:
    struct Waiting {
        Change change; ///< Empty for a new note.
        Note result;
        NotebookCallback done;
    };
    /// The changes of one note that are not on the disk yet, in order. The first one is being written.
    struct Queue {
        std::optional<Note> stored; ///< As it is on the disk.
        std::deque<Waiting> changes;
        std::shared_ptr<std::string> fileName; ///< Only the worker reads or changes it once a write is under way.
    };

    NotebookStore(std::string folder, FileWorker& worker, Clock now, NoteFolderContent content);

    const Note* find(const std::string& id) const;
    Note changed(const Note& base, const Change& change) const;
    void show(const Note& note);
    void hide(const std::string& id);
    void refuse(std::string problem, NotebookCallback done);
    void enqueue(Waiting waiting);
    void writeFirst(const Queue& queue);
    void finishFirst(const std::string& id, const NoteWritten& written);
    void putBack(const std::string& id, Queue& queue, const NotebookVerdict& verdict);
    void takeOver(NoteFolderContent content);

    std::string m_folder;
    FileWorker& m_worker;
    Clock m_now;
    std::vector<Note> m_notes;
    std::map<std::string, std::string> m_fileNames; ///< By id.
    std::map<std::string, Queue> m_queues; ///< By id; none is empty.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true); ///< Answers that come after the end find it gone.
};

} // namespace quorvell
