// SPDX-License-Identifier: MIT
// What turns a request into a WebSocket, in RFC 6455. Pure; who asks and who answers hash by themselves.
#pragma once

#include "Http/HttpAnswerHead.h"

#include <string_view>

namespace quorvell::websocket_upgrade {

/// Base64 of the SHA-1 of the client's key and this is the acceptance: it proves that the request was understood.
inline constexpr std::string_view acceptanceSuffix = "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";

/// Whether the client may go on in frames. What nobody asked for, an extension or a protocol, is no agreement.
inline bool isAccepted(const HttpAnswerHead& answer, std::string_view acceptance)
{
    return answer.status == 101 && answer.fieldHas("upgrade", "websocket") && answer.fieldHas("connection", "upgrade")
        && answer.field("sec-websocket-accept") == acceptance && answer.field("sec-websocket-extensions").empty()
        && answer.field("sec-websocket-protocol").empty();
}

} // namespace quorvell::websocket_upgrade
