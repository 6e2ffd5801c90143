// SPDX-License-Identifier: MIT
// Whatever a Gemini live session may be sent by its server. What was read survives being written and read again, and
// the short way for sound agrees with the long one.
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveServerParser.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

using namespace quorvell;

namespace {

struct Rewriting {
    Json operator()(const live_event::InputTranscript& event) const
    {
        return GeminiServerMessage::inputTranscription(event.text);
    }
    Json operator()(const live_event::OutputTranscript& event) const
    {
        return GeminiServerMessage::outputTranscription(event.text);
    }
    Json operator()(const live_event::ToolCall& event) const { return GeminiServerMessage::toolCall(event.calls); }
    Json operator()(const live_event::ToolCallCancellation& event) const
    {
        return GeminiServerMessage::toolCallCancellation(event.ids);
    }
    Json operator()(const live_event::GoAway& event) const
    {
        return event.timeLeft ? GeminiServerMessage::goAway(*event.timeLeft) : Json{{"goAway", Json::object()}};
    }
    Json operator()(const live_event::ResumptionHandle& event) const
    {
        return GeminiServerMessage::resumptionUpdate(event.handle);
    }
    Json operator()(const live_event::Usage& event) const { return GeminiServerMessage::usage(event.totalTokens); }
    Json operator()(const live_event::SetupComplete& event) const
    {
        return GeminiServerMessage::setupComplete(event.sessionID);
    }
    Json operator()(const live_event::Interrupted&) const { return GeminiServerMessage::interrupted(); }
    Json operator()(const live_event::GenerationComplete&) const { return GeminiServerMessage::generationComplete(); }
    Json operator()(const live_event::TurnComplete&) const { return GeminiServerMessage::turnComplete(); }
    Json operator()(const live_event::Audio& event) const
    {
        const Json message = GeminiServerMessage::audio(event.pcm);
        require(dumpJson(message) == GeminiServerMessage::audioText(event.pcm));
        return message;
    }
    template <typename Other> Json operator()(const Other&) const { std::abort(); } // never from this service
};

} // namespace

void quorvell::search(std::string_view text)
{
    const auto events = LiveServerParser::parse(text);
    if (auto json = parseJson(text); json && json->is_object()) {
        (*json)["forced"] = 1; // keeps the message off the short way
        require(LiveServerParser::parse(dumpJson(*json)) == events);
    }
    for (const LiveServerEvent& event : events)
        require(LiveServerParser::parse(dumpJson(std::visit(Rewriting{}, event))) == std::vector{event});
}
