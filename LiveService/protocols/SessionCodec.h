// SPDX-License-Identifier: MIT
// How one client speaks: its texts to messages, the session's news to texts. Pure.
#pragma once

#include "LiveService/conversation/EngineEffect.h"
#include "LiveService/conversation/SessionNews.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientMessage.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Not thread safe but for `read`; lives with its session.
class SessionCodec {
public:
    struct Incoming {
        std::vector<OpenAILiveClientMessage> messages{};
        std::vector<LiveHistoryEntry> earlier{}; ///< Turns to remember without answering; they come first.
        std::optional<std::string> handle{}; ///< Of an earlier session that is to be taken up.
        bool wantsHandles = false; ///< From now on the client wants to be able to take this session up later.
        bool soundPauses = false; ///< The client sends no sound for now; comes last.
    };
    struct Outgoing {
        std::vector<std::string> texts{};
        std::optional<effect::CloseConnection> close{}; ///< Where the protocol has no other way to refuse.
    };

    virtual ~SessionCodec() = default;

    /// Callable from any thread.
    virtual Incoming read(std::string_view text) const = 0;
    virtual Outgoing write(const SessionNews& news) = 0;
    /// That the session can be taken up with `handle`; empty where the protocol knows no such thing, as below.
    virtual std::string resumption(std::string_view handle) const;
    /// That the connection will end soon.
    virtual std::string goAway(std::chrono::milliseconds timeLeft) const;
    /// The rate of the replies where the client does not declare it.
    virtual std::optional<int> spokenRateHz() const { return std::nullopt; }
};

} // namespace quorvell
