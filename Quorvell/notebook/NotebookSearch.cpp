// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NotebookSearch.h"

#include <algorithm>
#include <utility>

namespace quorvell {

NotebookSearch::NotebookSearch(Notebook& notebook, Scheduler& scheduler)
    : m_notebook(notebook)
    , m_scheduler(scheduler)
    , m_worker([&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); })
    , m_observation(notebook.observe([this](const NotebookChanges& changes) { take(changes); }))
{
    NotebookChanges all;
    for (const Note& note : notebook.notes())
        all.changed.push_back(note.id);
    take(all);
}

NotebookSearch::~NotebookSearch() = default;

void NotebookSearch::find(NoteQuery query, Callback done)
{
    Question question{std::move(query), std::move(done)};
    if (m_unindexed.empty())
        ask(std::move(question));
    else
        m_questions.push_back(std::move(question));
}

void NotebookSearch::take(const NotebookChanges& changes)
{
    for (const auto* ids : {&changes.changed, &changes.gone})
        for (const std::string& id : *ids)
            if (m_isUnindexed.insert(id).second)
                m_unindexed.push_back(id);
    if (!m_unindexed.empty() && !m_feeding.isSet())
        feedSoon();
}

void NotebookSearch::feedSoon()
{
    m_feeding = m_scheduler.after(std::chrono::milliseconds(0), [this] { feed(); });
}

/// Hands some notes to the index. What has gone meanwhile leaves it.
void NotebookSearch::feed()
{
    constexpr std::size_t atOnce = 100; // about half a millisecond of copying
    const std::size_t count = std::min(atOnce, m_unindexed.size());
    std::vector<std::string> ids(m_unindexed.end() - static_cast<std::ptrdiff_t>(count), m_unindexed.end());
    m_unindexed.resize(m_unindexed.size() - count);
    std::vector<Note> notes;
    for (const std::string& id : ids) {
        m_isUnindexed.erase(id);
        if (auto note = m_notebook.note(id))
            notes.push_back(std::move(*note));
    }
    m_worker.run(
        [index = m_index, ids = std::move(ids), notes = std::move(notes)] {
            for (const std::string& id : ids)
                index->remove(id);
            index->putAll(notes);
            return true;
        },
        [](bool) {});
    m_feeding = TimerHandle();
    if (!m_unindexed.empty())
        return feedSoon();
    for (Question& question : std::exchange(m_questions, {}))
        ask(std::move(question));
}

void NotebookSearch::ask(Question question)
{
    m_worker.run([index = m_index, query = std::move(question.query)] { return index->find(query); },
        [life = std::weak_ptr(m_life), done = std::move(question.done)](const NotesFound& found) {
            if (!life.expired())
                done(found);
        });
}

} // namespace quorvell
