// SPDX-License-Identifier: MIT
#include "BareCall.h"

#include "Media/webrtc/DrivenDevice.h"

#include <api/audio_codecs/builtin_audio_decoder_factory.h>
#include <api/audio_codecs/builtin_audio_encoder_factory.h>
#include <api/create_peerconnection_factory.h>
#include <api/data_channel_interface.h>
#include <api/jsep.h>
#include <api/make_ref_counted.h>
#include <api/peer_connection_interface.h>
#include <api/video_codecs/video_decoder_factory.h>
#include <api/video_codecs/video_encoder_factory.h>
#include <rtc_base/thread.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace quorvell {

namespace {

using Clock = std::chrono::steady_clock;
using Library = webrtc::PeerConnectionInterface;
using namespace std::chrono_literals;

constexpr Clock::duration patience = 10s;
constexpr std::int16_t toneLevel = 8000;
constexpr int audible = 1000;

/// When the call had come how far; told by the library's threads.
class Milestones {
public:
    void channelOpened()
    {
        const std::lock_guard lock(m_mutex);
        if (++m_openChannels == 2)
            m_opened = Clock::now();
        m_changed.notify_all();
    }
    void soundHeard()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_heard)
            m_heard = Clock::now();
        m_changed.notify_all();
    }
    std::optional<BareCall::Times> reached(Clock::time_point start)
    {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_until(lock, start + patience, [this] { return m_opened && m_heard; }))
            return std::nullopt;
        return BareCall::Times{*m_opened - start, *m_heard - start};
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_openChannels = 0;
    std::optional<Clock::time_point> m_opened;
    std::optional<Clock::time_point> m_heard;
};

enum class Role { offers, answers };

/// Sends a tone, and listens for one.
class ToneDevice : public DrivenDevice {
public:
    ToneDevice(Milestones& milestones, Role role)
        : m_milestones(milestones)
        , m_listens(role == Role::answers)
        , m_clock([this](const std::stop_token& stop) { run(stop); })
    {
        for (std::size_t index = 0; index < m_tone.size(); ++index)
            m_tone[index] = index / 24 % 2 == 0 ? toneLevel : std::int16_t{-toneLevel}; // 500 Hz
    }
    ~ToneDevice() override { m_clock = {}; }

private:
    void run(const std::stop_token& stop)
    {
        for (auto next = Clock::now(); !stop.stop_requested(); std::this_thread::sleep_until(next += 10ms))
            drive();
    }

    void give(webrtc::AudioTransport& transport) override
    {
        std::uint32_t unused = 0;
        transport.RecordedDataIsAvailable(
            m_tone.data(), m_tone.size(), sizeof(std::int16_t), 1, rate, 0, 0, 0, false, unused);
    }

    void take(webrtc::AudioTransport& transport) override
    {
        std::array<std::int16_t, frame> samples{};
        std::size_t given = 0;
        std::int64_t elapsed = 0;
        std::int64_t ntp = 0;
        transport.NeedMorePlayData(
            samples.size(), sizeof(std::int16_t), 1, rate, samples.data(), given, &elapsed, &ntp);
        if (m_listens && std::ranges::any_of(samples, [](std::int16_t sample) { return sample > audible; }))
            m_milestones.soundHeard();
    }

    static constexpr std::uint32_t rate = 24000;
    static constexpr std::size_t frame = rate / 100;

    Milestones& m_milestones;
    bool m_listens;
    std::array<std::int16_t, frame> m_tone{};
    std::jthread m_clock;
};

class Applied : public webrtc::SetLocalDescriptionObserverInterface,
                public webrtc::SetRemoteDescriptionObserverInterface {
public:
    explicit Applied(std::function<void()> then)
        : m_then(std::move(then))
    {
    }
    void OnSetLocalDescriptionComplete(webrtc::RTCError error) override { tell(error); }
    void OnSetRemoteDescriptionComplete(webrtc::RTCError error) override { tell(error); }

private:
    void tell(const webrtc::RTCError& error)
    {
        if (error.ok() && m_then)
            m_then();
    }
    std::function<void()> m_then;
};

class End : public webrtc::PeerConnectionObserver, public webrtc::DataChannelObserver {
public:
    End(Milestones& milestones, Role role)
        : m_milestones(milestones)
        , m_network(rtc::Thread::CreateWithSocketServer())
        , m_worker(rtc::Thread::Create())
        , m_signalling(rtc::Thread::Create())
    {
        m_network->Start();
        m_worker->Start();
        m_signalling->Start();
        const rtc::scoped_refptr<webrtc::AudioDeviceModule> device =
            rtc::make_ref_counted<ToneDevice>(milestones, role);
        m_factory = webrtc::CreatePeerConnectionFactory(m_network.get(), m_worker.get(), m_signalling.get(), device,
            webrtc::CreateBuiltinAudioEncoderFactory(), webrtc::CreateBuiltinAudioDecoderFactory(), nullptr, nullptr,
            nullptr, nullptr);
        webrtc::PeerConnectionFactoryInterface::Options options;
        options.network_ignore_mask =
            rtc::ADAPTER_TYPE_ETHERNET | rtc::ADAPTER_TYPE_WIFI | rtc::ADAPTER_TYPE_CELLULAR | rtc::ADAPTER_TYPE_VPN;
        m_factory->SetOptions(options);
        Library::RTCConfiguration settings;
        settings.sdp_semantics = webrtc::SdpSemantics::kUnifiedPlan;
        settings.bundle_policy = Library::kBundlePolicyMaxBundle;
        auto made = m_factory->CreatePeerConnectionOrError(settings, webrtc::PeerConnectionDependencies(this));
        if (!made.ok())
            return;
        m_connection = made.MoveValue();
        const auto source = m_factory->CreateAudioSource({});
        static_cast<void>(m_connection->AddTrack(m_factory->CreateAudioTrack("voice", source.get()), {"bare"}));
    }
    ~End() override
    {
        if (!m_connection)
            return;
        m_signalling->BlockingCall([this] {
            if (m_channel)
                m_channel->UnregisterObserver();
            m_channel = nullptr;
        });
        m_connection->Close();
    }

    void offer(End& other)
    {
        if (!m_connection)
            return;
        m_other = &other;
        other.m_other = this;
        const webrtc::DataChannelInit settings;
        auto made = m_connection->CreateDataChannelOrError("texts", &settings);
        if (made.ok())
            m_signalling->BlockingCall([&] { OnDataChannel(made.MoveValue()); });
        m_connection->SetLocalDescription(rtc::make_ref_counted<Applied>(nullptr));
    }

    void OnSignalingChange(Library::SignalingState) override { }
    void OnIceGatheringChange(Library::IceGatheringState) override { }
    void OnIceCandidate(const webrtc::IceCandidateInterface*) override
    {
        std::string text;
        if (!std::exchange(m_hasAddress, true) && m_connection->local_description()->ToString(&text))
            m_other->take(m_connection->local_description()->GetType(), text);
    }
    void OnDataChannel(rtc::scoped_refptr<webrtc::DataChannelInterface> channel) override
    {
        m_channel = std::move(channel);
        m_channel->RegisterObserver(this);
        OnStateChange();
    }
    void OnStateChange() override
    {
        if (m_channel->state() == webrtc::DataChannelInterface::kOpen && !std::exchange(m_isOpen, true))
            m_milestones.channelOpened();
    }
    void OnMessage(const webrtc::DataBuffer&) override { }

private:
    void take(webrtc::SdpType type, const std::string& text)
    {
        m_signalling->PostTask([this, type, text] {
            const auto then = [this, type] {
                if (type == webrtc::SdpType::kOffer)
                    m_connection->SetLocalDescription(rtc::make_ref_counted<Applied>(nullptr));
            };
            m_connection->SetRemoteDescription(
                webrtc::CreateSessionDescription(type, text), rtc::make_ref_counted<Applied>(then));
        });
    }

    Milestones& m_milestones;
    std::unique_ptr<rtc::Thread> m_network;
    std::unique_ptr<rtc::Thread> m_worker;
    std::unique_ptr<rtc::Thread> m_signalling;
    rtc::scoped_refptr<webrtc::PeerConnectionFactoryInterface> m_factory; ///< Goes before the threads.
    rtc::scoped_refptr<Library> m_connection;
    End* m_other = nullptr;
    rtc::scoped_refptr<webrtc::DataChannelInterface> m_channel; ///< This and the next are the signalling thread's.
    bool m_hasAddress = false;
    bool m_isOpen = false;
};

} // namespace

struct BareCall::Parts {
    Clock::time_point start = Clock::now();
    Milestones milestones;
    End caller{milestones, Role::offers};
    End answerer{milestones, Role::answers};
};

BareCall::BareCall()
    : m_parts(std::make_unique<Parts>())
{
}

BareCall::~BareCall() = default;

std::optional<BareCall::Times> BareCall::connect()
{
    m_parts->caller.offer(m_parts->answerer);
    return m_parts->milestones.reached(m_parts->start);
}

} // namespace quorvell
