// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/TalkStatus.h"

#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/ToolText.h"
#include "Quorvell/records/UsageText.h"
#include "QuorvellCore/live/gate/PCM.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvell {

TalkStatus::TalkStatus(Scheduler& scheduler, StatusLine& line, std::function<double()> secondsToday)
    : m_scheduler(scheduler)
    , m_line(line)
    , m_secondsToday(std::move(secondsToday))
    , m_ticks(scheduler.every(tick, [this] { tell(); }))
{
}

void TalkStatus::captured(std::span<const std::uint8_t> pcm)
{
    m_level = std::max(m_level, PCM::levelOfInt16LE(pcm));
}

void TalkStatus::phaseChanged(SessionPhase phase)
{
    m_phase = phase;
    tell();
}

void TalkStatus::restChanged(Doze doze)
{
    m_doze = doze;
    tell();
}

void TalkStatus::linkChanged(Link link)
{
    m_link = link;
    tell();
}

void TalkStatus::earChanged(Ear ear)
{
    m_ear = ear;
    tell();
}

void TalkStatus::userSaid(const std::string&, Words)
{
    m_answer = Answer::awaited;
    m_asked = m_scheduler.now();
    m_thought.clear();
    tell();
}

void TalkStatus::thoughtChanged(const ThoughtSummary& thought)
{
    m_thought = printableText(thought.newestLine());
}

void TalkStatus::assistantWordsHeard(const std::string&)
{
    m_answer = Answer::heard;
    tell();
}

void TalkStatus::turnCompleted(TurnOutcome)
{
    m_answer = Answer::none;
    tell();
}

void TalkStatus::toolCalled(const LiveFunctionCall& call)
{
    m_tool = ToolText::running(call.name);
    tell();
}

void TalkStatus::toolAnswered(const LiveFunctionResponse&)
{
    m_tool.clear();
    tell();
}

std::string TalkStatus::meter(float level)
{
    const int filled = std::clamp(static_cast<int>(std::lround(level * meterWidth)), 0, meterWidth);
    std::string bar;
    for (int cell = 0; cell < meterWidth; ++cell)
        bar += cell < filled ? "▮" : "▯";
    return bar;
}

void TalkStatus::tell()
{
    std::string text = state();
    const float level = std::exchange(m_level, 0.0F);
    if (m_ear == Ear::open || m_ear == Ear::hearing)
        text += "  " + meter(level);
    m_line.show(text + work() + "  · today " + UsageText::duration(m_secondsToday()));
}

std::string TalkStatus::state() const
{
    if (m_phase == SessionPhase::idle)
        return "not connected";
    if (m_phase == SessionPhase::connecting)
        return "calling the assistant …";
    if (m_link == Link::reconnecting)
        return "connecting again; go on talking …";
    if (m_ear == Ear::muted)
        return "muted";
    if (m_doze == Doze::dozing)
        return "resting; talk to wake it";
    if (m_doze == Doze::waking)
        return "waking …";
    if (m_ear == Ear::hearing)
        return "hearing you";
    if (m_answer != Answer::none)
        return m_answer == Answer::heard ? "speaking   " : thinking();
    return m_ear == Ear::open ? "listening  " : "not listening";
}

std::string TalkStatus::thinking() const
{
    const auto waited = m_scheduler.now() - m_asked;
    if (waited < worthCounting)
        return "thinking   ";
    return "thinking " + std::to_string(std::chrono::duration_cast<std::chrono::seconds>(waited).count()) + " s";
}

/// What the answer waits for.
std::string TalkStatus::work() const
{
    const std::string& step = m_tool.empty() && m_answer == Answer::awaited ? m_thought : m_tool;
    return step.empty() ? std::string() : "  · " + step + " …";
}

} // namespace quorvell
