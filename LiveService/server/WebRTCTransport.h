// SPDX-License-Identifier: MIT
// A client over WebRTC: texts on the channel of events, sound on tracks.
#pragma once

#include "LiveService/server/SessionTransport.h"
#include "LiveService/turns/TurnDetector.h"
#include "Media/webrtc/WebRTCPeer.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorvell {

class WebRTCTransport : public QObject, public SessionTransport {
public:
    /// Over: nothing can be reached at the addresses in the answer; a fault that is made on purpose.
    enum class Way { open, blocked };
    using AnswerReady = std::function<void(const std::string& sdp)>;
    using Opened = std::function<void()>;
    using Failed = std::function<void(const std::string& problem)>;

    static constexpr std::chrono::milliseconds closePatience{300}; ///< For the last texts to leave.
    /// A reply is handed out at the pace at which it is heard, a fifth of a second ahead; what comes beyond is dropped.
    static constexpr std::chrono::milliseconds mostQueuedSound{3'000};
    /// More than the quiet that ends a turn; else the detector would have to wait for a client that may be held up.
    static constexpr std::chrono::milliseconds quietReported = TurnPatience::longest + std::chrono::milliseconds(100);

    WebRTCTransport(Way way, WebRTCPeerOptions::Reach reach);

    void begin(Reports reports) override;
    /// Answers the offer. After `answerReady` `opened` comes once texts can be sent; else `failed`, once.
    void answer(std::string_view offer, AnswerReady answerReady, Opened opened, Failed failed);
    void send(const std::string& text) override;
    void sendSound(const std::vector<std::int16_t>& samples) override;
    void dropSound() override;
    void close(int code, std::string_view reason) override;
    void abort() override;
    void freeze() override;

private:
    WebRTCPeer::Reports peerReports();
    void takeAnswer(const std::string& sdp);
    void takeState(WebRTCPeer::State state);
    void lose();

    Way m_way;
    WebRTCPeerOptions::Reach m_reach;
    Reports m_reports;
    AnswerReady m_answerReady;
    Opened m_opened;
    Failed m_failed;
    bool m_isFrozen = false;
    bool m_isLost = false;
    std::unique_ptr<WebRTCPeer> m_peer; ///< Last: what it reports uses all of the above.
};

} // namespace quorvell
