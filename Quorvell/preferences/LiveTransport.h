// SPDX-License-Identifier: MIT
// How sound travels to an OpenAI service; a setting.
#pragma once

namespace quorvell {

enum class LiveTransport {
    automatic, ///< WebRTC to hosted services, with the WebSocket where it does not get through; here the WebSocket.
    webRTC,
    webSocket,
};

} // namespace quorvell
