// SPDX-License-Identifier: MIT
// What becomes of a session's messages on a wire that fails on purpose. Pure: messages and times in, actions out.
#pragma once

#include "LiveService/faults/Fault.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvell::wire_action {

struct Send {
    std::string text;
    bool operator==(const Send&) const = default;
};
struct Close {
    int code = 1006;
    bool operator==(const Close&) const = default;
};
struct Freeze {
    bool operator==(const Freeze&) const = default;
}; ///< Nothing is read, written or answered any more.
struct FallSilent {
    bool operator==(const FallSilent&) const = default;
}; ///< The service says nothing more; the connection lives.

} // namespace quorvell::wire_action

namespace quorvell {

using WireAction = std::variant<wire_action::Send, wire_action::Close, wire_action::Freeze, wire_action::FallSilent>;

/// Without faults every message is due at once and unchanged. Not thread safe; lives with its session.
class FaultyWire {
public:
    using Time = std::chrono::milliseconds;

    static constexpr Time longestHold{200}; ///< For the second of two messages that change places.
    static constexpr std::size_t oversize = 17 * 1024 * 1024;

    explicit FaultyWire(SessionFaults faults);

    void take(std::string text, Time now);
    /// What is to be done by now, in order.
    std::vector<WireAction> due(Time now);
    std::optional<Time> nextDue() const;

private:
    struct Later {
        Time due;
        WireAction action;
    };

    bool isAfter(Fault::Kind kind) const;
    void add(WireAction action, Time now);
    void addText(std::string text, Time now);

    SessionFaults m_faults;
    int m_taken = 0;
    bool m_isOver = false;
    std::optional<std::string> m_held; ///< The first of two that change places.
    Time m_heldUntil{};
    std::deque<Later> m_later;
};

} // namespace quorvell
