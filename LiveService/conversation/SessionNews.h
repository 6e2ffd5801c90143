// SPDX-License-Identifier: MIT
// What a session tells its client, before any protocol words it.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIErrorReport.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEnd.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace quorvell::news {

struct Started {
    std::string sessionID;
    bool operator==(const Started&) const = default;
};
/// What the user said, in written form.
struct Heard {
    std::string words;
    bool operator==(const Heard&) const = default;
};
/// The voice hands what it heard to the backend.
struct Delegated {
    std::string id;
    bool operator==(const Delegated&) const = default;
};
struct ResponseBegan {
    std::string id;
    bool operator==(const ResponseBegan&) const = default;
};
struct ToolCalled {
    openai_event::FunctionCall call;
    bool operator==(const ToolCalled&) const = default;
};
/// The whole text of a reply that is about to be given.
struct TextReady {
    std::string text;
    bool operator==(const TextReady&) const = default;
};
struct ResponseEnded {
    OpenAIResponseEnd end;
    bool operator==(const ResponseEnded&) const = default;
};
/// Words of the reply, with the sound that speaks them; a reply that is only shown comes as one piece.
struct Spoken {
    std::string words;
    bool operator==(const Spoken&) const = default;
};
/// The reply's sound, at most 40 ms of it.
struct Sound {
    std::vector<std::int16_t> samples;
    bool operator==(const Sound&) const = default;
};
/// The user began to speak over the reply; what was not handed out yet will not come.
struct Interrupted {
    bool operator==(const Interrupted&) const = default;
};
/// The reply is made; its sound may still be on its way.
struct Generated {
    bool operator==(const Generated&) const = default;
};
/// Nothing is being said, thought or owed any more.
struct TurnOver {
    bool operator==(const TurnOver&) const = default;
};
struct Usage {
    double seconds = 0; ///< Of sound in both directions so far.
    double contextRatio = 0; ///< 0 to 1.
    std::int64_t totalTokens = 0; ///< So far.
    bool operator==(const Usage&) const = default;
};
struct Refused {
    OpenAIErrorReport report;
    bool operator==(const Refused&) const = default;
};
struct Closed {
    std::string reason;
    bool operator==(const Closed&) const = default;
};

} // namespace quorvell::news

namespace quorvell {

using SessionNews = std::variant<news::Started, news::Heard, news::Delegated, news::ResponseBegan, news::ToolCalled,
    news::TextReady, news::ResponseEnded, news::Spoken, news::Sound, news::Interrupted, news::Generated, news::TurnOver,
    news::Usage, news::Refused, news::Closed>;

} // namespace quorvell
