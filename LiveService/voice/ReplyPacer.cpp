// SPDX-License-Identifier: MIT
#include "LiveService/voice/ReplyPacer.h"

#include "LiveService/voice/SpokenText.h"

#include <algorithm>
#include <utility>

namespace quorvell {

ReplyPacer::ReplyPacer(int sampleRateHz)
    : m_rate(static_cast<std::size_t>(std::max(sampleRateHz, 1000)))
    , m_frameSamples(m_rate * static_cast<std::size_t>(frame.count()) / 1000)
{
}

void ReplyPacer::beginSentence(std::string_view sentence)
{
    const bool isFirst = m_made == 0 && m_words.empty();
    m_isSpeaking = true;
    m_isEnded = false;
    m_laterGroups = SpokenText::groups(sentence);
    m_sentenceStart = m_made;
    if (m_laterGroups.empty())
        return;
    m_firstGroupBytes = m_laterGroups.front().size();
    m_words.push_back({m_made, (isFirst ? "" : " ") + m_laterGroups.front()});
    m_laterGroups.erase(m_laterGroups.begin());
}

void ReplyPacer::append(std::span<const std::int16_t> samples)
{
    m_samples.insert(m_samples.end(), samples.begin(), samples.end());
    m_made += samples.size();
}

void ReplyPacer::endSentence()
{
    std::size_t all = m_firstGroupBytes;
    for (const std::string& group : m_laterGroups)
        all += group.size();
    // Letters take about equally long, which is as well as the words' places are known.
    std::size_t before = m_firstGroupBytes;
    for (std::string& group : std::exchange(m_laterGroups, {})) {
        const std::size_t bytes = group.size();
        m_words.push_back({m_sentenceStart + (m_made - m_sentenceStart) * before / all, std::move(group)});
        before += bytes;
    }
}

void ReplyPacer::endReply()
{
    m_isEnded = true;
    finishIfDone();
}

std::vector<PacedPiece> ReplyPacer::due(std::chrono::milliseconds now)
{
    std::vector<PacedPiece> pieces;
    while (hasFrame() && m_heardUntil < now + ahead) {
        takeWords(pieces);
        const std::size_t count = std::min(m_frameSamples, m_samples.size());
        const auto end = m_samples.begin() + static_cast<std::ptrdiff_t>(count);
        pieces.emplace_back(std::vector<std::int16_t>(m_samples.begin(), end));
        m_samples.erase(m_samples.begin(), end);
        m_handedOut += count;
        const std::chrono::microseconds length(static_cast<std::int64_t>(count * 1'000'000 / m_rate));
        m_heardUntil = std::max<std::chrono::microseconds>(m_heardUntil, now) + length;
    }
    if (m_isEnded && m_samples.empty())
        takeWords(pieces);
    finishIfDone();
    return pieces;
}

std::optional<std::chrono::milliseconds> ReplyPacer::nextDue() const
{
    if (!hasFrame())
        return std::nullopt;
    return std::chrono::ceil<std::chrono::milliseconds>(m_heardUntil - ahead);
}

void ReplyPacer::breakOff()
{
    m_samples.clear();
    m_words.clear();
    m_laterGroups.clear();
    m_heardUntil = {}; // The client throws away what it has not played yet.
    endReply();
}

std::chrono::milliseconds ReplyPacer::spoken() const
{
    return std::chrono::milliseconds(static_cast<std::int64_t>((m_spokenBefore + m_handedOut) * 1000 / m_rate));
}

bool ReplyPacer::hasFrame() const
{
    return m_samples.size() >= m_frameSamples || (m_isEnded && !m_samples.empty());
}

/// The words up to the sound that is about to be handed out.
void ReplyPacer::takeWords(std::vector<PacedPiece>& pieces)
{
    while (!m_words.empty() && m_words.front().position <= m_handedOut) {
        pieces.emplace_back(std::move(m_words.front().text));
        m_words.pop_front();
    }
}

void ReplyPacer::finishIfDone()
{
    if (!m_isEnded || !m_samples.empty() || !m_words.empty())
        return;
    m_isSpeaking = false;
    m_spokenBefore += std::exchange(m_handedOut, 0);
    m_made = 0;
}

} // namespace quorvell
