// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAILiveEventMapper.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodeWord.h"

#include <utility>

namespace quorvell {

namespace {

using Mapped = std::vector<LiveServerEvent>;

/// A list of one without copying its element, as an initialiser list would: sound comes through here.
template <typename Event> Mapped mapped(Event event)
{
    Mapped events;
    events.emplace_back(std::move(event));
    return events;
}

Mapped diagnostic(const char* name, std::string detail)
{
    return mapped(live_event::Diagnostic{name, std::move(detail)});
}

struct Mapping {
    Mapped operator()(openai_event::Started event) const
    {
        return mapped(live_event::SetupComplete{std::move(event.sessionID)});
    }
    Mapped operator()(openai_event::Audio event) const { return mapped(live_event::Audio{std::move(event.pcm)}); }
    Mapped operator()(openai_event::InputTranscript event) const
    {
        return mapped(live_event::InputTranscript{std::move(event.delta)});
    }
    Mapped operator()(openai_event::OutputTranscript event) const
    {
        return mapped(live_event::OutputTranscript{std::move(event.delta)});
    }
    Mapped operator()(openai_event::Delegated event) const
    {
        return mapped(live_event::Delegated{std::move(event.delegationID)});
    }
    Mapped operator()(const openai_event::BackendStarted& event) const
    {
        return diagnostic("backend_started", codeWord(event.responseID));
    }
    Mapped operator()(const openai_event::BackendEnded& event) const
    {
        return diagnostic("backend_ended", codeWord(event.status));
    }
    Mapped operator()(openai_event::FunctionCall event) const
    {
        live_event::ToolCall call;
        call.calls.push_back(LiveFunctionCall::fromArgumentsText(
            std::move(event.callID), std::move(event.name), event.arguments, event.incomplete));
        return mapped(std::move(call));
    }
    Mapped operator()(const openai_event::ToolChosen& event) const
    {
        return diagnostic("tool_chosen", codeWord(event.name));
    }
    Mapped operator()(openai_event::Reasoning event) const
    {
        return mapped(live_event::Thinking{std::move(event.delta)});
    }
    Mapped operator()(const openai_event::BackendText& event) const
    {
        return diagnostic("backend_text", std::to_string(characterCount(event.text)) + " characters");
    }
    Mapped operator()(openai_event::Usage event) const
    {
        Mapped events;
        if (event.seconds)
            events.emplace_back(live_event::BilledSeconds{*event.seconds});
        if (event.contextRatio)
            events.emplace_back(live_event::ContextUsage{*event.contextRatio});
        return events;
    }
    Mapped operator()(openai_event::BackendUsage event) const
    {
        Mapped events = mapped(live_event::Usage{event.inputTokens + event.outputTokens});
        events.emplace_back(live_event::Diagnostic{"backend_usage",
            "input " + std::to_string(event.inputTokens) + ", cached " + std::to_string(event.cachedTokens)
                + ", output " + std::to_string(event.outputTokens)});
        return events;
    }
    Mapped operator()(const openai_event::ServedTier& event) const
    {
        return diagnostic("served_tier", codeWord(event.tier));
    }
    Mapped operator()(openai_event::Error event) const
    {
        const std::string what = event.message ? " (" + *event.message + ")" : " without saying which";
        return mapped(live_event::ServerError{std::move(event.code),
            "The service reported a problem" + what + ". Ask again.", std::move(event.clientEventID)});
    }
    Mapped operator()(const openai_event::Closed& event) const
    {
        return diagnostic("session_closed", codeWord(event.reason));
    }
};

} // namespace

std::vector<LiveServerEvent> OpenAILiveEventMapper::map(OpenAILiveEvent event)
{
    return std::visit(Mapping{}, std::move(event));
}

} // namespace quorvell
