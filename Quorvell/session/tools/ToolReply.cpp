// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/ToolReply.h"

#include <string_view>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view droppedMessage =
    "The tool ended without an answer, so it may not have been done. Say so, and offer to try once more.";

} // namespace

ToolReply::ToolReply(Sink sink)
    : m_sink(std::move(sink))
{
}

ToolReply::~ToolReply()
{
    fail(droppedMessage);
}

ToolReply::ToolReply(ToolReply&& other) noexcept
    : m_sink(std::exchange(other.m_sink, nullptr))
{
}

ToolReply& ToolReply::operator=(ToolReply&& other) noexcept
{
    if (this != &other) {
        fail(droppedMessage);
        m_sink = std::exchange(other.m_sink, nullptr);
    }
    return *this;
}

void ToolReply::answer(const ToolResult& result)
{
    // Taken first: a sink that drops this reply while it runs must not be answered again.
    if (const Sink sink = std::exchange(m_sink, nullptr))
        sink(result.json());
}

void ToolReply::fail(std::string_view message)
{
    if (m_sink)
        answer(ToolResult::failed(message));
}

} // namespace quorvell
