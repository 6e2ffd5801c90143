// SPDX-License-Identifier: MIT
// The words of a session for clients of the Gemini protocol.
#pragma once

#include "LiveService/protocols/SessionCodec.h"

namespace quorvell {

/// The protocol has no event for what cannot be taken: the connection ends with 1007.
class GeminiCodec : public SessionCodec {
public:
    Incoming read(std::string_view text) const override;
    Outgoing write(const SessionNews& news) override;
    std::string resumption(std::string_view handle) const override;
    std::string goAway(std::chrono::milliseconds timeLeft) const override;
    std::optional<int> spokenRateHz() const override;
};

} // namespace quorvell
