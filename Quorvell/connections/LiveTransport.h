#pragma once

namespace quorvell {

/// How sound travels to an OpenAI service; a setting.
enum class LiveTransport {
    automatic, ///< WebRTC to hosted services, with the WebSocket where it does not get through; here the WebSocket.
    webRTC,
    webSocket,
};

} // namespace quorvell
