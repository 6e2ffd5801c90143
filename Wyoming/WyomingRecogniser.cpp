// SPDX-License-Identifier: MIT
#include "Wyoming/WyomingRecogniser.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/PrintableText.h"

#include <utility>

namespace quorvell {

WyomingRecogniser::WyomingRecogniser(WyomingAddress address, std::chrono::milliseconds patience)
    : m_address(std::move(address))
    , m_patience(patience)
{
}

void WyomingRecogniser::begin()
{
    const auto now = Clock::now();
    m_hasJustFailed = false;
    m_line.reset();
    if (m_failed && now - *m_failed < pause)
        return;
    m_line = std::make_unique<WyomingLine>(m_address, now);
    m_line->send({"transcribe", Json{{"language", "en"}}, {}}, now);
    m_line->send(WyomingEvent::audioStart(sampleRateHz), now);
}

void WyomingRecogniser::feed(std::span<const std::int16_t> samples)
{
    if (m_line && !samples.empty())
        m_line->send(WyomingEvent::audioChunk(sampleRateHz, samples), Clock::now());
}

std::optional<std::string> WyomingRecogniser::finish(const std::stop_token& stop)
{
    if (!m_line)
        return std::nullopt;
    m_line->send(WyomingEvent::audioStop(), Clock::now());
    auto text = words(stop);
    m_line.reset();
    if (text)
        m_failed.reset();
    else if (!stop.stop_requested())
        m_hasJustFailed = !std::exchange(m_failed, Clock::now());
    return text;
}

std::optional<std::string> WyomingRecogniser::words(const std::stop_token& stop)
{
    const auto until = Clock::now() + m_patience;
    WyomingEvent event;
    for (int count = 0; count < mostMessages; ++count) {
        if (m_line->receive(event, until, stop) != WyomingLine::Waiting::open || event.type == "error")
            return std::nullopt;
        if (event.type == "transcript") {
            const auto text = readString(event.data, "text");
            if (!text)
                return std::nullopt;
            return onOneLine(printableText(firstCharacters(repairUtf8(*text), longestText)));
        }
    }
    return std::nullopt;
}

} // namespace quorvell
