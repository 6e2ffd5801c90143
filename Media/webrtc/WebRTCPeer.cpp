// SPDX-License-Identifier: MIT
#include "Media/webrtc/WebRTCPeer.h"

#include "Media/webrtc/CallAudio.h"
#include "Media/webrtc/CallEngine.h"
#include "Media/webrtc/CallReports.h"
#include "QuorvellCore/text/LowerCase.h"

#include <api/audio_options.h>
#include <api/data_channel_interface.h>
#include <api/jsep.h>
#include <api/make_ref_counted.h>
#include <api/peer_connection_interface.h>
#include <api/units/time_delta.h>
#include <rtc_base/thread.h>

#include <atomic>
#include <utility>

namespace quorvell {

namespace {

using Library = webrtc::PeerConnectionInterface;

/// The addresses of all networks come in one go. The library then looks for further kinds, 50 ms each, of which there
/// are none without servers that help, and for TCP, where this side calls and need not be known.
constexpr webrtc::TimeDelta addressesTogether = webrtc::TimeDelta::Millis(10);
constexpr std::size_t mostWaitingBytes = 8 * 1024 * 1024; ///< The library gives a channel up at 16 MiB.

/// Says once how it went, on the signalling thread.
class Applied : public webrtc::SetLocalDescriptionObserverInterface,
                public webrtc::SetRemoteDescriptionObserverInterface {
public:
    using Then = std::function<void(const webrtc::RTCError& error)>;
    explicit Applied(Then then)
        : m_then(std::move(then))
    {
    }
    void OnSetLocalDescriptionComplete(webrtc::RTCError error) override { m_then(error); }
    void OnSetRemoteDescriptionComplete(webrtc::RTCError error) override { m_then(error); }

private:
    Then m_then;
};

WebRTCPeer::State stateOf(Library::PeerConnectionState state)
{
    switch (state) {
    case Library::PeerConnectionState::kNew:
    case Library::PeerConnectionState::kConnecting:
        return WebRTCPeer::State::connecting;
    case Library::PeerConnectionState::kConnected:
        return WebRTCPeer::State::connected;
    case Library::PeerConnectionState::kDisconnected:
        return WebRTCPeer::State::disconnected;
    case Library::PeerConnectionState::kFailed:
        return WebRTCPeer::State::failed;
    case Library::PeerConnectionState::kClosed:
        return WebRTCPeer::State::closed;
    }
    return WebRTCPeer::State::failed;
}

/// The sound that is sent was cleaned where it was recorded, and a synthetic voice needs no cleaning.
cricket::AudioOptions untouchedSound()
{
    cricket::AudioOptions options;
    options.echo_cancellation = false;
    options.auto_gain_control = false;
    options.noise_suppression = false;
    options.highpass_filter = false;
    return options;
}

/// Codec names may come in capital letters.
bool hasOpusAndChannel(std::string_view sdp)
{
    const std::string lowered = asciiLowerCased(sdp);
    return lowered.find("opus/48000") != std::string::npos && lowered.find("m=application") != std::string::npos;
}

} // namespace

/// Made and ended on the main thread; the library calls on its signalling thread.
class WebRTCPeer::Link : public webrtc::PeerConnectionObserver, public webrtc::DataChannelObserver {
public:
    Link(const WebRTCPeerOptions& options, Reports reports, Post post);
    ~Link() override;

    void takeDescription(std::string_view sdp);
    bool sendText(std::string_view text);
    CallAudio& audio() { return m_audio; }
    void stall();

    // The connection
    void OnSignalingChange(Library::SignalingState) override { }
    void OnDataChannel(rtc::scoped_refptr<webrtc::DataChannelInterface> channel) override;
    void OnConnectionChange(Library::PeerConnectionState state) override { m_reports->stateChanged(stateOf(state)); }
    void OnIceGatheringChange(Library::IceGatheringState state) override;
    void OnIceCandidate(const webrtc::IceCandidateInterface*) override;
    // The channel
    void OnStateChange() override;
    void OnMessage(const webrtc::DataBuffer& message) override;

private:
    bool createConnection();
    bool addVoice();
    bool openChannel();
    void describeOurselves();
    void reportDescription();
    void useChannel(rtc::scoped_refptr<webrtc::DataChannelInterface> channel);

    WebRTCPeerOptions m_options;
    std::shared_ptr<CallReports> m_reports;
    CallAudio m_audio;
    CallEngine m_engine;
    rtc::scoped_refptr<Library> m_connection;
    std::atomic<bool> m_isStalled{false}; ///< Until the end; the network thread waits for its change.
    // Of the signalling thread:
    rtc::scoped_refptr<webrtc::DataChannelInterface> m_channel;
    bool m_hasAddress = false;
    bool m_isDescribed = false; ///< Nothing more to say of ourselves, or nobody to say it to.
};

WebRTCPeer::Link::Link(const WebRTCPeerOptions& options, Reports reports, Post post)
    : m_options(options)
    , m_reports(std::make_shared<CallReports>(std::move(reports), std::move(post)))
    , m_audio(options, [inbox = m_reports](std::vector<std::uint8_t> pcm) { inbox->soundReceived(std::move(pcm)); })
    , m_engine(options.reach, m_audio)
{
    const bool offers = options.role == WebRTCPeerOptions::Role::offers;
    if (!createConnection() || !addVoice() || (offers && !openChannel()))
        m_reports->failed("the WebRTC library could not be started");
    else if (offers)
        describeOurselves();
}

WebRTCPeer::Link::~Link()
{
    m_reports->end();
    m_isStalled = false;
    m_isStalled.notify_all();
    if (!m_connection)
        return;
    m_engine.signalling().BlockingCall([this] {
        m_isDescribed = true;
        if (m_channel) {
            m_channel->UnregisterObserver();
            m_channel->Close();
        }
        m_channel = nullptr;
    });
    m_connection->Close();
    m_connection = nullptr;
}

bool WebRTCPeer::Link::createConnection()
{
    if (!m_engine.factory())
        return false;
    Library::RTCConfiguration settings;
    settings.sdp_semantics = webrtc::SdpSemantics::kUnifiedPlan;
    settings.bundle_policy = Library::kBundlePolicyMaxBundle;
    settings.audio_jitter_buffer_fast_accelerate = true;
    auto made = m_engine.factory()->CreatePeerConnectionOrError(settings, webrtc::PeerConnectionDependencies(this));
    if (made.ok())
        m_connection = made.MoveValue();
    return m_connection != nullptr;
}

bool WebRTCPeer::Link::addVoice()
{
    const auto source = m_engine.factory()->CreateAudioSource(untouchedSound());
    const auto track = m_engine.factory()->CreateAudioTrack("voice", source.get());
    return track && m_connection->AddTrack(track, {"quorvell"}).ok();
}

bool WebRTCPeer::Link::openChannel()
{
    const webrtc::DataChannelInit settings; // Ordered and reliable.
    auto made = m_connection->CreateDataChannelOrError(std::string(channelName), &settings);
    if (!made.ok())
        return false;
    m_engine.signalling().BlockingCall([&] { useChannel(made.MoveValue()); });
    return true;
}

void WebRTCPeer::Link::describeOurselves()
{
    const auto applied = rtc::make_ref_counted<Applied>([this](const webrtc::RTCError& error) {
        if (!error.ok())
            return m_reports->failed(std::string("no description of this side: ") + error.message());
        m_engine.signalling().PostDelayedTask(
            [this] { reportDescription(); }, webrtc::TimeDelta::Millis(m_options.gathering.count()));
    });
    m_connection->SetLocalDescription(applied);
}

void WebRTCPeer::Link::OnIceGatheringChange(Library::IceGatheringState state)
{
    if (state == Library::kIceGatheringComplete)
        reportDescription();
}

void WebRTCPeer::Link::OnIceCandidate(const webrtc::IceCandidateInterface*)
{
    if (std::exchange(m_hasAddress, true))
        return;
    // On this computer any one address is as good as all.
    const bool isHere = m_options.reach == WebRTCPeerOptions::Reach::thisComputer;
    m_engine.signalling().PostDelayedTask(
        [this] { reportDescription(); }, isHere ? webrtc::TimeDelta::Zero() : addressesTogether);
}

void WebRTCPeer::Link::reportDescription()
{
    if (m_isDescribed)
        return;
    std::string text;
    const auto* description = m_connection->local_description();
    if (!description || !description->ToString(&text))
        return;
    m_isDescribed = true;
    m_reports->descriptionReady(std::move(text));
}

void WebRTCPeer::Link::takeDescription(std::string_view sdp)
{
    if (!m_connection)
        return;
    const bool isOffer = m_options.role == WebRTCPeerOptions::Role::answers;
    webrtc::SdpParseError error;
    auto description = sdp.size() > largestDescription
        ? nullptr
        : webrtc::CreateSessionDescription(
            isOffer ? webrtc::SdpType::kOffer : webrtc::SdpType::kAnswer, std::string(sdp), &error);
    if (!description)
        return m_reports->failed("the other side's description cannot be read: " + error.description);
    if (!hasOpusAndChannel(sdp))
        return m_reports->failed("the other side does not speak Opus or has no channel for texts");
    const auto applied = rtc::make_ref_counted<Applied>([this, isOffer](const webrtc::RTCError& failure) {
        if (!failure.ok())
            return m_reports->failed(std::string("the other side's description does not fit: ") + failure.message());
        if (isOffer)
            describeOurselves();
    });
    m_connection->SetRemoteDescription(std::move(description), applied);
}

void WebRTCPeer::Link::OnDataChannel(rtc::scoped_refptr<webrtc::DataChannelInterface> channel)
{
    if (!m_channel && channel->label() == channelName)
        useChannel(std::move(channel));
    else
        channel->Close();
}

void WebRTCPeer::Link::useChannel(rtc::scoped_refptr<webrtc::DataChannelInterface> channel)
{
    m_channel = std::move(channel);
    m_channel->RegisterObserver(this);
    if (m_channel->state() == webrtc::DataChannelInterface::kOpen)
        m_reports->channelOpened();
}

void WebRTCPeer::Link::OnStateChange()
{
    const auto state = m_channel->state();
    if (state == webrtc::DataChannelInterface::kOpen)
        m_reports->channelOpened();
    // The library says nothing else when the other side closes its connection.
    if (state == webrtc::DataChannelInterface::kClosed)
        m_reports->stateChanged(State::closed);
}

void WebRTCPeer::Link::OnMessage(const webrtc::DataBuffer& message)
{
    if (!message.binary)
        m_reports->textReceived({message.data.data<char>(), message.data.size()});
}

bool WebRTCPeer::Link::sendText(std::string_view text)
{
    if (!m_connection || text.size() > largestText)
        return false;
    const webrtc::DataBuffer message{rtc::CopyOnWriteBuffer(text.data(), text.size()), false};
    return m_engine.signalling().BlockingCall([&] {
        return m_channel && m_channel->state() == webrtc::DataChannelInterface::kOpen
            && m_channel->buffered_amount() < mostWaitingBytes && m_channel->Send(message);
    });
}

void WebRTCPeer::Link::stall()
{
    if (m_connection && !m_isStalled.exchange(true))
        m_engine.network().PostTask([this] { m_isStalled.wait(true); });
}

WebRTCPeer::WebRTCPeer(WebRTCPeerOptions options, Reports reports, Post post)
    : m_link(std::make_unique<Link>(options, std::move(reports), std::move(post)))
{
}

WebRTCPeer::~WebRTCPeer() = default;

void WebRTCPeer::takeDescription(std::string_view sdp)
{
    m_link->takeDescription(sdp);
}

bool WebRTCPeer::sendText(std::string_view text)
{
    return m_link->sendText(text);
}

bool WebRTCPeer::sendSound(std::span<const std::uint8_t> pcm)
{
    return m_link->audio().send(pcm);
}

void WebRTCPeer::dropSound()
{
    m_link->audio().dropUnsent();
}

std::chrono::milliseconds WebRTCPeer::unsentSound() const
{
    return std::chrono::milliseconds(m_link->audio().unsentSamples() * 1000 / sampleRate);
}

void WebRTCPeer::stall()
{
    m_link->stall();
}

} // namespace quorvell
