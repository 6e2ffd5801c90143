// SPDX-License-Identifier: MIT
// How NotebookStore brings its changes to the disk, and outside changes into its list.
#include "Quorvell/files/AtomicFile.h"
#include "Quorvell/notebook/NoteCleaning.h"
#include "Quorvell/notebook/NoteRemoval.h"
#include "Quorvell/notebook/NotebookStore.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace quorvell {

namespace {

NotebookVerdict verdictOf(FileProblem problem, const std::string& folder)
{
    if (problem == FileProblem::none)
        return {.isStored = true, .problem = ""};
    return {.isStored = false, .problem = "The note could not be kept. " + problemSentence(problem, folder)};
}

} // namespace

Note NotebookStore::changed(const Note& base, const Change& change) const
{
    Note note = base;
    change(note);
    note.id = base.id;
    note.created = base.created;
    // Moves forward even when the clock was set back: the later of two versions must be known by it.
    note.updated = std::max(m_scheduler.wallClock(), base.updated + std::chrono::milliseconds(1));
    return cleanedNote(std::move(note));
}

void NotebookStore::changeBy(NoteAuthor by, const std::string& id, Change change, NotebookCallback done)
{
    const Note* current = m_list.find(id);
    if (!current)
        return refuse(unknownNote, std::move(done));
    Note result = changed(*current, change);
    enqueue({.by = by, .change = std::move(change), .result = std::move(result), .done = std::move(done)});
}

void NotebookStore::removeNote(Kind kind, const std::string& id, NotebookCallback done)
{
    const Note* current = m_list.find(id);
    if (!current)
        return refuse(unknownNote, std::move(done));
    enqueue({.kind = kind, .by = NoteAuthor::person, .change = nullptr, .result = *current, .done = std::move(done)});
}

void NotebookStore::show(const Note& note)
{
    m_list.put(note);
    announce({{note.id}, {}});
}

void NotebookStore::hide(const std::string& id)
{
    m_list.remove(id);
    announce({{}, {id}});
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
    const bool isRemoval = waiting.kind != Kind::write;
    const Note result = waiting.result;
    const auto [entry, isFirst] = m_queues.try_emplace(id);
    Queue& queue = entry->second;
    if (isFirst) {
        queue.stored = note(id);
        const auto record = m_records.find(id);
        queue.place = std::make_shared<NotePlace>();
        if (record != m_records.end())
            *queue.place = {record->second.file.name, record->second.file.stamp};
    }
    queue.changes.push_back(std::move(waiting));
    if (isFirst)
        writeFirst(queue);
    // Last, because who hears of it may ask for further changes.
    if (isRemoval)
        hide(id);
    else
        show(result);
}

void NotebookStore::writeFirst(Queue& queue)
{
    if (m_isMoving)
        return;
    m_worker.run(workOf(queue),
        [this, life = std::weak_ptr(m_life), id = queue.changes.front().result.id](const NoteWritten& written) {
            if (!life.expired())
                finishFirst(id, written);
        });
}

/// What the worker does for the first change. What is replaced goes into the history before.
std::function<NoteWritten()> NotebookStore::workOf(const Queue& queue) const
{
    const Waiting& first = queue.changes.front();
    if (first.kind != Kind::write)
        return [folder = m_folder, id = first.result.id, version = NoteVersion::of(first.result), place = queue.place,
                   history = m_history, reader = m_reader, trash = m_ports.trash, kind = first.kind]() -> NoteWritten {
            const FileProblem problem = kind == Kind::erase
                ? eraseNote(folder, place->fileName, id)
                : discardNote(folder, place->fileName, trash,
                    [&] { return history->keep(id, version, NoteAuthor::person, NoteHistory::Keeping::always); });
            if (problem == FileProblem::none) {
                reader->removed(place->fileName);
                *place = {};
            }
            return {problem, {}};
        };
    std::optional<NoteVersion> replaced;
    if (queue.stored && !NoteVersion::of(*queue.stored).hasTextOf(first.result))
        replaced = NoteVersion::of(*queue.stored);
    return [folder = m_folder, note = first.result, by = first.by, replaced = std::move(replaced), place = queue.place,
               history = m_history, reader = m_reader, keeping = queue.keeping]() -> NoteWritten {
        const FileProblem problem = replaced ? history->keep(note.id, *replaced, by, keeping) : FileProblem::none;
        if (problem != FileProblem::none)
            return {problem, {}};
        NoteWritten written = writeNote(folder, *place, note);
        if (written.problem == FileProblem::none) {
            *place = {written.file.name, written.file.stamp};
            reader->wrote(note, written.file);
        }
        return written;
    };
}

void NotebookStore::finishFirst(const std::string& id, const NoteWritten& written)
{
    Queue& queue = m_queues[id];
    constexpr int maximumAttempts = 10;
    if (written.problem == FileProblem::changedMeanwhile && ++queue.attempts < maximumAttempts)
        return reload([this, id] { retryFirst(id); });
    const Waiting finished = std::move(queue.changes.front());
    queue.changes.pop_front();
    settle(id, queue, finished, written);
    if (queue.changes.empty())
        m_queues.erase(id);
    else
        writeFirst(queue);
    // Last, because it may ask for further changes or end this store.
    finished.done(verdictOf(written.problem, m_folder));
}

/// Writes the first change on top of what the folder holds now.
void NotebookStore::retryFirst(const std::string& id)
{
    Queue& queue = m_queues[id];
    const auto record = m_records.find(id);
    if (record == m_records.end()) {
        queue.place->stamp = std::nullopt;
    } else {
        *queue.place = {record->second.file.name, record->second.file.stamp};
        queue.keeping = NoteHistory::Keeping::always;
    }
    if (queue.stored)
        rebase(id, queue, "");
    writeFirst(queue);
}

void NotebookStore::settle(const std::string& id, Queue& queue, const Waiting& finished, const NoteWritten& written)
{
    queue.attempts = 0;
    queue.keeping = NoteHistory::Keeping::ordinary;
    if (written.problem != FileProblem::none)
        return rebase(id, queue, verdictOf(written.problem, m_folder).problem);
    if (finished.kind == Kind::write) {
        queue.stored = finished.result;
        m_records[id] = {written.file, m_scheduler.wallClock()};
        return;
    }
    queue.stored = std::nullopt;
    m_records.erase(id);
}

/// Makes the waiting changes again on the note as it is on the disk. Without one there, what was to come after a new
/// note is refused.
void NotebookStore::rebase(const std::string& id, Queue& queue, const std::string& problem)
{
    if (!queue.stored) {
        hide(id);
        for (Waiting& orphan : queue.changes)
            refuse(problem, std::move(orphan.done));
        queue.changes.clear();
        return;
    }
    Note latest = *queue.stored;
    for (Waiting& waiting : queue.changes) {
        if (waiting.change)
            waiting.result = changed(latest, waiting.change);
        latest = waiting.result;
    }
    if (queue.changes.empty() || queue.changes.back().kind == Kind::write)
        show(latest);
}

void NotebookStore::takeOver(NoteFolderChanges changes)
{
    std::vector<Note> fromOutside;
    NotebookChanges news;
    for (StoredNote& stored : changes.changed) {
        const std::string& id = stored.note.id;
        m_records[id].file = stored.file;
        if (const auto queue = m_queues.find(id); queue != m_queues.end()) {
            if (queue->second.stored)
                keepReplaced(*queue->second.stored, stored.note);
            queue->second.stored = std::move(stored.note);
            continue;
        }
        const Note* const known = m_list.find(id);
        if (known && *known == stored.note)
            continue;
        if (known)
            keepReplaced(*known, stored.note);
        news.changed.push_back(id);
        fromOutside.push_back(std::move(stored.note));
    }
    for (const std::string& id : changes.gone) {
        m_records.erase(id);
        if (const auto queue = m_queues.find(id); queue != m_queues.end())
            queue->second.stored = std::nullopt;
        else if (m_list.find(id))
            news.gone.push_back(id);
    }
    if (news.changed.empty() && news.gone.empty())
        return;
    m_list.apply(std::move(fromOutside), news.gone);
    announce(news);
}

/// A sync program that brings back an old version, or an editor's slip, must not cost what was there before. What this
/// store wrote a moment ago was replaced by somebody who had not seen it, so that is kept whatever was kept last.
void NotebookStore::keepReplaced(const Note& replaced, const Note& now)
{
    const NoteVersion version = NoteVersion::of(replaced);
    if (version.hasTextOf(now))
        return;
    const auto keeping =
        freshlyChanged(replaced.id) ? NoteHistory::Keeping::always : NoteHistory::Keeping::replacedOutside;
    m_worker.run([history = m_history, id = replaced.id, version,
                     keeping] { return history->keep(id, version, NoteAuthor::person, keeping); },
        [](FileProblem) {});
}

} // namespace quorvell
