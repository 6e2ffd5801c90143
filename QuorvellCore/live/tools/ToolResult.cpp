// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/tools/ToolResult.h"

namespace quorvell {

namespace {

ToolStatus statusOf(const Json& object)
{
    if (const Json* error = memberOf(object, "error"); error && !error->is_null())
        return ToolStatus::failed;
    const auto stored = readString(object, "status");
    return stored ? toolStatus(*stored).value_or(ToolStatus::other) : ToolStatus::none;
}

} // namespace

ToolResult::ToolResult(ToolStatus status)
    : ToolResult(status, Json{{"status", storedText(status)}})
{
}

ToolResult::ToolResult(ToolStatus status, Json object)
    : m_status(status)
    , m_json(std::move(object))
{
}

ToolResult ToolResult::failed(std::string_view message)
{
    return {ToolStatus::failed, Json{{"error", message}}};
}

ToolResult ToolResult::of(Json result)
{
    if (!result.is_object())
        return {ToolStatus::none, Json{{"result", std::move(result)}}};
    const ToolStatus status = statusOf(result);
    return {status, std::move(result)};
}

std::optional<ToolResult> ToolResult::parse(std::string_view text)
{
    auto json = parseJson(text, {.maximumBytes = longestText});
    if (!json || !json->is_object())
        return std::nullopt;
    return of(std::move(*json));
}

ToolResult& ToolResult::add(const char* key, Json value)
{
    m_json[key] = std::move(value);
    m_status = statusOf(m_json);
    return *this;
}

ToolResult& ToolResult::addAll(const Json& members)
{
    if (members.is_object())
        m_json.update(members);
    m_status = statusOf(m_json);
    return *this;
}

std::optional<ToolFailure> ToolResult::failure() const
{
    return isFailure() ? toolFailure(wordsForModel()) : std::nullopt;
}

const Json* ToolResult::list(std::string_view key) const
{
    const Json* member = memberOf(m_json, key);
    return member && member->is_array() ? member : nullptr;
}

} // namespace quorvell
