// SPDX-License-Identifier: MIT
// Lets one action run at a time, and lets it be cancelled while it runs.
#pragma once

#include "QuorvellCore/automation/ActionCancellation.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace quorvell {

/// Any thread.
class ActionExecutionGate {
public:
    /// The right to run one action. A running action looks at its cancellation between its steps.
    struct Ticket {
        std::string id;
        std::string callID; ///< Of the model's tool call.
        std::shared_ptr<ActionCancellation> cancellation; ///< Never null; outlives the gate with the action.
    };

    /// `freshID` gives a new UUID's text each time; it is called by one thread at a time.
    explicit ActionExecutionGate(std::function<std::string()> freshID);

    /// Nothing while another action runs: the call is then refused as busy.
    [[nodiscard]] std::optional<Ticket> begin(std::string callID);
    bool isCurrent(const Ticket& ticket) const;
    /// Of the action that runs; nothing while none does.
    std::optional<Ticket> current() const;
    /// Of a ticket that is not current, nothing happens.
    void finish(const Ticket& ticket);
    /// Tells the running action to stop and makes way for the next one at once.
    void cancel();

private:
    bool isActive(const Ticket& ticket) const;

    std::function<std::string()> m_freshID;
    mutable std::mutex m_lock;
    std::optional<Ticket> m_active;
};

} // namespace quorvell
