// SPDX-License-Identifier: MIT
#include "LiveService/protocols/GeminiCodec.h"

#include "Media/audio/SampleBytes.h"
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

using Incoming = SessionCodec::Incoming;
using Outgoing = SessionCodec::Outgoing;

constexpr int invalidData = 1007;
constexpr std::size_t longestReason = 123; ///< Bytes that fit into the frame that closes a WebSocket.

/// The declarations of all groups.
Json flattened(const Json& groups)
{
    Json tools = Json::array();
    for (const Json& group : groups) {
        const Json* declarations = memberOf(group, "functionDeclarations");
        if (!declarations || !declarations->is_array())
            continue;
        tools.insert(tools.end(), declarations->begin(), declarations->end());
    }
    return tools;
}

struct Reader {
    Incoming operator()(gemini_client::Setup& setup) const
    {
        OpenAILiveSetupOptions options;
        options.model = std::move(setup.options.model);
        options.voice = std::move(setup.options.voiceName);
        options.instructions = std::move(setup.options.systemInstruction);
        options.tools = flattened(setup.options.tools);
        options.sampleRate = LiveMessage::inputSampleRate;
        Incoming incoming;
        incoming.messages.emplace_back(openai_client::SessionStart{std::move(options), {}});
        incoming.handle = std::move(setup.options.resumptionHandle);
        incoming.wantsHandles = true;
        return incoming;
    }
    Incoming operator()(gemini_client::Audio& audio) const
    {
        if (audio.sampleRate != LiveMessage::inputSampleRate)
            return malformed("Sound must come at 16000 Hz.");
        return {{openai_client::InputAudio{std::move(audio.pcm)}}};
    }
    Incoming operator()(gemini_client::Content& content) const
    {
        Incoming incoming;
        std::string request;
        if (content.isComplete && !content.turns.empty() && content.turns.back().role == "user") {
            request = std::move(content.turns.back().text);
            content.turns.pop_back();
        }
        incoming.earlier = std::move(content.turns);
        if (request.empty())
            return incoming;
        incoming.messages.emplace_back(openai_client::UserMessage{std::move(request), {}, {}});
        incoming.messages.emplace_back(openai_client::ResponseCreate{});
        return incoming;
    }
    Incoming operator()(gemini_client::ToolResponse& answer) const
    {
        Incoming incoming;
        for (const LiveFunctionResponse& response : answer.responses)
            incoming.messages.emplace_back(openai_client::FunctionOutput{response.id, dumpJson(response.response), {}});
        incoming.messages.emplace_back(openai_client::ResponseCreate{});
        return incoming;
    }
    Incoming operator()(gemini_client::Malformed& problem) const { return malformed(std::move(problem.reason)); }
    Incoming operator()(gemini_client::AudioStreamEnd&) const { return {.soundPauses = true}; }
    Incoming operator()(gemini_client::Image&) const { return {}; } // Pictures tell the rules nothing.

    static Incoming malformed(std::string reason)
    {
        return {{openai_client::Malformed{"invalid_value", std::move(reason), {}}}};
    }
};

Outgoing text(const Json& message)
{
    return {{dumpJson(message)}};
}

struct GeminiWriter {
    Outgoing operator()(const news::Started& started) const
    {
        return text(GeminiServerMessage::setupComplete(started.sessionID));
    }
    Outgoing operator()(const news::Heard& heard) const
    {
        return text(GeminiServerMessage::inputTranscription(heard.words));
    }
    Outgoing operator()(const news::ToolCalled& called) const
    {
        return text(GeminiServerMessage::toolCall({LiveFunctionCall::fromArgumentsText(
            called.call.callID, called.call.name, called.call.arguments, called.call.incomplete)}));
    }
    Outgoing operator()(const news::Spoken& spoken) const
    {
        return text(GeminiServerMessage::outputTranscription(spoken.words));
    }
    Outgoing operator()(const news::Sound& sound) const
    {
        return {{GeminiServerMessage::audioText(bytesOfSamples(sound.samples))}};
    }
    Outgoing operator()(const news::Interrupted&) const { return text(GeminiServerMessage::interrupted()); }
    Outgoing operator()(const news::Generated&) const { return text(GeminiServerMessage::generationComplete()); }
    Outgoing operator()(const news::TurnOver&) const { return text(GeminiServerMessage::turnComplete()); }
    Outgoing operator()(const news::Usage& usage) const { return text(GeminiServerMessage::usage(usage.totalTokens)); }
    Outgoing operator()(const news::Refused& refused) const
    {
        // What waits is answered with the response that runs or that a result will bring.
        for (const char* harmless : {"response_in_progress", "function_call_output_missing", "unknown_call_id"}) {
            if (refused.report.code == harmless)
                return {};
        }
        return {{}, effect::CloseConnection{invalidData, refused.report.message.substr(0, longestReason)}};
    }
    Outgoing operator()(const news::Delegated&) const { return {}; }
    Outgoing operator()(const news::ResponseBegan&) const { return {}; }
    Outgoing operator()(const news::TextReady&) const { return {}; }
    Outgoing operator()(const news::ResponseEnded&) const { return {}; }
    Outgoing operator()(const news::Closed&) const { return {}; }
};

} // namespace

SessionCodec::Incoming GeminiCodec::read(std::string_view text) const
{
    GeminiClientMessage message = GeminiClientParser::parse(text);
    return std::visit(Reader(), message);
}

SessionCodec::Outgoing GeminiCodec::write(const SessionNews& news)
{
    return std::visit(GeminiWriter(), news);
}

std::string GeminiCodec::resumption(std::string_view handle) const
{
    return dumpJson(GeminiServerMessage::resumptionUpdate(handle));
}

std::string GeminiCodec::goAway(std::chrono::milliseconds timeLeft) const
{
    return dumpJson(GeminiServerMessage::goAway(timeLeft));
}

std::optional<int> GeminiCodec::spokenRateHz() const
{
    return LiveMessage::outputSampleRate;
}

} // namespace quorvell
