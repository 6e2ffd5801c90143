// SPDX-License-Identifier: MIT
#include "Quorvell/handover/NotebookBusMirror.h"

#include <algorithm>
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
    m_worker.run(
        [reader = m_reader, now = m_scheduler.wallClock()]() -> std::optional<Reading> {
            auto changes = reader->read(now);
            return changes ? std::optional(Reading{std::move(*changes), reader->ids()}) : std::nullopt;
        },
        [this, began = m_count, done = std::move(done), life = std::weak_ptr(m_life)](std::optional<Reading> reading) {
            if (life.expired())
                return;
            if (reading)
                take(std::move(*reading), began);
            done();
        });
}

void NotebookBusMirror::take(Reading reading, int began)
{
    NotebookChanges news;
    std::vector<Note> different;
    for (StoredNote& stored : reading.changes.changed) {
        m_fileNames[stored.note.id] = stored.file.name;
        const Note* const known = m_list.find(stored.note.id);
        if ((known && *known == stored.note) || isSaidSince(stored.note.id, began))
            continue;
        news.changed.push_back(stored.note.id);
        different.push_back(std::move(stored.note));
    }
    std::vector<std::string> gone = goneUnseen(reading.ids, began);
    gone.insert(gone.end(), reading.changes.gone.begin(), reading.changes.gone.end());
    for (const std::string& id : gone) {
        m_fileNames.erase(id);
        const bool isNew = std::find(news.gone.begin(), news.gone.end(), id) == news.gone.end();
        if (isNew && m_list.find(id) && !isSaidSince(id, began))
            news.gone.push_back(id);
    }
    if (news.changed.empty() && news.gone.empty())
        return;
    m_list.apply(std::move(different), news.gone);
    m_changed(news);
}

/// Notes that the owner spoke of and that went before any reading saw them.
std::vector<std::string> NotebookBusMirror::goneUnseen(const std::vector<std::string>& ids, int began)
{
    std::vector<std::string> gone;
    for (const auto& [id, count] : m_said)
        if (count <= began && std::find(ids.begin(), ids.end(), id) == ids.end())
            gone.push_back(id);
    std::erase_if(m_said, [began](const auto& said) { return said.second <= began; });
    return gone;
}

/// Such a note may have been read as it was before.
bool NotebookBusMirror::isSaidSince(const std::string& id, int began) const
{
    const auto said = m_said.find(id);
    return said != m_said.end() && said->second > began;
}

} // namespace quorvell
