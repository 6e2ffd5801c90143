// SPDX-License-Identifier: MIT
// The way to the notebook for every program: as its owner where nobody else is, else through the owner.
#pragma once

#include "Quorvell/desktop/BusSignals.h"
#include "Quorvell/desktop/DesktopTrash.h"
#include "Quorvell/desktop/PictureFormats.h"
#include "Quorvell/handover/NotebookBus.h"
#include "Quorvell/handover/NotebookBusClient.h"
#include "Quorvell/handover/NotebookBusMirror.h"
#include "Quorvell/handover/NotebookBusService.h"
#include "Quorvell/handover/NotebookLock.h"
#include "Quorvell/notebook/NotebookStore.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <QDBusServiceWatcher>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct [[nodiscard]] OpenedNotebook {
    std::unique_ptr<FullNotebook> notebook;
    std::string problem; ///< When there is none: a sentence for the user that says what to do.
};

/// Needs a QCoreApplication; the scheduler, which runs on its event loop, outlives the notebook. Waits a moment where
/// another program seems to be starting or ending.
OpenedNotebook openNotebook(const ProgramEnvironment& environment, Scheduler& scheduler);

/// Whoever holds the folder's lock and, where there is a session bus, its name, owns the notebook and writes for
/// everybody. Another program hands its changes over; when the owner ends, it or another one becomes the owner. Main
/// thread.
class NotebookAccess final : public FullNotebook {
public:
    NotebookAccess(std::string folder, Scheduler& scheduler, std::optional<NotebookBus> bus);
    ~NotebookAccess() override;

    /// Becomes the owner or finds it. When neither is possible: why.
    [[nodiscard]] std::string open();
    bool isOwner() const override { return m_store != nullptr; }

    const std::vector<Note>& notes() const override;
    std::optional<Note> note(const std::string& id) const override;
    const std::string& folder() const override { return m_folder; }
    std::optional<std::string> fileURL(const std::string& id) const override;
    void history(const std::string& id, HistoryCallback done) override;

    /// A change that is handed over shows in the list once the owner has stored it.
    void add(Note note, NotebookCallback done) override;
    void update(const std::string& id, Change change, NotebookCallback done) override;
    void edit(const std::string& id, Change change, NotebookCallback done) override;
    void delete_(const std::string& id, NotebookCallback done) override;
    void forgetAll(NotebookCallback done) override;
    void savePicture(const std::string& id, std::string picture, NotebookCallback done) override;

    /// Only the owner can; whoever starts next must be told the new folder.
    void moveNotebook(const std::string& folder, Entering enter, NotebookCallback done) override;

private:
    enum class [[nodiscard]] Claim{owner, heldElsewhere, impossible};
    enum class Kind { add, update, edit, delete_, forgetAll, savePicture };

    /// One change on its way to the owner. They go one after another, so that each is based on what came before it.
    struct Request {
        Kind kind = Kind::add;
        std::string id{};
        std::optional<Note> newNote{}; ///< Of Kind::add.
        Change change{}; ///< Of update and edit.
        std::string picture{}; ///< Of savePicture.
        NotebookCallback done{};
        int attempts = 0;
        bool hasLookedAgain = false; ///< For a note that was not known here yet.
        std::optional<Note> sent{}; ///< What the owner was last asked to store.
    };

    Claim claim();
    void announceTakeOver(const NotebookBusMirror& before) const;
    bool findOwner();
    void takeOver();
    void hand(Request request);
    void sendFirst();
    void sendChange(Request& request);
    void judgeFirst(const NotebookHandOver& answer);
    void takeOverOrRetry(NotebookHandOver::Outcome outcome);
    void carryOutFirst();
    void carryOut(Request request);
    void retryFirst(std::chrono::milliseconds delay);
    void finishFirst(const NotebookVerdict& verdict);
    std::string finishMove(NotebookLock lock, const std::string& folder);

    // In the order in which they are needed: what is declared first ends last.
    std::string m_folder;
    Scheduler& m_scheduler;
    std::string m_problem; ///< Of the last claim that failed.
    DesktopTrash m_trash;
    PictureFormats m_pictures;
    std::optional<NotebookLock> m_lock;
    std::unique_ptr<FileWorker> m_worker;
    std::unique_ptr<NotebookStore> m_store; ///< While this program is the owner.
    std::unique_ptr<NotebookBusMirror> m_mirror; ///< While another one is.
    NotebookObservation m_observation;
    std::optional<NotebookBus> m_bus;
    std::unique_ptr<NotebookBusService> m_service;
    std::unique_ptr<NotebookBusClient> m_client;
    std::unique_ptr<QDBusServiceWatcher> m_ownerWatch; ///< While another program is the owner, as is the next.
    std::unique_ptr<BusSignals> m_busEnd;
    TimerHandle m_takeOver;
    std::deque<Request> m_requests; ///< The first one is under way.
    TimerHandle m_retry;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true);
};

} // namespace quorvell
