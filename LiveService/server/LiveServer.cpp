// SPDX-License-Identifier: MIT
#include "LiveService/server/LiveServer.h"

#include "LiveService/conversation/OfferedTools.h"
#include "LiveService/protocols/GeminiCodec.h"
#include "LiveService/protocols/OpenAICodec.h"
#include "LiveService/protocols/TypedConversation.h"
#include "LiveService/server/EventStream.h"
#include "LiveService/server/WebRTCTransport.h"
#include "LiveService/server/WebSocketTransport.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"
#include "QuorvellCore/live/wire/transport/SessionDescriptionBounds.h"

#include <QMetaObject>
#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

constexpr int created = 201;
constexpr int patienceWithFault = 2; ///< Seconds, so that nobody waits long for what is refused on purpose.

std::string settingProblem(const std::string& setting)
{
    return setting.empty() ? "Refused on purpose." : "\"" + setting + "\" is not available. Leave it out.";
}

/// What the body of an offer holds.
struct Offer {
    OpenAILiveSetupOptions options;
    std::string sdp;
};

std::optional<Offer> readOffer(const std::string& body, std::string& problem)
{
    const auto json = parseJson(body, OpenAILiveClientParser::limits);
    const Json* session = json ? memberOf(*json, "session") : nullptr;
    const Json* transport = json ? memberOf(*json, "transport") : nullptr;
    auto sdp = transport ? readString(*transport, "sdp") : std::nullopt;
    if (!session || !sdp || readString(*transport, "type") != "webrtc") {
        problem = "Send {\"session\": ..., \"transport\": {\"type\": \"webrtc\", \"sdp\": OFFER}}.";
        return std::nullopt;
    }
    if (!SessionDescriptionBounds::hold(*sdp)) {
        problem = "\"sdp\" is no description of a call, or is far larger than any.";
        return std::nullopt;
    }
    auto options = OpenAILiveClientParser::parseSession(*session, problem);
    if (!options)
        return std::nullopt;
    options->sampleRate = WebRTCPeer::sampleRate;
    return Offer{std::move(*options), std::move(*sdp)};
}

} // namespace

LiveServer::LiveServer(Settings settings)
    : m_settings(std::move(settings))
    , m_speech(m_settings.makeSpeech, m_settings.readiness)
    , m_door(m_settings.token, m_settings.tls,
          {[this](Guest guest) { return refusalFor(guest); },
              [this](Guest guest, std::unique_ptr<QTcpSocket> socket) { openWebSocket(guest, std::move(socket)); },
              [this](Guest guest, std::string body, const HttpAnswer& answer) {
                  takePosted(guest, std::move(body), answer);
              }})
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(idlePatience);
    connect(&m_idle, &QTimer::timeout, this, [this] { m_speech.letGo(); });
    m_idle.start();
}

bool LiveServer::listen(const QHostAddress& host, std::uint16_t port)
{
    // A service for this computer opens no port of a call to the network either.
    m_reach = host.isLoopback() ? WebRTCPeerOptions::Reach::thisComputer : WebRTCPeerOptions::Reach::both;
    return m_door.listen(host, port);
}

LiveServer::~LiveServer()
{
    // Ends the threads that may still call back while this object can take the call; it is never delivered.
    m_sessions.clear();
}

void LiveServer::stop(std::function<void()> stopped)
{
    m_stopped = std::move(stopped);
    m_door.stop();
    for (auto& [number, session] : m_sessions)
        session->end("server_shutdown", LiveServerSession::goingAway);
    reportIfStopped();
}

std::optional<HttpResponse> LiveServer::refusalFor(Guest guest) const
{
    const auto faults = SessionFaults::of(m_settings.faults, guest.number);
    if (const Fault* fault = faults.find(Fault::Kind::refuse)) {
        HttpResponse refusal = HttpResponse::refusal(fault->count, settingProblem(fault->setting), fault->setting);
        refusal.retryAfterSeconds = patienceWithFault;
        return refusal;
    }
    if (m_stopped || m_sessions.size() >= m_settings.mostSessions)
        return HttpResponse::refusal(503, "Too many sessions are open. Close one, or try again later.");
    return std::nullopt;
}

void LiveServer::openWebSocket(Guest guest, std::unique_ptr<QTcpSocket> socket)
{
    const auto faults = SessionFaults::of(m_settings.faults, guest.number);
    const Fault* late = faults.find(Fault::Kind::latePong);
    auto transport =
        std::make_unique<WebSocketTransport>(std::move(socket), late ? late->time : std::chrono::milliseconds::zero());
    std::shared_ptr<SessionCodec> codec;
    if (guest.kind == ServiceRoute::Kind::geminiSocket)
        codec = std::make_shared<GeminiCodec>();
    else
        codec = std::make_shared<OpenAICodec>(OpenAICodec::Sound::inTexts);
    openSession(guest.number, std::move(transport), std::move(codec));
}

void LiveServer::takePosted(Guest guest, std::string body, const HttpAnswer& answer)
{
    // Others may have come in while the body was on its way.
    if (const auto refusal = refusalFor(guest))
        return answer.answer(*refusal);
    if (guest.kind == ServiceRoute::Kind::openAICall)
        openCall(guest, body, answer);
    else
        respond(guest, std::move(body), answer);
}

void LiveServer::openCall(Guest guest, const std::string& body, const HttpAnswer& answer)
{
    std::string problem;
    auto offer = readOffer(body, problem);
    if (!offer)
        return answer.answer(HttpResponse::refusal(400, problem, "invalid_value"));
    const bool isBlocked = SessionFaults::of(m_settings.faults, guest.number).find(Fault::Kind::udpBlocked);
    auto owned = std::make_unique<WebRTCTransport>(
        isBlocked ? WebRTCTransport::Way::blocked : WebRTCTransport::Way::open, m_reach);
    WebRTCTransport& transport = *owned;
    auto& session =
        openSession(guest.number, std::move(owned), std::make_shared<OpenAICodec>(OpenAICodec::Sound::apart));
    transport.answer(
        offer->sdp,
        [answer, id = session.id()](const std::string& sdp) {
            const Json accepted{{"session", {{"id", id}}}, {"transport", {{"type", "webrtc"}, {"sdp", sdp}}}};
            answer.answer({created, "application/json", dumpJson(accepted)});
        },
        [&session, options = offer->options] {
            session.take(openai_client::SessionStart{options, {}});
        },
        [answer](const std::string& reason) {
            answer.answer(HttpResponse::refusal(400, "The offer cannot be taken: " + reason, "invalid_offer"));
        });
}

void LiveServer::respond(Guest guest, std::string body, const HttpAnswer& answer)
{
    if (m_responding >= mostResponding)
        return answer.answer(HttpResponse::refusal(503, "Too many responses are being made. Try again later."));
    ++m_responding;
    const auto faults = SessionFaults::of(m_settings.faults, guest.number);
    m_thinking.post([this, body = std::move(body), answer, faults, now = m_settings.wallClock()] {
        auto reading = ResponsesRequestReader::read(body);
        if (const auto* report = std::get_if<OpenAIErrorReport>(&reading)) {
            later([this, answer, report = *report] {
                --m_responding;
                answer.answer(HttpResponse::refusal(400, report.message, report.code));
            });
            return;
        }
        const auto& request = std::get<ResponsesRequest>(reading);
        const RuleSurroundings around{{now, m_settings.calendar}, offeredTools(request.tools)};
        const auto step = TypedConversation::answer(request.input, around);
        later([this, answer, faults, events = TypedConversation::events(step, m_settings.ids)] {
            --m_responding;
            EventStream::send(answer, faults, events);
        });
    });
}

LiveServerSession& LiveServer::openSession(
    int number, std::unique_ptr<SessionTransport> transport, std::shared_ptr<SessionCodec> codec)
{
    const auto reach = [this, number](std::function<void(LiveServerSession&)> action) {
        later([this, number, action = std::move(action)] {
            const auto session = m_sessions.find(number);
            if (session != m_sessions.end())
                action(*session->second);
        });
    };
    LiveServerSession::Surroundings surroundings{m_settings.ids, m_settings.calendar, m_settings.wallClock, m_thinking,
        m_resumption, SessionFaults::of(m_settings.faults, number), m_settings.model,
        [this] { return m_speech.take(); }, reach, [this, number] { later([this, number] { endSession(number); }); }};
    m_idle.stop();
    auto session = std::make_unique<LiveServerSession>(std::move(transport), std::move(codec), std::move(surroundings));
    return *m_sessions.emplace(number, std::move(session)).first->second;
}

void LiveServer::endSession(int number)
{
    const auto session = m_sessions.find(number);
    if (session == m_sessions.end())
        return;
    if (auto speech = session->second->releaseSpeech())
        m_speech.giveBack(std::move(speech));
    m_sessions.erase(session);
    if (m_sessions.empty())
        m_idle.start();
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
