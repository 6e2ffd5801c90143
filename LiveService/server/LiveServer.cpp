#include "LiveService/server/LiveServer.h"

#include <QMetaObject>

#include <utility>

namespace quorvell {

LiveServer::LiveServer(Settings settings)
    : m_settings(std::move(settings))
    , m_speech(m_settings.makeSpeech)
    , m_gate(
          m_settings.token, [this] { return !m_stopped && m_sessions.size() < m_settings.mostSessions; },
          [this](std::unique_ptr<QWebSocket> socket) { openSession(std::move(socket)); })
{
}

LiveServer::~LiveServer()
{
    // Ends the threads that may still call back while this object can take the call; it is never delivered.
    m_sessions.clear();
}

void LiveServer::stop(std::function<void()> stopped)
{
    m_stopped = std::move(stopped);
    m_gate.stop();
    for (auto& [number, session] : m_sessions)
        session->shutDown();
    reportIfStopped();
}

void LiveServer::openSession(std::unique_ptr<QWebSocket> socket)
{
    const int number = ++m_lastNumber;
    const auto reach = [this, number](std::function<void(LiveServerSession&)> action) {
        later([this, number, action = std::move(action)] {
            const auto session = m_sessions.find(number);
            if (session != m_sessions.end())
                action(*session->second);
        });
    };
    LiveServerSession::Surroundings surroundings{m_settings.ids, m_settings.calendar, m_settings.wallClock, m_thinking,
        [this] { return m_speech.take(); }, reach, [this, number] { later([this, number] { endSession(number); }); }};
    m_sessions.emplace(number, std::make_unique<LiveServerSession>(std::move(socket), std::move(surroundings)));
}

void LiveServer::endSession(int number)
{
    const auto session = m_sessions.find(number);
    if (session == m_sessions.end())
        return;
    if (auto speech = session->second->releaseSpeech())
        m_speech.giveBack(std::move(speech));
    m_sessions.erase(session);
    reportIfStopped();
}

void LiveServer::reportIfStopped()
{
    if (m_stopped && m_sessions.empty())
        later(m_stopped);
}

/// From any thread: runs soon on the main thread, unless this object is gone by then.
void LiveServer::later(std::function<void()> action)
{
    QMetaObject::invokeMethod(this, std::move(action), Qt::QueuedConnection);
}

} // namespace quorvell
