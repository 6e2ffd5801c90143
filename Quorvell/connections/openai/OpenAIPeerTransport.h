// SPDX-License-Identifier: MIT
// Sound as media over WebRTC, events over its data channel.
#pragma once

#include "Media/webrtc/WebRTCPeer.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/openai/OpenAITransport.h"
#include "Quorvell/connections/web/WebExchange.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>

#include <memory>

namespace quorvell {

/// The session is asked for by a POST that carries our description and is answered with the service's.
class OpenAIPeerTransport : public OpenAITransport {
public:
    OpenAIPeerTransport(Reports reports, LiveTimeLimits limits);

    void open(const LiveAccess& access, const OpenAILiveSetupOptions& options) override;
    void send(std::string_view text) override;
    std::size_t largestText() const override { return WebRTCPeer::largestText; }
    void sendSound(std::span<const std::uint8_t> pcm) override { m_peer->sendSound(pcm); }
    void close() override;

private:
    void askForSession(const std::string& offer);
    void takeAnswer();
    void channelOpened();
    void stateChanged(WebRTCPeer::State state);
    void wait(std::chrono::milliseconds limit, ConnectionFailure::Kind otherwise);
    void end(const ConnectionFailure& failure);

    Reports m_reports;
    LiveTimeLimits m_limits;
    LiveAccess m_access;
    OpenAILiveSetupOptions m_options;
    std::string m_answer; ///< Of the POST, as far as it has come.
    bool m_isOpen = false;
    bool m_hasEnded = false;
    ConnectionFailure::Kind m_otherwise = ConnectionFailure::Kind::wentSilent; ///< When the waiting is in vain.
    QTimer m_waiting;
    QNetworkAccessManager m_web; ///< Of this session only: no dead line from before a sleep of the computer is tried.
    std::unique_ptr<WebExchange> m_exchange;
    std::unique_ptr<WebRTCPeer> m_peer;
    QObject m_context; ///< Receives what comes later; goes first.
};

} // namespace quorvell
