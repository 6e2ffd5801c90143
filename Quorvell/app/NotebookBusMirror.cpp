#include "Quorvell/app/NotebookBusMirror.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>

namespace quorvell {

NotebookBusMirror::NotebookBusMirror(std::string folder, FileWorker& worker, Scheduler& scheduler)
    : m_folder(std::move(folder))
    , m_worker(worker)
    , m_scheduler(scheduler)
    , m_seen(stamp())
{
    if (auto content = readNoteFolder(m_folder, scheduler.wallClock()))
        m_notes = std::move(content->notes);
    constexpr std::chrono::milliseconds period{1000};
    m_timer = scheduler.every(period, [this] { look(); });
}

std::optional<Note> NotebookBusMirror::note(const std::string& id) const
{
    const auto found = std::find_if(m_notes.begin(), m_notes.end(), [&id](const Note& note) { return note.id == id; });
    return found == m_notes.end() ? std::nullopt : std::optional(*found);
}

void NotebookBusMirror::put(const Note& note)
{
    const auto known =
        std::find_if(m_notes.begin(), m_notes.end(), [&note](const Note& other) { return other.id == note.id; });
    if (known != m_notes.end()) {
        if (note.updated >= known->updated)
            *known = note;
        return;
    }
    const auto firstNotNewer = std::find_if(
        m_notes.begin(), m_notes.end(), [&note](const Note& other) { return other.created <= note.created; });
    m_notes.insert(firstNotNewer, note);
}

NotebookBusMirror::Stamp NotebookBusMirror::stamp() const
{
    struct stat found { };
    if (::stat(m_folder.c_str(), &found) != 0)
        return {};
    const auto changed = std::chrono::seconds(found.st_mtim.tv_sec) + std::chrono::nanoseconds(found.st_mtim.tv_nsec);
    // Some file systems count in seconds, so two changes within one may carry the same time.
    constexpr std::chrono::seconds coarsestClock{2};
    return {changed.count(), m_scheduler.wallClock().time_since_epoch() - changed > coarsestClock};
}

void NotebookBusMirror::look()
{
    const Stamp now = stamp();
    if (m_isReading || (now.nanoseconds == m_seen.nanoseconds && m_seen.isSettled))
        return;
    m_isReading = true;
    read([this] { m_isReading = false; });
}

void NotebookBusMirror::read(std::function<void()> done)
{
    m_worker.run([folder = m_folder, time = m_scheduler.wallClock()] { return readNoteFolder(folder, time); },
        [this, before = stamp(), done = std::move(done), life = std::weak_ptr(m_life)](
            std::optional<NoteFolderContent> content) {
            if (life.expired())
                return;
            if (content) {
                m_seen = before;
                m_notes = std::move(content->notes);
            }
            done();
        });
}

} // namespace quorvell
