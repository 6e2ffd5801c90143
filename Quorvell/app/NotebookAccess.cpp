#include "Quorvell/app/NotebookAccess.h"

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

void NotebookAccess::add(Note note, NotebookCallback done)
{
    if (m_store && m_requests.empty())
        return m_store->add(std::move(note), std::move(done));
    std::string id = note.id;
    enqueue({.newNote = std::move(note), .id = std::move(id), .change = nullptr, .done = std::move(done), .sent = {}});
}

void NotebookAccess::update(const std::string& id, std::function<void(Note&)> change, NotebookCallback done)
{
    if (m_store && m_requests.empty())
        return m_store->update(id, std::move(change), std::move(done));
    enqueue({.newNote = {}, .id = id, .change = std::move(change), .done = std::move(done), .sent = {}});
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
    NotebookStore::Opened opened = NotebookStore::open(m_folder, *m_worker, [this] { return m_scheduler.wallClock(); });
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
    m_mirror = nullptr;
    return Claim::owner;
}

bool NotebookAccess::findOwner()
{
    if (!m_bus || !m_bus->hasOwner())
        return false;
    m_client = std::make_unique<NotebookBusClient>(*m_bus);
    m_mirror = std::make_unique<NotebookBusMirror>(m_folder, *m_worker, m_scheduler);
    return true;
}

void NotebookAccess::enqueue(Request request)
{
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
    if (request.newNote) {
        request.sent = cleanedNote(*request.newNote);
        return m_client->add(*request.sent, judge);
    }
    const auto base = m_mirror->note(request.id);
    if (!base && !std::exchange(request.hasLookedAgain, true))
        return m_mirror->read([this] { retryFirst(std::chrono::milliseconds(0)); });
    if (!base)
        return finishFirst(failed("There is no note with that id any more. Look it up again."));
    Note changed = *base;
    request.change(changed);
    changed.id = base->id;
    request.sent = cleanedNote(std::move(changed));
    m_client->update(*request.sent, base->updated, judge);
}

void NotebookAccess::judgeFirst(const NotebookHandOver& answer)
{
    if (answer.note)
        m_mirror->put(*answer.note);
    switch (answer.outcome) {
    case Outcome::stored:
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
    const Request& request = m_requests.front();
    const auto finish = [this](const NotebookVerdict& verdict) { finishFirst(verdict); };
    if (holdsAlready(m_store->note(request.id), request.sent))
        finishFirst(stored);
    else if (request.newNote)
        m_store->add(*request.newNote, finish);
    else
        m_store->update(request.id, request.change, finish);
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
