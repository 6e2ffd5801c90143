// SPDX-License-Identifier: MIT
// Whatever a Gemini live session may be sent by its client. What was read survives being written and read again.
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

using namespace quorvell;

namespace {

/// Nothing where writing changes what was read: history is trimmed and cut, sound has one rate.
struct Rewriting {
    std::optional<Json> operator()(const gemini_client::Setup& message) const
    {
        return LiveMessage::setup(message.options);
    }
    std::optional<Json> operator()(const gemini_client::Audio& message) const
    {
        if (message.sampleRate != LiveMessage::inputSampleRate)
            return std::nullopt;
        if (dumpJson(LiveMessage::audio(message.pcm)) != LiveMessage::audioText(message.pcm))
            std::abort();
        return LiveMessage::audio(message.pcm);
    }
    std::optional<Json> operator()(const gemini_client::Image& message) const
    {
        return LiveMessage::image(message.jpeg);
    }
    std::optional<Json> operator()(const gemini_client::AudioStreamEnd&) const { return LiveMessage::audioStreamEnd(); }
    std::optional<Json> operator()(const gemini_client::Content&) const { return std::nullopt; }
    std::optional<Json> operator()(const gemini_client::ToolResponse& message) const
    {
        return LiveMessage::toolResponse(message.responses);
    }
    std::optional<Json> operator()(const gemini_client::Malformed&) const { return std::nullopt; }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto message = GeminiClientParser::parse({reinterpret_cast<const char*>(data), size});
    const auto written = std::visit(Rewriting{}, message);
    if (written && GeminiClientParser::parse(dumpJson(*written)) != message)
        std::abort();
    return 0;
}
