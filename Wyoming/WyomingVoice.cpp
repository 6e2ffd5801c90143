// SPDX-License-Identifier: MIT
#include "Wyoming/WyomingVoice.h"

#include <utility>
#include <vector>

namespace quorvell {

namespace {

constexpr std::int64_t leastRateHz = 8'000;
constexpr std::int64_t mostRateHz = 48'000;

struct SoundForm {
    int rateHz = 0;
    std::size_t channels = 0;
};

/// 16 bits, at a rate and with channels that voices have.
std::optional<SoundForm> formOf(const Json& data)
{
    const auto rate = readInteger(data, "rate");
    const auto channels = readInteger(data, "channels");
    if (!rate || *rate < leastRateHz || *rate > mostRateHz || readInteger(data, "width") != 2 || !channels
        || *channels < 1 || *channels > 2)
        return std::nullopt;
    return SoundForm{static_cast<int>(*rate), static_cast<std::size_t>(*channels)};
}

/// Of two channels the first: a voice sounds the same in both.
std::vector<std::int16_t> firstChannel(std::string_view bytes, std::size_t channels)
{
    std::vector<std::int16_t> samples;
    samples.reserve(bytes.size() / (2 * channels));
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2 * channels) {
        const auto low = static_cast<std::uint8_t>(bytes[at]);
        const auto high = static_cast<std::uint8_t>(bytes[at + 1]);
        samples.push_back(static_cast<std::int16_t>(static_cast<std::uint16_t>(low | (high << 8))));
    }
    return samples;
}

/// Goes through what the service sends for one sentence.
class Listening {
public:
    Listening(WyomingLine& line, const WyomingVoice::Sink& sink, const std::stop_token& stop)
        : m_line(line)
        , m_sink(sink)
        , m_stop(stop)
    {
    }

    WyomingVoice::Verdict run(std::chrono::milliseconds patience)
    {
        WyomingEvent event;
        while (true) {
            const auto waiting = m_line.receive(event, std::chrono::steady_clock::now() + patience, m_stop);
            if (waiting == WyomingLine::Waiting::stopped || m_stop.stop_requested())
                return WyomingVoice::Verdict::stopped;
            if (waiting != WyomingLine::Waiting::open || !take(event))
                return WyomingVoice::Verdict::failed;
            if (event.type == "audio-stop")
                return m_seconds > 0 ? WyomingVoice::Verdict::spoken : WyomingVoice::Verdict::failed;
        }
    }

private:
    bool take(const WyomingEvent& event)
    {
        if (event.type == "error" || ++m_messages > mostMessages)
            return false;
        if (event.type != "audio-chunk")
            return true;
        const auto form = formOf(event.data);
        if (!form)
            return false;
        const auto samples = firstChannel(event.payload, form->channels);
        m_seconds += static_cast<double>(samples.size()) / form->rateHz;
        if (m_seconds > static_cast<double>(WyomingVoice::longest.count()))
            return false;
        if (!samples.empty())
            m_sink(samples, form->rateHz);
        return true;
    }

    static constexpr int mostMessages = 20'000; ///< Pieces of 10 ms in the longest sound, and some.

    WyomingLine& m_line;
    const WyomingVoice::Sink& m_sink;
    const std::stop_token& m_stop;
    double m_seconds = 0; ///< Of sound so far.
    int m_messages = 0;
};

} // namespace

WyomingVoice::WyomingVoice(WyomingAddress address, std::chrono::milliseconds patience)
    : m_address(std::move(address))
    , m_patience(patience)
{
}

WyomingVoice::Verdict WyomingVoice::speak(std::string_view text, const Sink& sink, const std::stop_token& stop)
{
    const auto now = Clock::now();
    m_hasJustFailed = false;
    if (m_failed && now - *m_failed < pause)
        return Verdict::failed;
    WyomingLine line(m_address, now);
    line.send(WyomingEvent::synthesize(text, {}), now);
    const Verdict verdict = Listening(line, sink, stop).run(m_patience);
    if (verdict == Verdict::failed)
        m_hasJustFailed = !std::exchange(m_failed, Clock::now());
    else if (verdict == Verdict::spoken)
        m_failed.reset();
    return verdict;
}

} // namespace quorvell
