// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NotebookStore.h"

#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteCleaning.h"
#include "Quorvell/notebook/NotePicture.h"
#include "Quorvell/notebook/NoteRescue.h"
#include "Quorvell/notebook/NotebookMove.h"
#include "Quorvell/notebook/NotebookTidying.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* takenId = "A note with that id is already in the notebook. Change that one instead.";

} // namespace

NotebookStore::Opened NotebookStore::open(
    std::string folder, FileWorker& worker, Scheduler& scheduler, NotebookPorts ports)
{
    if (const FileProblem problem = makeFolder(folder); problem != FileProblem::none)
        return {nullptr, problemSentence(problem, folder)};
    auto reader = std::make_shared<NoteFolderReader>(folder);
    auto content = reader->read(scheduler.wallClock());
    if (!content)
        return {nullptr, problemSentence(FileProblem::noPermission, folder)};
    // The constructor is private, which make_unique cannot reach.
    return {std::unique_ptr<NotebookStore>(
                new NotebookStore(std::move(folder), worker, scheduler, ports, std::move(reader), std::move(*content))),
        ""};
}

NotebookStore::NotebookStore(std::string folder, FileWorker& worker, Scheduler& scheduler, NotebookPorts ports,
    std::shared_ptr<NoteFolderReader> reader, NoteFolderChanges content)
    : m_folder(std::move(folder))
    , m_worker(worker)
    , m_scheduler(scheduler)
    , m_ports(ports)
    , m_reader(std::move(reader))
    , m_history(std::make_shared<NoteHistory>(m_folder))
{
    for (const StoredNote& stored : content.changed)
        m_records[stored.note.id].file = stored.file;
    m_list = NoteList(std::move(content.changed));
}

NotebookStore::~NotebookStore()
{
    for (const auto& [id, queue] : m_queues) {
        if (queue.changes.size() < 2 && !m_isMoving)
            continue;
        // The place may only be known once the write under way is done, which the worker does first. What somebody
        // else changed meanwhile stays, with ours in its history.
        Queue last = queue;
        last.changes.erase(last.changes.begin(), std::prev(last.changes.end()));
        m_worker.run(
            [work = workOf(last), history = m_history, note = last.changes.back().result] {
                if (work().problem == FileProblem::changedMeanwhile)
                    static_cast<void>(
                        history->keep(note.id, NoteVersion::of(note), note.author, NoteHistory::Keeping::always));
                return true; // Nobody is left to be told.
            },
            [](bool) {});
    }
}

std::optional<Note> NotebookStore::note(const std::string& id) const
{
    const Note* found = m_list.find(id);
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<std::string> NotebookStore::fileURL(const std::string& id) const
{
    const auto found = m_records.find(id);
    return found == m_records.end() ? std::nullopt : std::optional(m_folder + "/" + found->second.file.name);
}

void NotebookStore::add(Note note, NotebookCallback done)
{
    note.updated = std::max(note.updated, note.created);
    note = cleanedNote(std::move(note));
    if (m_list.find(note.id))
        return refuse(takenId, std::move(done));
    const NoteAuthor by = note.author;
    enqueue({.by = by, .change = nullptr, .result = std::move(note), .done = std::move(done)});
}

void NotebookStore::update(const std::string& id, Change change, NotebookCallback done)
{
    changeBy(NoteAuthor::quorvell, id, std::move(change), std::move(done));
}

void NotebookStore::edit(const std::string& id, Change change, NotebookCallback done)
{
    const auto byHand = [change = std::move(change)](Note& note) {
        change(note);
        note.personEdited = true;
    };
    changeBy(NoteAuthor::person, id, byHand, std::move(done));
}

void NotebookStore::delete_(const std::string& id, NotebookCallback done)
{
    removeNote(Kind::discard, id, std::move(done));
}

void NotebookStore::forgetAll(NotebookCallback done)
{
    std::vector<std::string> facts;
    for (const Note& note : notes())
        if (note.kind == NoteKind::aboutMe)
            facts.push_back(note.id);
    struct Progress {
        std::size_t left;
        NotebookVerdict verdict;
    };
    const auto progress = std::make_shared<Progress>(Progress{facts.size() + 1, {.isStored = true, .problem = ""}});
    const auto finishOne = [progress, done = std::move(done)](const NotebookVerdict& verdict) {
        if (!verdict.isStored)
            progress->verdict = verdict;
        if (--progress->left == 0)
            done(progress->verdict);
    };
    for (const std::string& id : facts)
        removeNote(Kind::erase, id, finishOne);
    m_worker.run(
        [folder = m_folder, ids = std::set(facts.begin(), facts.end()), now = m_scheduler.wallClock()] {
            eraseLeftVersions(folder, ids, now);
            return NotebookVerdict{.isStored = true, .problem = ""};
        },
        finishOne);
}

void NotebookStore::savePicture(const std::string& id, std::string picture, NotebookCallback done)
{
    if (!m_list.find(id))
        return refuse(unknownNote, std::move(done));
    m_worker.run([folder = m_folder, id, picture = std::move(picture),
                     pictures = m_ports.pictures] { return writePicture(folder, id, picture, pictures); },
        [this, life = std::weak_ptr(m_life), id, done = std::move(done)](const PictureWritten& written) {
            if (life.expired())
                return;
            if (!written.problem.empty())
                return done({.isStored = false, .problem = written.problem});
            const auto change = [image = written.image](Note& note) { note.image = image; };
            changeBy(NoteAuthor::quorvell, id, change, done);
        });
}

void NotebookStore::history(const std::string& id, HistoryCallback done)
{
    m_worker.run([history = m_history, id] { return history->versions(id); }, std::move(done));
}

void NotebookStore::reload(std::function<void()> done)
{
    m_worker.run([reader = m_reader, now = m_scheduler.wallClock()] { return reader->read(now); },
        [this, life = std::weak_ptr(m_life), done = std::move(done)](std::optional<NoteFolderChanges> changes) {
            if (life.expired())
                return;
            // A folder that cannot be read just now keeps the notes that were read before.
            if (changes)
                takeOver(std::move(*changes));
            if (done)
                done();
        });
}

void NotebookStore::watch()
{
    const auto post = [&scheduler = m_scheduler](std::function<void()> action) { scheduler.post(std::move(action)); };
    const auto changed = [this, life = std::weak_ptr(m_life)] {
        if (!life.expired())
            folderChanged();
    };
    m_watch = std::make_unique<FolderWatch>(m_folder, post, changed);
    tidy(m_scheduler.wallClock());
    m_tidyDaily = m_scheduler.every(std::chrono::hours(24), [this] { tidy(m_scheduler.wallClock()); });
}

void NotebookStore::folderChanged()
{
    constexpr std::chrono::milliseconds quiet(600);
    m_reloadSoon = m_scheduler.after(quiet, [this] { reload(nullptr); });
}

bool NotebookStore::freshlyChanged(const std::string& id) const
{
    constexpr std::chrono::seconds fresh(2);
    const auto found = m_records.find(id);
    return found != m_records.end() && found->second.written
        && m_scheduler.wallClock() - *found->second.written < fresh;
}

void NotebookStore::tidy(Instant now)
{
    // With a reading of its own: what it sees of notes is certain to be what the folder holds.
    m_worker.run(
        [folder = m_folder, now] {
            tidyNotebook(folder, now);
            return true;
        },
        [](bool) {});
}

void NotebookStore::moveNotebook(const std::string& folder, Entering enter, NotebookCallback done)
{
    if (m_isMoving)
        return refuse("The notebook is being moved already. Wait until that is done.", std::move(done));
    m_isMoving = true;
    m_worker.run([from = m_folder, to = folder] { return copyNotebook(from, to); },
        [this, life = std::weak_ptr(m_life), folder, enter = std::move(enter), done = std::move(done)](
            std::string problem) {
            if (life.expired())
                return;
            if (problem.empty() && enter)
                problem = enter();
            finishMove(folder, problem, done);
        });
}

void NotebookStore::finishMove(std::string folder, const std::string& problem, NotebookCallback done)
{
    m_isMoving = false;
    if (problem.empty()) {
        const std::string old = std::exchange(m_folder, std::move(folder));
        m_worker.run([old, now = m_folder] { return removeCopied(old, now); }, [](bool) {});
        m_reader = std::make_shared<NoteFolderReader>(m_folder);
        m_history = std::make_shared<NoteHistory>(m_folder);
        if (m_watch)
            watch();
    }
    const auto resume = [this, problem, done = std::move(done)] {
        std::vector<std::string> waiting;
        for (const auto& [id, queue] : m_queues)
            waiting.push_back(id);
        for (const std::string& id : waiting)
            retryFirst(id);
        done({.isStored = problem.empty(), .problem = problem});
    };
    if (problem.empty())
        reload(resume);
    else
        resume();
}

} // namespace quorvell
