// SPDX-License-Identifier: MIT
#include "Quorvell/handover/NotebookAccess.h"

#include "Quorvell/files/Folder.h"
#include "Quorvell/notebook/NoteCleaning.h"

#include <QThread>

#include <utility>

namespace quorvell {

namespace {

using Outcome = NotebookHandOver::Outcome;

constexpr std::chrono::milliseconds pauseBetweenLooks{50};
constexpr int maximumAttempts = 10; ///< Half a second in all, in which a program starts or ends.

const NotebookVerdict stored{.isStored = true, .problem = ""};

constexpr const char* busLostSentence =
    "The message bus no longer answers, so other programs cannot change the notebook while this one runs. End this "
    "program, and start it again from your desktop session.";

NotebookVerdict failed(std::string problem)
{
    return {.isStored = false, .problem = std::move(problem)};
}

std::string unansweredSentence(const std::string& folder)
{
    return "The program that keeps the notebook in " + folder
        + " did not answer in time, so it is not certain that the note was stored. Look it up before you try again; "
          "when "
          "this goes on, close that program.";
}

/// True when `known` is what was to be stored, whenever that was done.
bool holdsAlready(const std::optional<Note>& known, const std::optional<Note>& wanted)
{
    if (!known || !wanted)
        return false;
    Note atTheSameTime = *wanted;
    atTheSameTime.updated = known->updated;
    return *known == atTheSameTime;
}

} // namespace

OpenedNotebook openNotebook(const ProgramEnvironment& environment, Scheduler& scheduler)
{
    // First, because the bus name is that of the folder it really is.
    if (const FileProblem problem = makeFolder(environment.notebookFolder); problem != FileProblem::none)
        return {nullptr, problemSentence(problem, environment.notebookFolder)};
    auto bus = environment.hasSessionBus ? NotebookBus::connect(environment.notebookFolder) : std::nullopt;
    auto access = std::make_unique<NotebookAccess>(environment.notebookFolder, scheduler, std::move(bus));
    std::string problem = access->open();
    if (!problem.empty())
        return {nullptr, std::move(problem)};
    return {std::move(access), ""};
}

NotebookAccess::NotebookAccess(std::string folder, Scheduler& scheduler, std::optional<NotebookBus> bus)
    : m_folder(std::move(folder))
    , m_scheduler(scheduler)
    , m_worker(std::make_unique<FileWorker>(
          [&scheduler](std::function<void()> action) { scheduler.post(std::move(action)); }))
    , m_bus(std::move(bus))
{
}

NotebookAccess::~NotebookAccess() = default;

std::string NotebookAccess::open()
{
    for (int attempt = 0; attempt < maximumAttempts; ++attempt) {
        switch (claim()) {
        case Claim::owner:
            return "";
        case Claim::impossible:
            return m_problem;
        case Claim::heldElsewhere:
            if (findOwner())
                return "";
        }
        QThread::msleep(pauseBetweenLooks.count());
    }
    return m_problem;
}

const std::vector<Note>& NotebookAccess::notes() const
{
    static const std::vector<Note> none;
    if (m_store)
        return m_store->notes();
    return m_mirror ? m_mirror->notes() : none;
}

std::optional<Note> NotebookAccess::note(const std::string& id) const
{
    if (m_store)
        return m_store->note(id);
    return m_mirror ? m_mirror->note(id) : std::nullopt;
}

std::optional<std::string> NotebookAccess::fileURL(const std::string& id) const
{
    if (m_store)
        return m_store->fileURL(id);
    const auto name = m_mirror ? m_mirror->fileName(id) : std::nullopt;
    return name ? std::optional(m_folder + "/" + *name) : std::nullopt;
}

void NotebookAccess::history(const std::string& id, HistoryCallback done)
{
    if (m_store)
        return m_store->history(id, std::move(done));
    m_worker->run([folder = m_folder, id] { return NoteHistory(folder).versions(id); }, std::move(done));
}

void NotebookAccess::add(Note note, NotebookCallback done)
{
    std::string id = note.id;
    hand({.kind = Kind::add, .id = std::move(id), .newNote = std::move(note), .done = std::move(done)});
}

void NotebookAccess::update(const std::string& id, Change change, NotebookCallback done)
{
    hand({.kind = Kind::update, .id = id, .change = std::move(change), .done = std::move(done)});
}

void NotebookAccess::edit(const std::string& id, Change change, NotebookCallback done)
{
    hand({.kind = Kind::edit, .id = id, .change = std::move(change), .done = std::move(done)});
}

void NotebookAccess::delete_(const std::string& id, NotebookCallback done)
{
    hand({.kind = Kind::delete_, .id = id, .done = std::move(done)});
}

void NotebookAccess::forgetAll(NotebookCallback done)
{
    hand({.kind = Kind::forgetAll, .done = std::move(done)});
}

void NotebookAccess::savePicture(const std::string& id, std::string picture, NotebookCallback done)
{
    hand({.kind = Kind::savePicture, .id = id, .picture = std::move(picture), .done = std::move(done)});
}

void NotebookAccess::moveNotebook(const std::string& folder, Entering enter, NotebookCallback done)
{
    const auto refuse = [this, done](std::string problem) {
        m_scheduler.post([done, problem = std::move(problem)] { done(failed(problem)); });
    };
    if (!m_store || !m_requests.empty())
        return refuse("Another program keeps the notebook just now. Close it, then move the notebook.");
    NotebookLock::Attempt attempt = NotebookLock::take(folder);
    if (!attempt.lock)
        return refuse(attempt.problem);
    const auto lock = std::make_shared<NotebookLock>(std::move(*attempt.lock));
    m_store->moveNotebook(folder, std::move(enter),
        [this, life = std::weak_ptr(m_life), lock, folder, done](const NotebookVerdict& verdict) {
            NotebookVerdict told = verdict;
            if (!life.expired() && verdict.isStored)
                told.remark = finishMove(std::move(*lock), folder);
            done(told);
        });
}

/// From now on this program is found as the owner of the new folder. Gives a sentence where it is not.
std::string NotebookAccess::finishMove(NotebookLock lock, const std::string& folder)
{
    m_folder = folder;
    m_lock = std::move(lock);
    if (!m_bus)
        return {};
    m_service = nullptr;
    auto bus = NotebookBus::connect(folder);
    m_bus.reset();
    if (!bus)
        return busLostSentence;
    m_bus.emplace(std::move(*bus));
    m_service = std::make_unique<NotebookBusService>(*m_bus, *m_store);
    return m_bus->claimName() == NotebookBus::Claim::granted ? "" : busLostSentence;
}

NotebookAccess::Claim NotebookAccess::claim()
{
    NotebookLock::Attempt attempt = NotebookLock::take(m_folder);
    m_problem = attempt.problem;
    switch (attempt.outcome) {
    case NotebookLock::Outcome::heldElsewhere:
        return Claim::heldElsewhere;
    case NotebookLock::Outcome::impossible:
        return Claim::impossible;
    case NotebookLock::Outcome::taken:
        break;
    }
    NotebookStore::Opened opened = NotebookStore::open(m_folder, *m_worker, m_scheduler, {&m_trash, &m_pictures});
    if (!opened.store) {
        m_problem = std::move(opened.problem);
        return Claim::impossible;
    }
    if (m_bus) {
        // There before the name is, so that nobody calls in vain.
        auto service = std::make_unique<NotebookBusService>(*m_bus, *opened.store);
        // A bus that does not answer is as good as none: then the lock alone decides.
        if (m_bus->claimName() == NotebookBus::Claim::heldElsewhere) {
            m_problem = "The notebook in " + m_folder + " is just being given up by another program. Try again.";
            return Claim::heldElsewhere;
        }
        m_service = std::move(service);
    }
    m_lock = std::move(attempt.lock);
    m_store = std::move(opened.store);
    const auto before = std::exchange(m_mirror, nullptr);
    m_observation = m_store->observe([this](const NotebookChanges& changes) { announce(changes); });
    m_store->watch();
    if (before)
        announceTakeOver(*before);
    return Claim::owner;
}

/// What the owner before did last may not have been seen here; and who fires reminders must hear that it is us now.
void NotebookAccess::announceTakeOver(const NotebookBusMirror& before) const
{
    NotebookChanges news;
    for (const Note& note : m_store->notes())
        if (before.note(note.id) != note)
            news.changed.push_back(note.id);
    for (const Note& note : before.notes())
        if (!m_store->note(note.id))
            news.gone.push_back(note.id);
    announce(news);
}

bool NotebookAccess::findOwner()
{
    if (!m_bus || !m_bus->hasOwner())
        return false;
    m_client = std::make_unique<NotebookBusClient>(*m_bus);
    m_mirror = std::make_unique<NotebookBusMirror>(
        m_folder, *m_worker, m_scheduler, [this](const NotebookChanges& changes) { announce(changes); });
    m_ownerWatch = std::make_unique<QDBusServiceWatcher>(
        m_bus->name(), m_bus->connection(), QDBusServiceWatcher::WatchForUnregistration);
    const auto look = [this] { m_takeOver = m_scheduler.after(pauseBetweenLooks, [this] { takeOver(); }); };
    QObject::connect(m_ownerWatch.get(), &QDBusServiceWatcher::serviceUnregistered, m_ownerWatch.get(), look);
    // Whether the owner ends then, too, only its lock tells.
    m_busEnd = std::make_unique<BusSignals>(
        m_bus->connection(), BusSignals::Kind::busEnded(), [look](const QDBusMessage&) { look(); });
    return true;
}

/// The owner ended, and nobody may want to change anything: yet somebody has to fire the reminders.
void NotebookAccess::takeOver()
{
    constexpr std::chrono::seconds pauseBetweenTries{1}; // of a folder that another program still holds
    const bool isSettled = m_store || m_bus->hasOwner();
    if (!isSettled && (!m_requests.empty() || claim() != Claim::owner))
        m_takeOver = m_scheduler.after(pauseBetweenTries, [this] { takeOver(); });
}

void NotebookAccess::hand(Request request)
{
    if (m_store && m_requests.empty())
        return carryOut(std::move(request));
    m_requests.push_back(std::move(request));
    // Never within this call, so that an answer never comes before it returns.
    if (m_requests.size() == 1)
        retryFirst(std::chrono::milliseconds(0));
}

void NotebookAccess::sendFirst()
{
    if (m_store)
        return carryOutFirst();
    Request& request = m_requests.front();
    const auto judge = [this](const NotebookHandOver& answer) { judgeFirst(answer); };
    switch (request.kind) {
    case Kind::add:
        request.sent = cleanedNote(*request.newNote);
        return m_client->add(*request.sent, judge);
    case Kind::update:
    case Kind::edit:
        return sendChange(request);
    case Kind::delete_:
        return m_client->delete_(request.id, judge);
    case Kind::forgetAll:
        return m_client->forgetAll(judge);
    case Kind::savePicture:
        return m_client->savePicture(request.id, request.picture, judge);
    }
}

void NotebookAccess::sendChange(Request& request)
{
    const auto base = m_mirror->note(request.id);
    if (!base && !std::exchange(request.hasLookedAgain, true))
        return m_mirror->read([this] { retryFirst(std::chrono::milliseconds(0)); });
    if (!base)
        return finishFirst(failed("There is no note with that id any more. Look it up again."));
    Note changed = *base;
    request.change(changed);
    changed.id = base->id;
    request.sent = cleanedNote(std::move(changed));
    const auto how =
        request.kind == Kind::edit ? NotebookBusClient::Changed::byHand : NotebookBusClient::Changed::byAssistant;
    m_client->update(*request.sent, base->updated, how, [this](const NotebookHandOver& answer) { judgeFirst(answer); });
}

void NotebookAccess::judgeFirst(const NotebookHandOver& answer)
{
    if (answer.note)
        m_mirror->put(*answer.note);
    switch (answer.outcome) {
    case Outcome::stored:
        if (m_requests.front().kind == Kind::delete_)
            m_mirror->remove(m_requests.front().id);
        return finishFirst(stored);
    case Outcome::refused:
        return finishFirst(failed(answer.problem));
    case Outcome::changed:
        // The change is made again on the version that now stands, as the owner itself would have made it.
        if (++m_requests.front().attempts < maximumAttempts)
            return retryFirst(std::chrono::milliseconds(0));
        return finishFirst(failed(answer.problem));
    case Outcome::ownerGone:
    case Outcome::noAnswer:
        return takeOverOrRetry(answer.outcome);
    }
}

void NotebookAccess::takeOverOrRetry(Outcome outcome)
{
    switch (claim()) {
    case Claim::owner:
        return carryOutFirst();
    case Claim::impossible:
        return finishFirst(failed(m_problem));
    case Claim::heldElsewhere:
        break;
    }
    if (outcome == Outcome::noAnswer)
        return finishFirst(failed(unansweredSentence(m_folder)));
    if (++m_requests.front().attempts < maximumAttempts)
        return retryFirst(pauseBetweenLooks);
    finishFirst(failed(m_problem));
}

/// As the owner. The one before may have stored the change and ended before it could say so.
void NotebookAccess::carryOutFirst()
{
    Request request = m_requests.front();
    const auto known = m_store->note(request.id);
    if (holdsAlready(known, request.sent) || (request.kind == Kind::delete_ && request.attempts > 0 && !known))
        return finishFirst(stored);
    request.done = [this](const NotebookVerdict& verdict) { finishFirst(verdict); };
    carryOut(std::move(request));
}

void NotebookAccess::carryOut(Request request)
{
    switch (request.kind) {
    case Kind::add:
        return m_store->add(std::move(*request.newNote), std::move(request.done));
    case Kind::update:
        return m_store->update(request.id, std::move(request.change), std::move(request.done));
    case Kind::edit:
        return m_store->edit(request.id, std::move(request.change), std::move(request.done));
    case Kind::delete_:
        return m_store->delete_(request.id, std::move(request.done));
    case Kind::forgetAll:
        return m_store->forgetAll(std::move(request.done));
    case Kind::savePicture:
        return m_store->savePicture(request.id, std::move(request.picture), std::move(request.done));
    }
}

void NotebookAccess::retryFirst(std::chrono::milliseconds delay)
{
    m_retry = m_scheduler.after(delay, [this] { sendFirst(); });
}

void NotebookAccess::finishFirst(const NotebookVerdict& verdict)
{
    const NotebookCallback done = std::move(m_requests.front().done);
    m_requests.pop_front();
    if (!m_requests.empty())
        retryFirst(std::chrono::milliseconds(0));
    // Last, because it may ask for further changes or end this notebook.
    done(verdict);
}

} // namespace quorvell
