// SPDX-License-Identifier: MIT
#include "LiveService/protocols/OpenAICodec.h"

#include "Media/audio/SampleBytes.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

using Texts = std::vector<std::string>;
using Message = OpenAILiveServerMessage;

std::string inResponse(Json event)
{
    return dumpJson(Message::responseEvent(std::move(event)));
}

struct OpenAIWriter {
    OpenAICodec::Sound sound;

    Texts operator()(const news::Started& started) const
    {
        return {dumpJson(Message::sessionStarted(started.sessionID))};
    }
    Texts operator()(const news::Heard& heard) const { return {dumpJson(Message::inputTranscriptDelta(heard.words))}; }
    Texts operator()(const news::Delegated& delegated) const
    {
        return {dumpJson(Message::delegationCreated(delegated.id))};
    }
    Texts operator()(const news::ResponseBegan& began) const
    {
        return {inResponse(OpenAIResponseEvent::created(began.id))};
    }
    Texts operator()(const news::ToolCalled& called) const
    {
        return {inResponse(OpenAIResponseEvent::functionCallAdded(called.call)),
            inResponse(OpenAIResponseEvent::functionCallDone(called.call))};
    }
    Texts operator()(const news::TextReady& ready) const
    {
        return {inResponse(OpenAIResponseEvent::textDone(ready.text))};
    }
    Texts operator()(const news::ResponseEnded& ended) const
    {
        return {inResponse(OpenAIResponseEvent::ended(ended.end))};
    }
    Texts operator()(const news::Spoken& spoken) const
    {
        return {dumpJson(Message::outputTranscriptDelta(spoken.words))};
    }
    Texts operator()(const news::Sound& reply) const
    {
        if (sound == OpenAICodec::Sound::apart)
            return {};
        return {Message::outputAudioDeltaText(bytesOfSamples(reply.samples))};
    }
    Texts operator()(const news::Usage& usage) const
    {
        return {dumpJson(Message::usageUpdated(usage.seconds, usage.contextRatio))};
    }
    Texts operator()(const news::Refused& refused) const { return {dumpJson(Message::error(refused.report))}; }
    Texts operator()(const news::Closed& closed) const { return {dumpJson(Message::sessionClosed(closed.reason))}; }
    // The protocol has no words for these: the client sees them by what stops coming.
    Texts operator()(const news::Interrupted&) const { return {}; }
    Texts operator()(const news::Generated&) const { return {}; }
    Texts operator()(const news::TurnOver&) const { return {}; }
};

} // namespace

SessionCodec::Incoming OpenAICodec::read(std::string_view text) const
{
    Incoming incoming;
    incoming.messages.push_back(OpenAILiveClientParser::parse(text));
    return incoming;
}

SessionCodec::Outgoing OpenAICodec::write(const SessionNews& news)
{
    return {std::visit(OpenAIWriter{m_sound}, news)};
}

} // namespace quorvell
