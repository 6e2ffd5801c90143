// SPDX-License-Identifier: MIT
// Whatever a Gemini live session may be sent by its client. What was read survives being written and read again.
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

#include <optional>

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
        require(dumpJson(LiveMessage::audio(message.pcm)) == LiveMessage::audioText(message.pcm));
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

void quorvell::search(std::string_view text)
{
    const auto message = GeminiClientParser::parse(text);
    const auto written = std::visit(Rewriting{}, message);
    require(!written || GeminiClientParser::parse(dumpJson(*written)) == message);
}
