#include "Quorvell/app/NotebookBusMirror.h"

#include <utility>

namespace quorvell {

NotebookBusMirror::NotebookBusMirror(
    std::string folder, FileWorker& worker, Scheduler& scheduler, Notebook::Observer changed)
    : m_worker(worker)
    , m_scheduler(scheduler)
    , m_changed(std::move(changed))
    , m_reader(std::make_shared<NoteFolderReader>(folder))
{
    // Watched before it is read, so that nothing falls between the two.
    const auto post = [&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); };
    const auto readSoon = [this, life = std::weak_ptr(m_life)] {
        constexpr std::chrono::milliseconds quiet(100);
        if (!life.expired() && !m_readSoon.isSet())
            m_readSoon = m_scheduler.after(quiet, [this] {
                m_readSoon = TimerHandle();
                read([] {});
            });
    };
    m_watch = std::make_unique<FolderWatch>(std::move(folder), post, readSoon);
    if (auto content = m_reader->read(scheduler.wallClock())) {
        for (const StoredNote& stored : content->changed)
            m_fileNames[stored.note.id] = stored.file.name;
        m_list = NoteList(std::move(content->changed));
    }
}

std::optional<Note> NotebookBusMirror::note(const std::string& id) const
{
    const Note* const found = m_list.find(id);
    return found ? std::optional(*found) : std::nullopt;
}

std::optional<std::string> NotebookBusMirror::fileName(const std::string& id) const
{
    const auto found = m_fileNames.find(id);
    return found == m_fileNames.end() ? std::nullopt : std::optional(found->second);
}

void NotebookBusMirror::put(const Note& note)
{
    const Note* const known = m_list.find(note.id);
    if (known && (known->updated > note.updated || *known == note))
        return;
    m_said[note.id] = ++m_count;
    m_list.put(note);
    m_changed({{note.id}, {}});
}

void NotebookBusMirror::remove(const std::string& id)
{
    m_said[id] = ++m_count;
    if (!m_list.find(id))
        return;
    m_list.remove(id);
    m_fileNames.erase(id);
    m_changed({{}, {id}});
}

void NotebookBusMirror::read(std::function<void()> done)
{
    m_worker.run([reader = m_reader, now = m_scheduler.wallClock()] { return reader->read(now); },
        [this, began = m_count, done = std::move(done), life = std::weak_ptr(m_life)](
            std::optional<NoteFolderChanges> changes) {
            if (life.expired())
                return;
            if (changes)
                take(std::move(*changes), began);
            done();
        });
}

void NotebookBusMirror::take(NoteFolderChanges changes, int readingBegan)
{
    NotebookChanges news;
    std::vector<Note> different;
    for (StoredNote& stored : changes.changed) {
        m_fileNames[stored.note.id] = stored.file.name;
        const Note* const known = m_list.find(stored.note.id);
        if ((known && *known == stored.note) || isSaidSince(stored.note.id, readingBegan))
            continue;
        news.changed.push_back(stored.note.id);
        different.push_back(std::move(stored.note));
    }
    for (const std::string& id : changes.gone) {
        m_fileNames.erase(id);
        if (m_list.find(id) && !isSaidSince(id, readingBegan))
            news.gone.push_back(id);
    }
    if (news.changed.empty() && news.gone.empty())
        return;
    m_list.apply(std::move(different), news.gone);
    m_changed(news);
}

/// Such a note may have been read as it was before.
bool NotebookBusMirror::isSaidSince(const std::string& id, int readingBegan) const
{
    const auto said = m_said.find(id);
    return said != m_said.end() && said->second > readingBegan;
}

} // namespace quorvell
