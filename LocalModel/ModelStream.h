// SPDX-License-Identifier: MIT
// Reads one answer of a model in the chat completions form as its bytes arrive: an event stream, or one JSON object
// from servers that do not stream. Pure.
#pragma once

#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Nothing in it is trusted: what goes beyond a bound, or is no such answer, ends it as broken.
class ModelStream {
public:
    static constexpr std::size_t mostBytes = 2 * 1024 * 1024; ///< Of an answer, what the model thinks included.
    static constexpr std::size_t longestText = 8 * 1024; ///< Bytes of what is to be said. Nobody listens longer.
    static constexpr std::size_t mostCalls = 8;
    static constexpr std::size_t longestName = 64;
    static constexpr std::size_t longestArguments = 16 * 1024;

    enum class State { waiting, running, whole, broken };

    struct Call {
        std::string name{};
        std::string arguments{};
        bool operator==(const Call&) const = default;
    };

    void add(std::string_view bytes);
    /// The connection has ended: what is still missing will not come.
    void end();

    /// Waiting until the model gave anything of its own, be it a thought; comments that keep a line open count not.
    State state() const { return m_state; }
    /// What came since this was last asked, to be said; thoughts between <think> and </think> are left out.
    std::string takeText();
    const std::vector<Call>& calls() const { return m_calls; }
    bool operator==(const ModelStream& other) const
    {
        return m_state == other.m_state && m_text == other.m_text && m_calls == other.m_calls;
    }

private:
    void take(std::string_view data);
    void takeChoice(const Json& message);
    void takeCalls(const Json& calls);
    void takeCall(const Json& part, std::size_t place);
    void takeWords(std::string_view words);
    void sortWords();
    void fail() { m_state = State::broken; }

    State m_state = State::waiting;
    bool m_isPlain = false; ///< One JSON object instead of events.
    std::size_t m_bytes = 0;
    std::size_t m_textBytes = 0;
    std::string m_body; ///< Of the plain form, so far.
    ServerSentEvents m_events;
    std::string m_raw; ///< Words that are not sorted into thoughts and text yet.
    bool m_isThinking = false;
    std::string m_text;
    std::vector<Call> m_calls;
};

} // namespace quorvell
