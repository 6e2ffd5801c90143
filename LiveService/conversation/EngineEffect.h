// SPDX-License-Identifier: MIT
// What a conversation wants done around it. The engine only returns these; the session carries them out, in order.
#pragma once

#include "LiveService/conversation/SessionNews.h"
#include "Understanding/dialogue/HeardDoubts.h"
#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace quorvell::effect {

/// Something for the client to know.
struct Tell {
    SessionNews news;
    bool operator==(const Tell&) const = default;
};
/// The session has started: recognition and voice are wanted. Comes once, before all that need them.
struct PrepareSpeech {
    int heardRateHz = 0;
    int spokenRateHz = 0;
    std::string voice;
    bool operator==(const PrepareSpeech&) const = default;
};
/// The client begins to send sound: recognition will be wanted. Before the first turn.
struct ExpectSpeech {
    bool operator==(const ExpectSpeech&) const = default;
};
/// A new turn for the recogniser.
struct BeginListening {
    bool operator==(const BeginListening&) const = default;
};
/// Samples of the turn, at the session's rate.
struct Listen {
    std::vector<std::int16_t> samples;
    bool operator==(const Listen&) const = default;
};
/// The user fell silent: the shape of what they said so far goes to LiveSessionEngine::judged with this number.
struct JudgePause {
    int pause = 0;
    RequestMemory memory;
    bool operator==(const JudgePause&) const = default;
};
/// The turn is over: what was heard goes to LiveSessionEngine::heard.
struct FinishListening {
    bool operator==(const FinishListening&) const = default;
};
/// The rules are to run over the user's words; their step goes to LiveSessionEngine::thought.
struct ThinkAboutWords {
    std::string words;
    std::optional<HeardDoubts> doubts; ///< Nothing for typed words.
    RequestMemory memory;
    bool operator==(const ThinkAboutWords&) const = default;
};
/// The same over a tool's result.
struct ThinkAboutResult {
    ToolRequest call;
    std::string result;
    RequestMemory memory;
    bool operator==(const ThinkAboutResult&) const = default;
};
/// The user's own model is to be asked; what it sends goes to LiveSessionEngine::modelSent and modelEnded. Whatever was
/// asked before is no longer wanted.
struct AskModel {
    std::string body; ///< JSON.
    bool operator==(const AskModel&) const = default;
};
/// Nothing that was asked of the model is wanted any more.
struct StopModel {
    bool operator==(const StopModel&) const = default;
};
/// The sentences are to be voiced; what the voice gives goes to LiveSessionEngine::voiced with this number.
struct Voice {
    int reply = 0;
    std::vector<std::string> sentences;
    bool operator==(const Voice&) const = default;
};
/// Whatever is being voiced is no longer wanted.
struct StopVoice {
    bool operator==(const StopVoice&) const = default;
};
/// The connection is to be closed after everything before this was sent.
struct CloseConnection {
    int code = 1000; ///< Of the WebSocket protocol; other ways to connect just end.
    std::string reason;
    bool operator==(const CloseConnection&) const = default;
};

} // namespace quorvell::effect

namespace quorvell {

using EngineEffect = std::variant<effect::Tell, effect::PrepareSpeech, effect::ExpectSpeech, effect::BeginListening,
    effect::Listen, effect::JudgePause, effect::FinishListening, effect::ThinkAboutWords, effect::ThinkAboutResult,
    effect::AskModel, effect::StopModel, effect::Voice, effect::StopVoice, effect::CloseConnection>;
using EngineEffects = std::vector<EngineEffect>;

} // namespace quorvell
