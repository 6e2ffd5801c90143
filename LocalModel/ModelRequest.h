// SPDX-License-Identifier: MIT
// What a model is sent: a short conversation in the chat completions form.
#pragma once

#include "LocalModel/ModelStream.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A value that grows by turns. Kept short, since a small computer reads all of it anew for each round.
class ModelRequest {
public:
    static constexpr std::string_view path = "/v1/chat/completions";
    static constexpr std::size_t mostEarlier = 6; ///< Turns of the conversation before.
    static constexpr std::size_t longestTurn = 500; ///< User-perceived characters of each of them.
    static constexpr std::size_t longestWords = 2'000; ///< Of what the user asks for.
    static constexpr std::size_t longestResult = 6'000; ///< Of a tool's result.
    static constexpr int mostTokens = 800; ///< Of an answer, what the model thinks included.

    ModelRequest() = default;
    /// `today` is the moment in words: "Saturday, 21 November 2026, 10:00".
    ModelRequest(std::string model, const std::string& today, const std::vector<LiveHistoryEntry>& earlier,
        const std::string& words);

    /// What the model answered with, and below each call what came of it.
    void addCalls(const std::vector<ModelStream::Call>& calls);
    void addResult(std::size_t call, const std::string& result);
    /// The calls of the next round are others.
    std::string body(const Json& tools) const;

private:
    std::string m_model;
    Json m_messages = Json::array();
    int m_round = 0; ///< Part of a call's id.
};

} // namespace quorvell
