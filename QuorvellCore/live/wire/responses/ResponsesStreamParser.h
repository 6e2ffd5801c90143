// SPDX-License-Identifier: MIT
// Reads one answer of the Responses service, event by event.
#pragma once

#include "QuorvellCore/live/wire/responses/ResponsesStreamEvent.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Anything malformed or unknown gives nothing; after the end nothing more comes. A call that the answer's end leaves
/// unfinished is reported as cut off, so that the model is told and nothing is carried out half.
class ResponsesStreamParser {
public:
    static constexpr JsonLimits limits{.maximumBytes = 16 * 1024 * 1024, .maximumDepth = 64};
    static constexpr std::size_t maximumOpenCalls = 64;

    /// `data` is that of one ServerSentEvent.
    std::vector<ResponsesStreamEvent> read(std::string_view data);

    /// Whether the answer has come to its end. A stream that stops before was cut off: the answer is not whole.
    bool isEnded() const { return m_isEnded; }

private:
    struct OpenCall {
        std::string itemID;
        std::string callID;
        std::string name;
        std::string arguments;
    };

    void readArguments(const Json& event);
    void readError(const Json& event, std::vector<ResponsesStreamEvent>& out);
    void readOther(const Json& event, std::vector<ResponsesStreamEvent>& out);
    void open(const Json& event);
    void end(responses_event::Ended ended, std::vector<ResponsesStreamEvent>& out);
    OpenCall* openCall(std::string_view itemID);

    std::vector<OpenCall> m_open;
    std::string m_responseID;
    bool m_isEnded = false;
};

} // namespace quorvell
