// SPDX-License-Identifier: MIT
#include "LiveService/server/WebRTCTransport.h"

#include "Media/audio/SampleBytes.h"

#include <QMetaObject>
#include <QTimer>

#include <sstream>
#include <utility>

namespace quorvell {

namespace {

/// The answer with addresses at which nobody listens: 192.0.2.0/24 is set aside for examples.
std::string leadingNowhere(const std::string& sdp)
{
    std::istringstream lines(sdp);
    std::string result;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("a=candidate:"))
            line = "a=candidate:1 1 udp 2113937151 192.0.2.1 9 typ host generation 0\r";
        result += line + "\n";
    }
    return result;
}

} // namespace

WebRTCTransport::WebRTCTransport(Way way, WebRTCPeerOptions::Reach reach)
    : m_way(way)
    , m_reach(reach)
{
}

void WebRTCTransport::begin(Reports reports)
{
    m_reports = std::move(reports);
}

void WebRTCTransport::answer(std::string_view offer, AnswerReady answerReady, Opened opened, Failed failed)
{
    m_answerReady = std::move(answerReady);
    m_opened = std::move(opened);
    m_failed = std::move(failed);
    const auto post = [this](std::function<void()> report) {
        QMetaObject::invokeMethod(this, std::move(report), Qt::QueuedConnection);
    };
    m_peer = std::make_unique<WebRTCPeer>(WebRTCPeerOptions{.role = WebRTCPeerOptions::Role::answers,
                                              .reach = m_reach,
                                              .mostQueuedSound = mostQueuedSound,
                                              .quietReported = quietReported},
        peerReports(), post);
    m_peer->takeDescription(offer);
}

WebRTCPeer::Reports WebRTCTransport::peerReports()
{
    WebRTCPeer::Reports reports;
    reports.descriptionReady = [this](const std::string& sdp) { takeAnswer(sdp); };
    reports.stateChanged = [this](WebRTCPeer::State state) { takeState(state); };
    reports.channelOpened = [this] { m_opened(); };
    reports.textReceived = [this](const std::string& text) { m_reports.textReceived(text); };
    reports.soundReceived = [this](const std::vector<std::uint8_t>& pcm) { m_reports.soundReceived(pcm); };
    reports.failed = [this](const std::string& problem) {
        m_failed(problem);
        lose();
    };
    return reports;
}

void WebRTCTransport::takeAnswer(const std::string& sdp)
{
    if (m_way == Way::open) {
        m_answerReady(sdp);
        return;
    }
    // A peer that is there would find the client by itself.
    m_peer.reset();
    m_answerReady(leadingNowhere(sdp));
}

void WebRTCTransport::takeState(WebRTCPeer::State state)
{
    if (state == WebRTCPeer::State::failed || state == WebRTCPeer::State::closed)
        lose();
}

void WebRTCTransport::send(const std::string& text)
{
    if (!m_peer || m_isFrozen)
        return;
    if (!m_peer->sendText(text))
        lose(); // A client that reads no faster than it is told things is let go.
}

void WebRTCTransport::sendSound(const std::vector<std::int16_t>& samples)
{
    if (m_peer && !m_isFrozen)
        m_peer->sendSound(bytesOfSamples(samples));
}

void WebRTCTransport::dropSound()
{
    if (m_peer)
        m_peer->dropSound();
}

void WebRTCTransport::close(int, std::string_view)
{
    QTimer::singleShot(closePatience, this, [this] { lose(); });
}

void WebRTCTransport::abort()
{
    lose();
}

void WebRTCTransport::freeze()
{
    m_isFrozen = true;
    if (m_peer)
        m_peer->stall();
}

void WebRTCTransport::lose()
{
    if (std::exchange(m_isLost, true))
        return;
    m_peer.reset();
    // Soon, not now: whoever is told ends this object.
    QMetaObject::invokeMethod(
        this, [this] { m_reports.lost(); }, Qt::QueuedConnection);
}

} // namespace quorvell
