// SPDX-License-Identifier: MIT
#include "FaultRun.h"

#include "Media/audio/SampleBytes.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "Quorvell/connections/access/LiveEndpointSettings.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quorvell::walk {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t chunkSamples = MicrophoneStream::chunkBytes / 2;

} // namespace

const std::array<FaultRun::Request, FaultOutcome::requests> FaultRun::requests{
    Request{"Remind me tomorrow at five p m to call the dentist.", "dentist"},
    Request{"Remind me to buy milk tomorrow at nine a m.", "milk"},
    Request{"In twenty minutes remind me to check the oven.", "oven"}};

const char* nameOf(Carrier carrier)
{
    constexpr std::array names{"websocket", "webrtc", "gemini", "responses"};
    return names[static_cast<std::size_t>(carrier)];
}

FaultRun::FaultRun(QtScheduler& scheduler, Carrier carrier, const FaultRow& row, const Recordings& recordings,
    const FaultPatience& patience, const std::string& certificate, Done done)
    : m_scheduler(scheduler)
    , m_clock(scheduler)
    , m_carrier(carrier)
    , m_fault(row.name)
    , m_sleepsAfter(row.sleepsAfter)
    , m_recordings(recordings)
    , m_patience(patience)
    , m_done(std::move(done))
{
    registerTools();
    m_service = std::make_unique<FaultyService>(row.faults, row.isUntrusted ? certificate : std::string(),
        [this](const std::string& address) { serviceReady(address); });
}

FaultRun::~FaultRun() = default;

void FaultRun::record(std::string_view name, const Json& fields)
{
    if (std::getenv("QUORVELL_FAULTS_VERBOSE") != nullptr)
        std::fprintf(stderr, "%9.3f %s, %s: %.*s %s\n", std::chrono::duration<double>(m_scheduler.now()).count(),
            nameOf(m_carrier), m_fault, static_cast<int>(name.size()), name.data(), dumpJson(fields).c_str());
}

void FaultRun::registerTools()
{
    m_registry.add("set_reminder", [this](const LiveFunctionCall& call, ToolReply reply) {
        // Long enough that a connection can end while the tool runs.
        auto shared = std::make_shared<ToolReply>(std::move(reply));
        m_toolTimers.push_back(m_scheduler.after(150ms, [this, call, shared] { carryOut(call, std::move(*shared)); }));
    });
    m_tools = std::make_unique<ToolDispatcher>(m_registry);
}

void FaultRun::carryOut(const LiveFunctionCall& call, ToolReply reply)
{
    std::string words = dumpJson(call.args);
    record("carried_out", call.args);
    std::transform(words.begin(), words.end(), words.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    for (std::size_t index = 0; index < requests.size(); ++index)
        if (words.find(requests[index].sign) != std::string::npos) {
            ++m_carriedOut[index];
            if (static_cast<int>(index) == m_current && m_carriedOut[index] == 1)
                m_outcome.longestWait = std::max(m_outcome.longestWait, m_scheduler.now() - m_asked);
        }
    reply.answer({{"status", "set"}, {"id", "0a1b2c3d4e5f"}, {"task", "It"}, {"date", "2026-11-22 17:00"},
        {"when", "Sunday 22 November at 5 PM"}, {"has_time", true}});
}

void FaultRun::serviceReady(const std::string& address)
{
    if (address.empty()) {
        m_outcome.sentence = "The service did not start.";
        m_outcome.lost = FaultOutcome::requests;
        return finish();
    }
    makeSession(address);
    m_start = m_scheduler.now();
    m_ticks = m_scheduler.every(MicrophoneStream::chunkLength, [this] { feedChunk(); });
    if (m_sleepsAfter > 0ms)
        m_sleep = m_scheduler.after(m_sleepsAfter, [this] { sleep(); });
    askNext();
}

void FaultRun::makeSession(const std::string& address)
{
    LiveEndpointSettings endpoint;
    endpoint.host = address;
    endpoint.backend = m_carrier == Carrier::gemini ? LiveBackend::gemini : LiveBackend::openAI;
    endpoint.keys = {{endpoint.backend, FaultyService::key}};
    m_access = std::make_unique<HostedAccess>(endpoint.choose().hosted.value_or(LiveAccess{}));
    LiveConnectionChoice::Settings choice;
    choice.backend = endpoint.backend;
    choice.transport = m_carrier == Carrier::webRTC ? LiveTransport::automatic : LiveTransport::webSocket;
    choice.models = LiveModelSettings::usual(choice.backend);
    choice.models.options.serviceTier = "priority"; // May be refused, and then is done without.
    choice.limits = m_patience.connection;
    LiveConnectionChoice::Networks networks;
    networks.current = [] { return std::string("here"); };
    networks.now = [this] { return m_scheduler.wallClock(); };
    networks.changed = [](const BlockedNetworks&) {};
    m_choice = std::make_unique<LiveConnectionChoice>(*m_access, choice, networks);

    SessionController::Ports ports{m_clock,
        [this](LiveConnectionObserver& observer, LiveMedium medium) { return m_choice->make(observer, medium); },
        m_player, *this, *this, *m_tools, [] { return std::string("It is now."); }};
    SessionSettings settings;
    settings.limits = m_patience.session;
    settings.patience = m_patience.answer;
    const bool isTyped = m_recordings.front().empty();
    settings.medium = m_carrier == Carrier::responses ? LiveMedium::text : LiveMedium::voice;
    settings.replies = isTyped ? SessionSettings::Replies::shown : SessionSettings::Replies::spoken;
    settings.listening = isTyped ? SessionSettings::Listening::none : SessionSettings::Listening::openMicrophone;
    m_session = std::make_unique<SessionController>(ports, settings);
}

void FaultRun::askNext()
{
    if (++m_current == FaultOutcome::requests)
        return finish();
    m_isSettled = false;
    m_position = 0;
    m_asked = m_scheduler.now();
    m_limit = m_scheduler.after(m_patience.request, [this] { settleRequest(); });
    if (!m_recordings.front().empty())
        return m_session->begin(); // Nothing while a conversation runs.
    m_session->submitTyped({{{requests[static_cast<std::size_t>(m_current)].words}}, false});
}

void FaultRun::sleep()
{
    // Less than the silence after which a conversation ends, more than any service waits.
    constexpr std::chrono::seconds night{90};
    m_clock.sleep(night);
}

/// The room's sound: the present request, else silence, at the pace of the clock.
void FaultRun::feedChunk()
{
    if (m_recordings.front().empty())
        return;
    while (m_chunks * MicrophoneStream::chunkLength <= m_scheduler.now() - m_start) {
        Bytes chunk(MicrophoneStream::chunkBytes);
        const bool mayTalk =
            m_current < FaultOutcome::requests && !m_isSettled && m_session->phase() != SessionPhase::idle;
        if (mayTalk) {
            const auto& recording = m_recordings[static_cast<std::size_t>(m_current)];
            const std::size_t count = std::min(chunkSamples, recording.size() - m_position);
            std::ranges::copy(bytesOfSamples(std::span(recording).subspan(m_position, count)), chunk.begin());
            if (count > 0)
                m_asked = m_scheduler.now();
            m_position += count;
        }
        m_session->microphoneCaptured(chunk);
        ++m_chunks;
    }
}

void FaultRun::linkChanged(Link link)
{
    const SessionTime now = m_scheduler.now();
    if (link == Link::reconnecting)
        m_lost = now;
    else if (m_lost != SessionTime{})
        m_outcome.longestMending = std::max(m_outcome.longestMending, now - std::exchange(m_lost, {}));
}

void FaultRun::userSaid(const std::string& text, Words)
{
    record("user_said", {{"text", text}, {"request", m_current}});
}

void FaultRun::problemArose(const std::string& sentence)
{
    told(sentence);
}

void FaultRun::turnCompleted(TurnOutcome outcome)
{
    if (m_isSettled)
        return;
    const auto current = static_cast<std::size_t>(m_current);
    if (outcome == TurnOutcome::unanswered)
        told("No answer came. Ask again.");
    const bool hasSpoken = m_recordings.front().empty() || m_position == m_recordings[current].size();
    if (hasSpoken && (m_carriedOut[current] > 0 || m_told[current]))
        settleRequest();
}

void FaultRun::conversationEnded(const SessionEnd& end)
{
    if (!end.sentence.empty())
        told(end.sentence);
    if (!m_isSettled)
        settleRequest();
}

void FaultRun::told(const std::string& sentence)
{
    m_outcome.sentence = sentence;
    if (m_current >= 0 && m_current < FaultOutcome::requests)
        m_told[static_cast<std::size_t>(m_current)] = true;
}

void FaultRun::settleRequest()
{
    m_isSettled = true;
    m_limit.cancel();
    // A little later, so that what would be run a second time is.
    m_next = m_scheduler.after(400ms, [this] { askNext(); });
}

void FaultRun::finish()
{
    m_ticks.cancel();
    for (std::size_t index = 0; index < requests.size() && m_session; ++index) {
        m_outcome.run += m_carriedOut[index] == 1 ? 1 : 0;
        m_outcome.twice += m_carriedOut[index] > 1 ? 1 : 0;
        m_outcome.lost += m_carriedOut[index] == 0 && !m_told[index] ? 1 : 0;
    }
    m_isSettled = true;
    m_scheduler.post([done = m_done, outcome = m_outcome] { done(outcome); }); // It takes this object away.
}

} // namespace quorvell::walk
