// SPDX-License-Identifier: MIT
// What went wrong with a connection, as the network shows it.
#pragma once

#include "Quorvell/connections/access/LiveAccess.h"
#include "Quorvell/session/ports/LiveClosure.h"

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

struct [[nodiscard]] ConnectionFailure {
    enum class Kind {
        refusedRequest, ///< `code` is the HTTP status, 0 when it is unknown; `detail` the body where one is known.
        refusedSession, ///< The service answered session.start with an error; `detail` is its message.
        nameUnknown,
        nobodyAnswers,
        untrusted, ///< TLS; `detail` says why.
        openedTooSlowly,
        startedTooSlowly,
        wentSilent,
        closed, ///< By the other side; `code` is the WebSocket close code, `detail` its reason.
        createRefused, ///< The service would not answer, again and again.
        unreadableAnswer, ///< It answered the request with something else.
        mediaBlocked, ///< The session was made, but the peers did not find each other.
        ownFault, ///< This program could not begin; `detail` says why.
    };

    Kind kind = Kind::closed;
    int code = 0;
    std::string detail{};
    std::string message{}; ///< What a refusing service says for people.
    std::optional<std::chrono::milliseconds> retryAfter{}; ///< How long the service asks to be left alone.

    /// The service has too much to do, or a problem that passes; it says so itself.
    bool isBusy() const;
    /// For the session and the user.
    LiveClosure closure(const LiveAccess& access) const;

    /// A refusal over HTTP: the message is taken from the body, which may hold {"error": {"message"}}.
    static ConnectionFailure refusal(int status, std::string body);

    bool operator==(const ConnectionFailure&) const = default;
};

} // namespace quorvell
