// The way to the notebook for every program: as its owner where nobody else is, else through the owner.
#pragma once

#include "Quorvell/app/NotebookBus.h"
#include "Quorvell/app/NotebookBusClient.h"
#include "Quorvell/app/NotebookBusMirror.h"
#include "Quorvell/app/NotebookBusService.h"
#include "Quorvell/app/NotebookLock.h"
#include "Quorvell/app/ProgramEnvironment.h"
#include "Quorvell/notebook/NotebookStore.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct OpenedNotebook {
    std::unique_ptr<Notebook> notebook;
    std::string problem; ///< When there is none: a sentence for the user that says what to do.
};

/// Needs a QCoreApplication; the scheduler, which runs on its event loop, outlives the notebook. Waits a moment where
/// another program seems to be starting or ending.
OpenedNotebook openNotebook(const ProgramEnvironment& environment, Scheduler& scheduler);

/// Whoever holds the folder's lock and, where there is a session bus, its name, owns the notebook and writes for
/// everybody. Another program hands its changes over; when it finds the owner gone it becomes the owner. Main thread.
class NotebookAccess final : public Notebook {
public:
    NotebookAccess(std::string folder, Scheduler& scheduler, std::optional<NotebookBus> bus);
    ~NotebookAccess() override;

    /// Becomes the owner or finds it. When neither is possible: why.
    std::string open();
    bool isOwner() const override { return m_store != nullptr; }

    const std::vector<Note>& notes() const override;
    std::optional<Note> note(const std::string& id) const override;
    /// A change that is handed over shows in the list once the owner has stored it.
    void add(Note note, NotebookCallback done) override;
    void update(const std::string& id, std::function<void(Note&)> change, NotebookCallback done) override;

private:
    enum class Claim { owner, heldElsewhere, impossible };

    /// One change on its way to the owner. They go one after another, so that each is based on what came before it.
    struct Request {
        std::optional<Note> newNote; ///< When a note is added.
        std::string id;
        std::function<void(Note&)> change;
        NotebookCallback done;
        int attempts = 0;
        bool hasLookedAgain = false; ///< For a note that was not known here yet.
        std::optional<Note> sent; ///< What the owner was last asked to store.
    };

    Claim claim();
    bool findOwner();
    void enqueue(Request request);
    void sendFirst();
    void judgeFirst(const NotebookHandOver& answer);
    void takeOverOrRetry(NotebookHandOver::Outcome outcome);
    void carryOutFirst();
    void retryFirst(std::chrono::milliseconds delay);
    void finishFirst(const NotebookVerdict& verdict);

    // In the order in which they are needed: what is declared first ends last.
    std::string m_folder;
    Scheduler& m_scheduler;
    std::string m_problem; ///< Of the last claim that failed.
    std::optional<NotebookLock> m_lock;
    std::unique_ptr<FileWorker> m_worker;
    std::unique_ptr<NotebookStore> m_store; ///< While this program is the owner.
    std::unique_ptr<NotebookBusMirror> m_mirror; ///< While another one is.
    std::optional<NotebookBus> m_bus;
    std::unique_ptr<NotebookBusService> m_service;
    std::unique_ptr<NotebookBusClient> m_client;
    std::deque<Request> m_requests; ///< The first one is under way.
    TimerHandle m_retry;
};

} // namespace quorvell
