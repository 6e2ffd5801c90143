// SPDX-License-Identifier: MIT
// Ways in which the service can be told to fail on purpose: for tests, and for users who look for a weak spot. Pure.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// One fault, "NAME[=VALUE[:VALUE]][@SESSION]". Everything about it is decided by what was sent before: the same
/// conversation fails at the same place each time.
struct Fault {
    enum class Kind {
        slow, ///< Everything is sent so much later (`time`).
        refuse, ///< The request gets HTTP status `count`, naming `setting` where there is one.
        drop, ///< The connection is cut after `count` messages.
        close, ///< It is closed with `code` after `count` messages.
        halfOpen, ///< It stays but is dead after `count` messages.
        stuck, ///< It stays and answers pings, but after `count` messages nothing more is said over it.
        asleep, ///< After `time` it is dead, as it is for a computer that slept.
        latePong, ///< Pings are answered so much later (`time`).
        goAway, ///< After `time` the end is announced, and comes after `timeLeft`.
        rejectHandle, ///< No handle of an earlier session is known.
        malformed, ///< A text that is no JSON is sent after `count` messages.
        oversized, ///< One of 17 MiB.
        duplicate, ///< Every message is sent twice.
        reorder, ///< Of every two messages the second is sent first.
        closeInTool, ///< The session is closed while a tool runs.
        rejectCreate, ///< The `count`th wish for a response is refused.
        udpBlocked, ///< An answer to an offer leads nowhere.
        age, ///< The session ends after `time`.
        context, ///< At least `count` per cent of the context are reported as used.
    };

    Kind kind = Kind::slow;
    std::chrono::milliseconds time{};
    std::chrono::milliseconds timeLeft{};
    int count = 0;
    int code = 0;
    std::string setting{};
    int session = 0; ///< Only the so manieth request or session since the start; 0 is every one.

    /// Nothing when the text names no fault; `problem` then says in a sentence what is wrong.
    static std::optional<Fault> parse(std::string_view text, std::string& problem);
    /// One line for each name, for a help text.
    static std::string help();

    bool operator==(const Fault&) const = default;
};

/// The faults of one session.
struct SessionFaults {
    std::vector<Fault> list;

    /// Those of `all` that concern the session with this number, from 1 on.
    static SessionFaults of(const std::vector<Fault>& all, int session);
    /// Null when there is none of this kind.
    const Fault* find(Fault::Kind kind) const;
};

} // namespace quorvell
