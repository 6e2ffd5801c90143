// SPDX-License-Identifier: MIT
#include "Wyoming/WyomingEvent.h"

namespace quorvell {

namespace {

Json soundForm(int rateHz)
{
    return {{"rate", rateHz}, {"width", 2}, {"channels", 1}};
}

} // namespace

std::string WyomingEvent::bytes() const
{
    Json head{{"type", type}, {"version", "1.0.0"}};
    const std::string body = data.empty() ? std::string() : dumpJson(data);
    if (!body.empty())
        head["data_length"] = body.size();
    if (!payload.empty())
        head["payload_length"] = payload.size();
    return dumpJson(head) + "\n" + body + payload;
}

WyomingEvent WyomingEvent::audioStart(int rateHz)
{
    return {"audio-start", soundForm(rateHz), {}};
}

WyomingEvent WyomingEvent::audioChunk(int rateHz, std::span<const std::int16_t> samples)
{
    WyomingEvent event{"audio-chunk", soundForm(rateHz), {}};
    event.payload.reserve(samples.size() * 2);
    for (const std::int16_t sample : samples) {
        const auto bits = static_cast<std::uint16_t>(sample);
        event.payload += static_cast<char>(bits & 0xFFU);
        event.payload += static_cast<char>(bits >> 8U);
    }
    return event;
}

WyomingEvent WyomingEvent::audioStop()
{
    return {"audio-stop", Json::object(), {}};
}

WyomingEvent WyomingEvent::synthesize(std::string_view text, std::string_view voice)
{
    WyomingEvent event{"synthesize", {{"text", std::string(text)}}, {}};
    if (!voice.empty())
        event.data["voice"] = {{"name", std::string(voice)}};
    return event;
}

} // namespace quorvell
