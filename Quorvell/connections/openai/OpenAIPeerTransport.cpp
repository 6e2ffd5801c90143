// SPDX-License-Identifier: MIT
#include "Quorvell/connections/openai/OpenAIPeerTransport.h"

#include "Quorvell/connections/openai/FairPost.h"
#include "Quorvell/connections/web/ExchangeChoice.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr std::size_t largestAnswer = 1024 * 1024;

WebRTCPeerOptions optionsFor(const LiveAccess& access)
{
    WebRTCPeerOptions options;
    const bool isHere = ServiceAddress{access.endpoint.host, access.endpoint.security}.isThisComputer();
    options.reach = isHere ? WebRTCPeerOptions::Reach::thisComputer : WebRTCPeerOptions::Reach::network;
    // The microphone gives what it held back in one burst when somebody begins to speak, and half a minute of it after
    // a lost connection.
    options.backlog = WebRTCPeerOptions::Backlog::caughtUp;
    options.mostQueuedSound = std::chrono::seconds(40);
    return options;
}

} // namespace

OpenAIPeerTransport::OpenAIPeerTransport(Reports reports, LiveTimeLimits limits)
    : m_reports(std::move(reports))
    , m_limits(limits)
{
    m_waiting.setSingleShot(true);
    QObject::connect(&m_waiting, &QTimer::timeout, &m_context, [this] { end({m_otherwise}); });
}

void OpenAIPeerTransport::open(const LiveAccess& access, const OpenAILiveSetupOptions& options)
{
    m_access = access;
    m_options = options;
    WebRTCPeer::Reports reports;
    reports.descriptionReady = [this](const std::string& offer) { askForSession(offer); };
    reports.stateChanged = [this](WebRTCPeer::State state) { stateChanged(state); };
    reports.channelOpened = [this] { channelOpened(); };
    reports.textReceived = [this](const std::string& text) { m_reports.textReceived(text); };
    reports.soundReceived = [this](const std::vector<std::uint8_t>& pcm) { m_reports.soundReceived(pcm); };
    reports.failed = [this](const std::string& problem) { end({Kind::ownFault, 0, problem}); };
    wait(m_limits.toOpen, Kind::openedTooSlowly);
    m_peer = std::make_unique<WebRTCPeer>(optionsFor(access), std::move(reports), FairPost::make());
}

void OpenAIPeerTransport::askForSession(const std::string& offer)
{
    WebExchange::Reports reports;
    reports.received = [this](std::string_view bytes) { m_answer += bytes; };
    reports.ended = [this] { takeAnswer(); };
    reports.failed = [this](const ConnectionFailure& failure) { end(failure); };
    const WebRequest request = m_access.endpoint.webRTCRequest(m_access.key, m_options, offer);
    m_exchange = beginExchange(m_web, m_access.line, request, std::move(reports),
        WebExchange::Limits{m_limits.toOpen, m_limits.toOpen, largestAnswer});
}

void OpenAIPeerTransport::takeAnswer()
{
    const auto answer = OpenAILiveEndpoint::webRTCAnswer(m_answer);
    if (!answer)
        return end({Kind::unreadableAnswer});
    wait(m_limits.toConnectMedia, Kind::mediaBlocked);
    m_peer->takeDescription(answer->sdp);
}

void OpenAIPeerTransport::channelOpened()
{
    m_isOpen = true;
    m_waiting.stop();
    m_reports.opened();
}

void OpenAIPeerTransport::stateChanged(WebRTCPeer::State state)
{
    switch (state) {
    case WebRTCPeer::State::connecting:
        return;
    case WebRTCPeer::State::connected:
        if (m_isOpen)
            m_waiting.stop();
        return;
    case WebRTCPeer::State::disconnected:
        return m_isOpen ? wait(m_limits.disconnection, Kind::wentSilent) : void();
    case WebRTCPeer::State::failed:
        return end({m_isOpen ? Kind::wentSilent : Kind::mediaBlocked});
    case WebRTCPeer::State::closed:
        return end({Kind::closed, LiveClosure::abnormal, "the other side closed the call"});
    }
}

void OpenAIPeerTransport::send(std::string_view text)
{
    if (!m_peer->sendText(text))
        end({Kind::wentSilent}); // A message that is lost, such as a tool's result, would be waited for in vain.
}

void OpenAIPeerTransport::close()
{
    end({Kind::closed, LiveClosure::normal});
}

void OpenAIPeerTransport::wait(std::chrono::milliseconds limit, Kind otherwise)
{
    m_otherwise = otherwise;
    m_waiting.start(limit);
}

void OpenAIPeerTransport::end(const ConnectionFailure& failure)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_waiting.stop();
    // Later, because `close` must not report from inside; what else ends it comes from the event loop anyway.
    QTimer::singleShot(0, &m_context, [this, failure] { m_reports.closed(failure); });
}

} // namespace quorvell
