// SPDX-License-Identifier: MIT
// The right to answer one tool call, exactly once.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/text/Json.h"

#include <functional>
#include <string_view>

namespace quorvell {

/// Dropped unanswered it answers an error by itself, so that the model never waits for ever. Main thread.
class ToolReply {
public:
    using Sink = std::function<void(const Json& result)>;

    explicit ToolReply(Sink sink);
    ~ToolReply();
    ToolReply(ToolReply&& other) noexcept;
    ToolReply& operator=(ToolReply&& other) noexcept;
    ToolReply(const ToolReply&) = delete;
    ToolReply& operator=(const ToolReply&) = delete;

    /// A second answer is ignored.
    void answer(const ToolResult& result);
    /// What somebody else answered, passed on as it is.
    void answer(const Json& result) { answer(ToolResult::of(result)); }
    void fail(std::string_view message);
    void fail(ToolFailure failure) { fail(sentenceOf(failure)); }

private:
    Sink m_sink;
};

} // namespace quorvell
