// SPDX-License-Identifier: MIT
#include "Media/webrtc/CallEngine.h"

#include "Media/webrtc/DrivenDevice.h"

#include <api/audio_codecs/audio_encoder_factory_template.h>
#include <api/audio_codecs/opus/audio_encoder_opus.h>
#include <api/audio_codecs/opus_audio_decoder_factory.h>
#include <api/create_peerconnection_factory.h>
#include <api/make_ref_counted.h>
#include <api/peer_connection_interface.h>
#include <api/video_codecs/video_decoder_factory.h>
#include <api/video_codecs/video_encoder_factory.h>
#include <pc/srtp_session.h>
#include <rtc_base/checks.h>
#include <rtc_base/logging.h>
#include <rtc_base/ssl_adapter.h>
#include <rtc_base/ssl_stream_adapter.h>
#include <rtc_base/thread.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

// The library was built with its checks on; an object made by a unit without them is smaller than the library thinks.
static_assert(RTC_DCHECK_IS_ON);

namespace quorvell {

namespace {

constexpr std::chrono::milliseconds tick{10};
/// After a longer stop (a suspended computer) the missed ticks are not made up for.
constexpr std::chrono::milliseconds longestDelay{100};

/// Gives and takes 10 ms of the call's sound on every tick.
class ClockedDevice : public DrivenDevice {
public:
    explicit ClockedDevice(CallAudio& audio)
        : m_audio(audio)
        , m_clock([this] { run(); })
    {
    }
    ~ClockedDevice() override
    {
        m_isOver = true;
        m_clock.join();
    }

private:
    void run()
    {
        auto next = std::chrono::steady_clock::now();
        while (!m_isOver) {
            next += tick;
            std::this_thread::sleep_until(next);
            if (const auto now = std::chrono::steady_clock::now(); now - next > longestDelay)
                next = now;
            drive();
        }
    }

    void give(webrtc::AudioTransport& transport) override
    {
        m_audio.frameToSend(m_frame);
        std::uint32_t unused = 0;
        transport.RecordedDataIsAvailable(
            m_frame.data(), m_frame.size(), sizeof(std::int16_t), 1, rate, 0, 0, 0, false, unused);
    }

    void take(webrtc::AudioTransport& transport) override
    {
        std::size_t given = 0;
        std::int64_t elapsed = 0;
        std::int64_t ntp = 0;
        if (transport.NeedMorePlayData(
                m_frame.size(), sizeof(std::int16_t), 1, rate, m_frame.data(), given, &elapsed, &ntp)
                == 0
            && given == m_frame.size())
            m_audio.frameHeard(m_frame);
    }

    static constexpr std::uint32_t rate = CallAudio::frameSamples * 100;

    CallAudio& m_audio;
    std::atomic<bool> m_isOver{false};
    CallAudio::Frame m_frame{}; ///< Of the clock thread.
    std::thread m_clock;
};

/// Opus that sends one packet in 400 ms instead of twenty while there is nothing to hear, which is most of the time;
/// every receiver fills such gaps (RFC 7587, 3.1.3). And it looks for no music in what is one voice: from complexity 7
/// on every frame is analysed for it, silent ones too.
template <int longestFrameMs> struct FrugalOpus : webrtc::AudioEncoderOpus {
    static absl::optional<Config> SdpToConfig(const webrtc::SdpAudioFormat& format)
    {
        auto config = AudioEncoderOpus::SdpToConfig(format);
        if (!config)
            return config;
        config->dtx_enabled = true;
        config->frame_size_ms = std::min(config->frame_size_ms, longestFrameMs);
        config->complexity = config->low_rate_complexity = 5;
        return config;
    }
};

/// On this computer shorter packets cost nothing but a few wake-ups, and everything is heard 10 ms earlier.
rtc::scoped_refptr<webrtc::AudioEncoderFactory> encodersFor(WebRTCPeerOptions::Reach reach)
{
    if (reach == WebRTCPeerOptions::Reach::thisComputer)
        return webrtc::CreateAudioEncoderFactory<FrugalOpus<10>>();
    constexpr int longestOfAll = 120;
    return webrtc::CreateAudioEncoderFactory<FrugalOpus<longestOfAll>>();
}

/// What encrypts sound is set up with the first session and torn down with the last, which held every call up for 50
/// ms. A session that is never used, and never ends, keeps it; it is made while the first call asks for its
/// counterpart.
void keepEncryptionReady()
{
    static const std::jthread preparation([] {
        static auto* const kept = new cricket::SrtpSession;
        constexpr std::array<std::uint8_t, 30> anyKey{};
        kept->SetSend(rtc::kSrtpAes128CmSha1_80, anyKey.data(), anyKey.size(), {});
    });
}

void prepareLibrary()
{
    static const bool isReady = [] {
        rtc::LogMessage::LogToDebug(rtc::LS_NONE);
        rtc::LogMessage::SetLogToStderr(false);
        const bool canEncrypt = rtc::InitializeSSL();
        keepEncryptionReady();
        return canEncrypt;
    }();
    static_cast<void>(isReady);
}

std::unique_ptr<rtc::Thread> started(std::unique_ptr<rtc::Thread> thread, const char* name)
{
    thread->SetName(name, nullptr);
    return thread->Start() ? std::move(thread) : nullptr;
}

int ignoredNetworks(WebRTCPeerOptions::Reach reach)
{
    switch (reach) {
    case WebRTCPeerOptions::Reach::network:
        return rtc::ADAPTER_TYPE_LOOPBACK;
    case WebRTCPeerOptions::Reach::thisComputer:
        return rtc::ADAPTER_TYPE_ETHERNET | rtc::ADAPTER_TYPE_WIFI | rtc::ADAPTER_TYPE_CELLULAR | rtc::ADAPTER_TYPE_VPN;
    case WebRTCPeerOptions::Reach::both:
        return 0;
    }
    return 0;
}

} // namespace

struct CallEngine::Parts {
    std::unique_ptr<rtc::Thread> network;
    std::unique_ptr<rtc::Thread> worker;
    std::unique_ptr<rtc::Thread> signalling;
    rtc::scoped_refptr<webrtc::PeerConnectionFactoryInterface> factory; ///< Goes before the threads.
};

CallEngine::CallEngine(WebRTCPeerOptions::Reach reach, CallAudio& audio)
    : m_parts(std::make_unique<Parts>())
{
    prepareLibrary();
    m_parts->network = started(rtc::Thread::CreateWithSocketServer(), "call network");
    m_parts->worker = started(rtc::Thread::Create(), "call worker");
    m_parts->signalling = started(rtc::Thread::Create(), "call signals");
    if (!m_parts->network || !m_parts->worker || !m_parts->signalling)
        return;
    rtc::scoped_refptr<webrtc::AudioDeviceModule> device = rtc::make_ref_counted<ClockedDevice>(audio);
    m_parts->factory =
        webrtc::CreatePeerConnectionFactory(m_parts->network.get(), m_parts->worker.get(), m_parts->signalling.get(),
            device, encodersFor(reach), webrtc::CreateOpusAudioDecoderFactory(), nullptr, nullptr, nullptr, nullptr);
    if (!m_parts->factory)
        return;
    webrtc::PeerConnectionFactoryInterface::Options options;
    options.network_ignore_mask = ignoredNetworks(reach);
    m_parts->factory->SetOptions(options);
}

CallEngine::~CallEngine() = default;

webrtc::PeerConnectionFactoryInterface* CallEngine::factory()
{
    return m_parts->factory.get();
}

rtc::Thread& CallEngine::signalling()
{
    return *m_parts->signalling;
}

rtc::Thread& CallEngine::network()
{
    return *m_parts->network;
}

} // namespace quorvell
