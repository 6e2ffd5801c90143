// SPDX-License-Identifier: MIT
// The stages that every live connection goes through, its time limits, and the one report of its end.
#pragma once

#include "Quorvell/connections/access/LiveAccessSource.h"
#include "Quorvell/connections/life/ConnectionFailure.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread. The owner's destruction ends it at any moment: what was put off is forgotten.
class ConnectionLife {
public:
    enum class Stage { unopened, locating, opening, starting, started, closing, closed };

    /// `letGo` releases the transport, just before the end is reported.
    ConnectionLife(LiveAccessSource& source, LiveConnectionObserver& observer, std::function<void()> letGo);

    Stage stage() const { return m_stage; }
    bool is(Stage stage) const { return m_stage == stage; }
    void enter(Stage stage) { m_stage = stage; }
    const LiveAccess& access() const { return m_access; }

    /// Looks for the service, and then `found`, from the event loop. A second call does nothing.
    void locate(std::function<void()> found);
    /// Runs from the event loop unless the connection has ended by then.
    void later(std::function<void()> action, std::chrono::milliseconds delay = {});
    /// One at a time: the new limit takes the old one's place.
    void startDeadline(std::chrono::milliseconds limit, std::function<void()> missed);
    void stopDeadline() { m_deadline.stop(); }

    /// A service that talks before the session has started, or after its end, is not listened to. What is for the log
    /// waits for the start: before that, nobody knows which conversation it belongs to. Whoever repeats the key is not
    /// repeated: it is blanked out of all that is told or written.
    void report(const LiveServerEvent& event);
    void reportWritten(const std::string& text);
    void reportWriting(const std::string& delta);
    void fail(const ConnectionFailure& failure) { finish(failure.closure(m_access)); }
    void finish(const LiveClosure& closure);

private:
    std::string withoutKey(std::string text) const;

    LiveAccessSource& m_source;
    LiveConnectionObserver& m_observer;
    std::function<void()> m_letGo;
    Stage m_stage = Stage::unopened;
    LiveAccess m_access;
    std::vector<live_event::Diagnostic> m_early; ///< Diagnostics of before the start.
    std::function<void()> m_missed;
    QTimer m_deadline;
    QObject m_context; ///< Receives what comes later; goes first.
};

} // namespace quorvell
