// SPDX-License-Identifier: MIT
// What was said, kept, found and seen in one conversation, to tell where the words of an action came from.
#pragma once

#include "QuorvellCore/automation/provenance/ProvenanceGrants.h"
#include "QuorvellCore/automation/provenance/ProvenanceRisk.h"
#include "QuorvellCore/automation/provenance/ScreenTaint.h"
#include "QuorvellCore/automation/provenance/WordLedger.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"
#include "QuorvellCore/safety/HeardUtterance.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quorvell {

/// Main thread.
class ConversationWords {
public:
    struct Ports {
        std::function<Instant()> now;
        std::function<std::string()> freshMark; ///< Random, another each time: what the `mark` of fenced() has to be.
    };

    explicit ConversationWords(Ports ports);

    void begin(); ///< A new conversation.
    void userSaid(const HeardUtterance& heard);
    /// Of a tool that neither sees the screen nor acts on it; those tell by `fence`.
    void toolAnswered(const LiveFunctionResponse& response);
    /// A text of others on its way to the model, marked as theirs.
    std::string fence(const std::string& text, WordOrigin origin);

    /// All that is on it may be in somebody's words from now on.
    void seen(const ScreenLook& look);
    /// `look` is what is on the screen as the action is proposed.
    WordOrigins originsOf(const ScreenAction& action, const ScreenLook& look);
    /// With the question that provenance adds to the guard's.
    ActionVerdict verdict(const ActionRisk& guard, const ProposedAction& proposed, const ScreenLook& look) const;

    /// Questions that the user switched off by hand.
    ProvenanceGrants& grants() { return m_grants; }
    const ProvenanceGrants& grants() const { return m_grants; }

private:
    void tell(const Json& value, WordOrigin origin);
    void tell(const std::string& text, WordOrigin origin);

    Ports m_ports;
    WordLedger m_ledger;
    ScreenTaint m_taint;
    ProvenanceGrants m_grants;
    std::int64_t m_seen = -1; ///< The revision of the look that was read last.
};

} // namespace quorvell
