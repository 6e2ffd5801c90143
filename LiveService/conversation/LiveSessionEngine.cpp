// SPDX-License-Identifier: MIT
#include "LiveService/conversation/LiveSessionEngine.h"

#include "LiveService/voice/SpokenText.h"
#include "Understanding/dialogue/PlainReplies.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr int policyViolation = 1008;

} // namespace

LiveSessionEngine::LiveSessionEngine(IdSource ids, Time now, std::optional<int> spokenRateHz)
    : m_ids(std::move(ids))
    , m_sessionID(m_ids("sess_"))
    , m_startDeadline(now + startPatience)
    , m_spokenRate(spokenRateHz)
{
}

LiveSessionEngine::State LiveSessionEngine::state() const
{
    return {m_history, m_backend->memory(), m_wordsBefore + m_backend->totalWords()};
}

void LiveSessionEngine::remember(const std::vector<LiveHistoryEntry>& turns)
{
    for (const LiveHistoryEntry& turn : turns) {
        if (m_phase == Phase::open)
            m_history.add(turn.role, turn.text);
    }
}

void LiveSessionEngine::open(const OpenAILiveSetupOptions& options)
{
    m_phase = Phase::open;
    m_tools = offeredTools(options.tools);
    m_heardRate = options.sampleRate;
    const int spokenRate = m_spokenRate.value_or(m_heardRate);
    State before;
    if (m_resumed) {
        before = *std::exchange(m_resumed, std::nullopt);
    } else {
        before.history = ConversationHistory(options.history);
        before.memory.lastReply = before.history.lastReply();
    }
    m_history = std::move(before.history);
    m_wordsBefore = before.totalWords;
    m_backend.emplace(m_ids, options.serviceTier, std::move(before.memory));
    if (m_model)
        m_backend->useModel(ModelTurn(*m_model, options.tools, m_history));
    m_turns.emplace(m_heardRate);
    m_pacer.emplace(spokenRate);
    m_effects.emplace_back(effect::PrepareSpeech{m_heardRate, spokenRate, options.voice});
    tell(news::Started{m_sessionID});
}

EngineEffects LiveSessionEngine::soundPaused()
{
    if (m_phase == Phase::open)
        takeTurnEvents(m_turns->finish());
    return taken();
}

EngineEffects LiveSessionEngine::judged(int pause, std::optional<UtteranceShape> shape)
{
    if (m_phase == Phase::open)
        takeTurnEvents(m_turns->judge(pause, shape));
    return taken();
}

EngineEffects LiveSessionEngine::heard(const HeardTurn& turn, Time now)
{
    if (m_phase != Phase::open || m_speech.empty())
        return {};
    const Time speech = m_speech.front();
    m_speech.pop_front();
    if (!turn.notice.empty())
        say({turn.notice, ClientText::Manner::voiced});
    if (!turn.problem.empty()) {
        say({turn.problem, ClientText::Manner::voiced});
    } else if (turn.text.empty()) {
        if (speech >= shortestSpeech)
            say({std::string(PlainReplies::notUnderstood), ClientText::Manner::voiced});
    } else {
        tell(news::Heard{turn.text});
        takeRequest(turn.text, turn.doubts, now);
    }
    return taken();
}

/// Words that nobody asks a response for: the voice hands them over.
void LiveSessionEngine::takeRequest(const std::string& words, const HeardDoubts& doubts, Time now)
{
    m_history.add("user", words);
    m_isTurnOpen = true;
    tell(news::Delegated{m_ids("deleg_")});
    BackendOutputs outputs;
    m_backend->addSpoken(words, doubts, now, outputs);
    carryOut(std::move(outputs));
}

EngineEffects LiveSessionEngine::thought(RuleStep step, Time now)
{
    if (m_phase != Phase::open)
        return {};
    BackendOutputs outputs;
    m_backend->thought(std::move(step), now, outputs);
    carryOut(std::move(outputs));
    return taken();
}

EngineEffects LiveSessionEngine::voiced(VoicePiece piece, Time now)
{
    if (m_phase != Phase::open || piece.reply < m_firstWantedReply)
        return {};
    switch (piece.kind) {
    case VoicePiece::Kind::sentenceBegan:
        m_pacer->beginSentence(piece.sentence);
        break;
    case VoicePiece::Kind::samples:
        m_pacer->append(piece.samples);
        break;
    case VoicePiece::Kind::sentenceEnded:
        m_pacer->endSentence();
        break;
    case VoicePiece::Kind::replyEnded:
        m_isVoicing = piece.reply < m_lastReply;
        if (!m_isVoicing && !m_backend->isModelAsked())
            m_pacer->endReply();
        break;
    }
    sendDue(now);
    return taken();
}

EngineEffects LiveSessionEngine::tick(Time now)
{
    if (m_phase == Phase::waiting && now >= m_startDeadline)
        close("start_timeout", policyViolation);
    if (m_phase == Phase::open) {
        takeTurnEvents(m_turns->look(now));
        tickModel(now);
        sendDue(now);
    }
    return taken();
}

std::optional<LiveSessionEngine::Time> LiveSessionEngine::nextTick() const
{
    if (m_phase == Phase::waiting)
        return m_startDeadline;
    if (m_phase == Phase::closed)
        return std::nullopt;
    auto next = m_pacer->nextDue();
    if (m_turns->isOpen())
        next = std::min(next.value_or(Time::max()), m_turns->nextLook());
    if (const auto deadline = m_backend->nextTick())
        next = std::min(next.value_or(Time::max()), *deadline);
    return next;
}

EngineEffects LiveSessionEngine::end(std::string_view reason, int closeCode)
{
    if (m_phase != Phase::closed)
        close(reason, closeCode);
    return taken();
}

void LiveSessionEngine::carryOut(BackendOutputs outputs)
{
    for (BackendOutput& output : outputs) {
        if (auto* reply = std::get_if<BackendReply>(&output))
            say(*reply);
        else
            m_effects.push_back(std::move(std::get<EngineEffect>(output)));
    }
}

void LiveSessionEngine::takeTurnEvents(std::vector<TurnEvent> events)
{
    for (TurnEvent& event : events) {
        switch (event.kind) {
        case TurnEvent::Kind::began:
            if (m_speech.size() >= mostTurnsUnrecognised)
                return close("too_much_sound", policyViolation);
            breakOff();
            m_effects.emplace_back(effect::BeginListening{});
            break;
        case TurnEvent::Kind::heard:
            m_effects.emplace_back(effect::Listen{std::move(event.samples)});
            break;
        case TurnEvent::Kind::paused:
            m_effects.emplace_back(effect::JudgePause{event.pause, m_backend->memory()});
            break;
        case TurnEvent::Kind::ended:
            m_speech.push_back(event.speech);
            m_effects.emplace_back(effect::FinishListening{});
            break;
        }
    }
}

void LiveSessionEngine::say(const BackendReply& reply)
{
    m_isTurnOpen = true;
    if (reply.manner == ClientText::Manner::shown) {
        m_history.add("assistant", reply.text);
        tell(news::Spoken{reply.text});
        tellUsage();
        return;
    }
    if (m_unsaid + reply.text.size() > longestUnsaid)
        return refuse("too_much_to_say", "Too much waits to be said. Wait for the voice.", std::nullopt);
    m_unsaid += reply.text.size();
    m_isVoicing = true;
    m_effects.emplace_back(effect::Voice{++m_lastReply, SpokenText::sentences(reply.text)});
}

/// The user speaks: what was not sent yet is not said any more.
void LiveSessionEngine::breakOff()
{
    if (!m_isVoicing && !m_pacer->isSpeaking())
        return;
    stopModel();
    m_firstWantedReply = m_lastReply + 1;
    m_isVoicing = false;
    m_pacer->breakOff();
    m_effects.emplace_back(effect::StopVoice{});
    tell(news::Interrupted{});
    finishSaying();
    m_isGeneratedTold = true; // What was interrupted is never complete.
}

void LiveSessionEngine::sendDue(Time now)
{
    for (PacedPiece& piece : m_pacer->due(now)) {
        if (auto* words = std::get_if<std::string>(&piece)) {
            m_saying += *words;
            tell(news::Spoken{std::move(*words)});
        } else {
            tell(news::Sound{std::move(std::get<std::vector<std::int16_t>>(piece))});
        }
    }
    if (!m_pacer->isSpeaking())
        finishSaying();
}

void LiveSessionEngine::finishSaying()
{
    if (m_saying.empty())
        return;
    m_history.add("assistant", std::exchange(m_saying, {}));
    tellUsage();
}

void LiveSessionEngine::tellUsage()
{
    const auto heard = static_cast<Time::rep>(m_samplesHeard * 1000 / static_cast<std::size_t>(m_heardRate));
    const double seconds = static_cast<double>(heard + m_pacer->spoken().count()) / 1000.0;
    tell(news::Usage{seconds, m_history.fullness(), m_wordsBefore + m_backend->totalWords()});
}

/// Once each, as soon as they are so.
void LiveSessionEngine::tellEndOfTurn()
{
    if (m_phase == Phase::open && !m_isVoicing && !m_pacer->isSpeaking())
        m_unsaid = 0;
    if (m_phase != Phase::open || !m_isTurnOpen || !m_backend->isIdle() || m_isVoicing || !m_speech.empty())
        return;
    if (!std::exchange(m_isGeneratedTold, true))
        tell(news::Generated{});
    if (m_pacer->isSpeaking())
        return;
    m_isTurnOpen = m_isGeneratedTold = false;
    tell(news::TurnOver{});
}

void LiveSessionEngine::countError()
{
    if (++m_errorsInARow >= mostErrorsInARow)
        close("too_many_errors", policyViolation);
}

void LiveSessionEngine::close(std::string_view reason, int code)
{
    if (m_isVoicing)
        m_effects.emplace_back(effect::StopVoice{});
    m_phase = Phase::closed;
    tell(news::Closed{std::string(reason)});
    m_effects.emplace_back(effect::CloseConnection{code, std::string(reason)});
}

void LiveSessionEngine::tell(SessionNews news)
{
    m_effects.emplace_back(effect::Tell{std::move(news)});
}

EngineEffects LiveSessionEngine::taken()
{
    tellEndOfTurn();
    return std::exchange(m_effects, {});
}

} // namespace quorvell
