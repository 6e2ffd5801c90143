// SPDX-License-Identifier: MIT
// How one talks with a live service.
#pragma once

namespace quorvell {

enum class LiveProtocol {
    openAI, ///< A live session, over WebRTC or a WebSocket.
    gemini,
    responses, ///< Typed, a request for each answer.
};

} // namespace quorvell
