// SPDX-License-Identifier: MIT
// Everything over one WebSocket, sound as base64 in the events.
#pragma once

#include "Quorvell/connections/openai/OpenAITransport.h"
#include "Quorvell/connections/web/LiveSocket.h"

#include <memory>

namespace quorvell {

class OpenAISocketTransport : public OpenAITransport {
public:
    OpenAISocketTransport(Reports reports, LiveTimeLimits limits);

    void open(const LiveAccess& access, const OpenAILiveSetupOptions& options) override;
    void send(std::string_view text) override { m_socket.send(text); }
    std::size_t largestText() const override;
    void sendSound(std::span<const std::uint8_t> pcm) override;
    void close() override { m_socket.close(); }

private:
    void opened();

    Reports m_reports;
    OpenAILiveSetupOptions m_options;
    LiveSocket m_socket;
};

} // namespace quorvell
