#include "Quorvell/notebook/NotebookStore.h"

#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteCleaning.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* unknownNote = "There is no note with that id any more. Look it up again.";
constexpr const char* takenId = "A note with that id is already in the notebook. Change that one instead.";

NotebookVerdict verdictOf(FileProblem problem, const std::string& folder)
{
    if (problem == FileProblem::none)
        return {.isStored = true, .problem = ""};
    return {.isStored = false, .problem = "The note could not be kept. " + problemSentence(problem, folder)};
}

} // namespace

NotebookStore::Opened NotebookStore::open(std::string folder, FileWorker& worker, Clock now)
{
    if (const FileProblem problem = makeFolder(folder); problem != FileProblem::none)
        return {nullptr, problemSentence(problem, folder)};
    constexpr auto staleAge = std::chrono::hours(24);
    removeStaleTemporaryFiles(folder, staleAge);
    auto content = readNoteFolder(folder, now());
    if (!content)
        return {nullptr, problemSentence(FileProblem::noPermission, folder)};
    // The constructor is private, which make_unique cannot reach.
    return {std::unique_ptr<NotebookStore>(
                new NotebookStore(std::move(folder), worker, std::move(now), std::move(*content))),
        ""};
}

NotebookStore::NotebookStore(std::string folder, FileWorker& worker, Clock now, NoteFolderContent content)
    : m_folder(std::move(folder))
    , m_worker(worker)
    , m_now(std::move(now))
    , m_notes(std::move(content.notes))
    , m_fileNames(std::move(content.fileNames))
{
}

NotebookStore::~NotebookStore()
{
    for (const auto& [id, queue] : m_queues) {
        if (queue.changes.size() < 2)
            continue;
        // The name may only be known once the write under way is done, which the worker does first.
        m_worker.run([folder = m_folder, fileName = queue.fileName,
                         note = queue.changes.back().result] { return writeNote(folder, *fileName, note); },
            [](const NoteWritten&) {});
    }
}

std::optional<Note> NotebookStore::note(const std::string& id) const
{
    const Note* found = find(id);
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<std::string> NotebookStore::fileURL(const std::string& id) const
{
    const auto found = m_fileNames.find(id);
    return found == m_fileNames.end() ? std::nullopt : std::optional(m_folder + "/" + found->second);
}

void NotebookStore::add(Note note, NotebookCallback done)
{
    note.updated = std::max(note.updated, note.created);
    note = cleanedNote(std::move(note));
    if (find(note.id))
        return refuse(takenId, std::move(done));
    enqueue({.change = nullptr, .result = std::move(note), .done = std::move(done)});
}

void NotebookStore::update(const std::string& id, Change change, NotebookCallback done)
{
    const Note* current = find(id);
    if (!current)
        return refuse(unknownNote, std::move(done));
    Note result = changed(*current, change);
    enqueue({.change = std::move(change), .result = std::move(result), .done = std::move(done)});
}

void NotebookStore::edit(const std::string& id, Change change, NotebookCallback done)
{
    update(
        id,
        [change = std::move(change)](Note& note) {
            change(note);
            note.personEdited = true;
        },
        std::move(done));
}

void NotebookStore::reload(std::function<void()> done)
{
    m_worker.run([folder = m_folder, now = m_now()] { return readNoteFolder(folder, now); },
        [this, life = std::weak_ptr(m_life), done = std::move(done)](std::optional<NoteFolderContent> content) {
            if (life.expired())
                return;
            // A folder that cannot be read just now keeps the notes that were read before.
            if (content)
                takeOver(std::move(*content));
            if (done)
                done();
        });
}

const Note* NotebookStore::find(const std::string& id) const
{
    const auto found = std::find_if(m_notes.begin(), m_notes.end(), [&id](const Note& note) { return note.id == id; });
    return found == m_notes.end() ? nullptr : &*found;
}

Note NotebookStore::changed(const Note& base, const Change& change) const
{
    Note note = base;
    change(note);
    note.id = base.id;
    note.created = base.created;
    // Moves forward even when the clock was set back: the later of two versions must be known by it.
    note.updated = std::max(m_now(), base.updated + std::chrono::milliseconds(1));
    return cleanedNote(std::move(note));
}

void NotebookStore::show(const Note& note)
{
    const auto known =
        std::find_if(m_notes.begin(), m_notes.end(), [&note](const Note& other) { return other.id == note.id; });
    if (known != m_notes.end()) {
        *known = note;
        return;
    }
    const auto firstNotNewer = std::find_if(
        m_notes.begin(), m_notes.end(), [&note](const Note& other) { return other.created <= note.created; });
    m_notes.insert(firstNotNewer, note);
}

void NotebookStore::hide(const std::string& id)
{
    std::erase_if(m_notes, [&id](const Note& note) { return note.id == id; });
}

/// Answers later, as a change that was written does.
void NotebookStore::refuse(std::string problem, NotebookCallback done)
{
    m_worker.run([problem = std::move(problem)] { return NotebookVerdict{.isStored = false, .problem = problem}; },
        [done = std::move(done)](const NotebookVerdict& verdict) { done(verdict); });
}

void NotebookStore::enqueue(Waiting waiting)
{
    const std::string id = waiting.result.id;
    const auto [entry, isFirst] = m_queues.try_emplace(id);
    Queue& queue = entry->second;
    if (isFirst) {
        queue.stored = note(id);
        const auto recorded = m_fileNames.find(id);
        queue.fileName = std::make_shared<std::string>(recorded == m_fileNames.end() ? "" : recorded->second);
    }
    show(waiting.result);
    queue.changes.push_back(std::move(waiting));
    if (isFirst)
        writeFirst(queue);
}

void NotebookStore::writeFirst(const Queue& queue)
{
    const Note& result = queue.changes.front().result;
    m_worker.run(
        [folder = m_folder, fileName = queue.fileName, note = result] {
            NoteWritten written = writeNote(folder, *fileName, note);
            if (written.problem == FileProblem::none)
                *fileName = written.fileName;
            return written;
        },
        [this, life = std::weak_ptr(m_life), id = result.id](const NoteWritten& written) {
            if (!life.expired())
                finishFirst(id, written);
        });
}

void NotebookStore::finishFirst(const std::string& id, const NoteWritten& written)
{
    Queue& queue = m_queues[id];
    const Waiting finished = std::move(queue.changes.front());
    queue.changes.pop_front();
    const NotebookVerdict verdict = verdictOf(written.problem, m_folder);
    if (written.problem == FileProblem::none) {
        queue.stored = finished.result;
        m_fileNames[id] = written.fileName;
    } else {
        putBack(id, queue, verdict);
    }
    if (queue.changes.empty())
        m_queues.erase(id);
    else
        writeFirst(queue);
    // Last, because it may ask for further changes or end this store.
    finished.done(verdict);
}

/// What was not written is taken out from under the changes that came after it.
void NotebookStore::putBack(const std::string& id, Queue& queue, const NotebookVerdict& verdict)
{
    if (!queue.stored) {
        hide(id);
        for (Waiting& orphan : queue.changes)
            refuse(verdict.problem, std::move(orphan.done));
        queue.changes.clear();
        return;
    }
    Note latest = *queue.stored;
    for (Waiting& waiting : queue.changes) {
        waiting.result = changed(latest, waiting.change);
        latest = waiting.result;
    }
    show(latest);
}

void NotebookStore::takeOver(NoteFolderContent content)
{
    m_notes = std::move(content.notes);
    m_fileNames = std::move(content.fileNames);
    for (auto& [id, queue] : m_queues) {
        queue.stored = note(id);
        show(queue.changes.back().result);
    }
}

} // namespace quorvell
