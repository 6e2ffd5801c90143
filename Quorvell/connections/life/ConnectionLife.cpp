// SPDX-License-Identifier: MIT
#include "Quorvell/connections/life/ConnectionLife.h"

#include "QuorvellCore/text/Secrets.h"

#include <QPointer>

#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostEarly = 16;

} // namespace

ConnectionLife::ConnectionLife(LiveAccessSource& source, LiveConnectionObserver& observer, std::function<void()> letGo)
    : m_source(source)
    , m_observer(observer)
    , m_letGo(std::move(letGo))
{
    m_deadline.setSingleShot(true);
    QObject::connect(&m_deadline, &QTimer::timeout, &m_context, [this] {
        if (const auto missed = std::exchange(m_missed, nullptr))
            missed();
    });
}

void ConnectionLife::locate(std::function<void()> found)
{
    if (m_stage != Stage::unopened)
        return;
    m_stage = Stage::locating;
    // Later, so that nothing is reported from inside this call even when the service is found at once.
    later([this, found = std::move(found)] {
        m_source.find([this, found, guard = QPointer<QObject>(&m_context)](const LiveAccessSource::Found& answer) {
            if (!guard || m_stage != Stage::locating)
                return;
            if (!answer.access)
                return finish({LiveClosure::abnormal, "no service", false, answer.problem});
            m_access = *answer.access;
            found();
        });
    });
}

void ConnectionLife::later(std::function<void()> action, std::chrono::milliseconds delay)
{
    QTimer::singleShot(delay, &m_context, [this, action = std::move(action)] {
        if (m_stage != Stage::closed)
            action();
    });
}

void ConnectionLife::startDeadline(std::chrono::milliseconds limit, std::function<void()> missed)
{
    m_missed = std::move(missed);
    m_deadline.start(limit);
}

void ConnectionLife::report(const LiveServerEvent& event)
{
    if (m_stage == Stage::started) {
        if (const auto* error = std::get_if<live_event::ServerError>(&event)) {
            live_event::ServerError told = *error;
            told.message = withoutKey(std::move(told.message));
            m_observer.liveEventReceived(told);
        } else {
            m_observer.liveEventReceived(event);
        }
        for (const live_event::Diagnostic& early : std::exchange(m_early, {}))
            m_observer.liveEventReceived(early);
    } else if (const auto* forTheLog = std::get_if<live_event::Diagnostic>(&event);
               forTheLog && m_early.size() < mostEarly) {
        m_early.push_back(*forTheLog);
    }
}

void ConnectionLife::reportWritten(const std::string& text)
{
    if (m_stage == Stage::started)
        m_observer.liveReplyWritten(withoutKey(text));
}

void ConnectionLife::reportWriting(const std::string& delta)
{
    if (m_stage == Stage::started)
        m_observer.liveReplyGrew(delta);
}

std::string ConnectionLife::withoutKey(std::string text) const
{
    return Secrets{{m_access.key}}.blanked(std::move(text));
}

void ConnectionLife::finish(const LiveClosure& closure)
{
    if (m_stage == Stage::closed)
        return;
    m_stage = Stage::closed;
    m_deadline.stop();
    // Later, because a timer or the transport may still be on the way out of its own report.
    QTimer::singleShot(0, &m_context, [this, closure] {
        m_letGo();
        m_observer.liveConnectionClosed(closure);
    });
}

} // namespace quorvell
