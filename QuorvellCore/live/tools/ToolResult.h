// SPDX-License-Identifier: MIT
// What came of a tool call: a status, what to ask the user, what to tell the model, and the rest as JSON.
#pragma once

#include "QuorvellCore/live/tools/ToolFailure.h"
#include "QuorvellCore/live/tools/ToolStatus.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quorvell {

/// The JSON object that crosses to the model, read once. Its members stand in the order in which they were added:
///     ToolResult(ToolStatus::kept).add("id", id).add("title", title)
/// Answers of others may hold anything; what cannot be read is absent.
class ToolResult {
public:
    static constexpr std::size_t longestText = 1024 * 1024; ///< Bytes of a result that is parsed.

    /// {"status": "kept"}
    explicit ToolResult(ToolStatus status);
    /// {"error": message}
    static ToolResult failed(std::string_view message);
    /// What is no object becomes {"result": ...}.
    static ToolResult of(Json result);
    /// Nothing when the text is too long, malformed or no object.
    static std::optional<ToolResult> parse(std::string_view text);

    ToolResult& add(const char* key, Json value);
    /// All members of an object.
    ToolResult& addAll(const Json& members);
    /// Words for the user: "question".
    ToolResult& ask(std::string question) { return add("question", std::move(question)); }
    /// Words for the model: "message".
    ToolResult& advise(std::string message) { return add("message", std::move(message)); }

    ToolStatus status() const { return m_status; }
    bool isFailure() const { return m_status == ToolStatus::failed; }
    /// Nothing when it did not fail, or for another reason than those that are told apart.
    std::optional<ToolFailure> failure() const;
    /// Empty when there are none.
    std::string wordsForUser() const { return asksBack(m_status) ? string("question").value_or("") : ""; }
    std::string wordsForModel() const { return string(isFailure() ? "error" : "message").value_or(""); }

    /// A member; nothing when it is missing or no text.
    std::optional<std::string> string(std::string_view key) const { return readString(m_json, key); }
    /// A member; null when it is missing or no array.
    const Json* list(std::string_view key) const;
    const Json& json() const { return m_json; }

    bool operator==(const ToolResult&) const = default;

private:
    ToolResult(ToolStatus status, Json object);

    ToolStatus m_status = ToolStatus::none;
    Json m_json; ///< Always an object.
};

} // namespace quorvell
