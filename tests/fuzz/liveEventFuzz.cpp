// SPDX-License-Identifier: MIT
// Whatever either side of a live session may be sent. Besides not crashing: what was read, written and read again is
// the same.
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEndpoint.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEventMapper.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

namespace {

using namespace quorvell;

/// The short way for sound and the long way through JSON agree. A number among the members forces the long one.
void checkShortWay(std::string_view text)
{
    auto json = parseJson(text);
    if (json && json->is_object()) {
        (*json)["forced"] = 1;
        const std::string forced = dumpJson(*json);
        require(OpenAILiveParser::parse(forced) == OpenAILiveParser::parse(text));
        require(OpenAILiveClientParser::parse(forced) == OpenAILiveClientParser::parse(text));
    } else {
        require(OpenAILiveParser::parse(text).empty());
        require(std::holds_alternative<openai_client::Malformed>(OpenAILiveClientParser::parse(text)));
    }
}

void readAsClient(std::string_view text)
{
    checkShortWay(text);
    for (const OpenAILiveEvent& event : OpenAILiveParser::parse(text)) {
        OpenAILiveEventMapper::map(event);
        if (const auto* audio = std::get_if<openai_event::Audio>(&event)) {
            const auto again = OpenAILiveParser::parse(OpenAILiveServerMessage::outputAudioDeltaText(audio->pcm));
            require(again == std::vector<OpenAILiveEvent>{*audio});
        }
        if (const auto* call = std::get_if<openai_event::FunctionCall>(&event))
            require(OpenAILiveParser::parseBackend(OpenAIResponseEvent::functionCallDone(*call))
                == std::vector<OpenAILiveEvent>{*call});
    }
}

/// Reading leaves out nothing that building puts in: from the second time on nothing changes. The history is cut and
/// trimmed when built, so it is not compared.
void readAsServer(std::string_view text)
{
    auto message = OpenAILiveClientParser::parse(text);
    auto* start = std::get_if<openai_client::SessionStart>(&message);
    if (!start)
        return;
    start->options.history.clear();
    const auto format = OpenAILiveMessage::AudioFormat::declared;
    const std::string built = dumpJson(OpenAILiveMessage::sessionStart(start->options, format));
    const auto again = OpenAILiveClientParser::parse(built);
    const auto* restarted = std::get_if<openai_client::SessionStart>(&again);
    require(restarted != nullptr);
    require(dumpJson(OpenAILiveMessage::sessionStart(restarted->options, format)) == built);
}

} // namespace

void quorvell::search(std::string_view text)
{
    readAsClient(text);
    readAsServer(text);
    OpenAILiveEndpoint::webRTCAnswer(text);
    OpenAILiveEndpoint::refusedSetting(400, text);
    if (const auto endpoint = OpenAILiveEndpoint::create(text))
        require(
            OpenAILiveEndpoint::create(endpoint->request("key").url.substr(0, endpoint->request("key").url.find("/v1")))
            == endpoint);
}
