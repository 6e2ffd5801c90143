// SPDX-License-Identifier: MIT
// Search over a notebook, kept current as it changes.
#pragma once

#include "Quorvell/files/FileWorker.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/notebook/NoteIndex.h"
#include "Quorvell/notebook/Notebook.h"

#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace quorvell {

/// The index lives on a thread of its own; notes go there a few at a time, so that not even ten thousand hold up the
/// main thread, which is where this lives.
class NotebookSearch {
public:
    using Callback = std::function<void(const NotesFound&)>;

    /// The notebook and the scheduler outlive it.
    NotebookSearch(Notebook& notebook, Scheduler& scheduler);
    ~NotebookSearch();
    NotebookSearch(const NotebookSearch&) = delete;
    NotebookSearch& operator=(const NotebookSearch&) = delete;

    /// Answers later, once every change made before is in the index.
    void find(NoteQuery query, Callback done);

private:
    struct Question {
        NoteQuery query;
        Callback done;
    };

    void take(const NotebookChanges& changes);
    void feedSoon();
    void feed();
    void ask(Question question);

    Notebook& m_notebook;
    Scheduler& m_scheduler;
    std::vector<std::string> m_unindexed; ///< Ids of notes that changed or went, each once.
    std::unordered_set<std::string> m_isUnindexed;
    std::vector<Question> m_questions; ///< Wait until everything is indexed.
    TimerHandle m_feeding;
    std::shared_ptr<NoteIndex> m_index = std::make_shared<NoteIndex>(); ///< Only the worker uses it.
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
    FileWorker m_worker;
    NotebookObservation m_observation;
};

} // namespace quorvell
