// SPDX-License-Identifier: MIT
// Writes one answer of the Responses service as an event stream, in the protocol's order; the counterpart of
// ResponsesStreamParser.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIErrorReport.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEnd.h"
#include "QuorvellCore/text/Json.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvell {

/// Every function returns the bytes to send now. Written text is a message item, which opens with its first delta and
/// closes by itself before anything else.
class ResponsesStreamWriter {
public:
    explicit ResponsesStreamWriter(std::string responseID);

    [[nodiscard]] std::string created();
    [[nodiscard]] std::string reasoningDelta(std::string_view text);
    [[nodiscard]] std::string textDelta(std::string_view text);
    /// The whole of a call: begun, its arguments, done. An incomplete one ends where its arguments end.
    [[nodiscard]] std::string functionCall(const openai_event::FunctionCall& call);
    /// The end's response id is this answer's, whatever it says.
    [[nodiscard]] std::string ended(OpenAIResponseEnd end);
    [[nodiscard]] std::string error(const OpenAIErrorReport& report);

private:
    std::string write(Json event);
    std::string closeText();
    std::string itemID(const char* kind) const;

    std::string m_responseID;
    std::string m_text; ///< Of the message item that is open.
    bool m_isTextOpen = false;
    std::int64_t m_events = 0; ///< Numbered from 0.
    std::int64_t m_items = 0; ///< Finished.
};

} // namespace quorvell
