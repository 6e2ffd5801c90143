// SPDX-License-Identifier: MIT
// Reads what a client asks the Responses service; the counterpart of ResponsesRequest::json.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIErrorReport.h"
#include "QuorvellCore/live/wire/responses/ResponsesRequest.h"

#include <cstddef>
#include <string_view>
#include <variant>

namespace quorvell {

/// Everything is bounded.
struct ResponsesRequestReader {
    static constexpr JsonLimits limits{.maximumBytes = 16 * 1024 * 1024, .maximumDepth = 64};
    static constexpr std::size_t maximumItems = 1024;

    /// A report is answered with status 400 and {"error": ...}. Only streams are served.
    static std::variant<ResponsesRequest, OpenAIErrorReport> read(std::string_view body);
};

} // namespace quorvell
