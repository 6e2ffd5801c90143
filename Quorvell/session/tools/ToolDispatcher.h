// SPDX-License-Identifier: MIT
// Hands each tool call to its owner, and answers by itself those that nobody can carry out.
#pragma once

#include "Quorvell/session/tools/ToolRegistry.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

class ToolDispatcher {
public:
    /// The registry is borrowed, and filled before the first call.
    explicit ToolDispatcher(const ToolRegistry& registry);

    /// A sentence when a tool has two owners: then nothing may start.
    static std::optional<std::string> startUpProblem(const ToolRegistry& registry);

    /// The declarations of the catalogue that somebody carries out here, in its order.
    Json offeredTools() const;

    void run(const LiveFunctionCall& call, ToolReply reply) const;

    bool hasOwner(std::string_view name) const { return m_registry.has(name); }

    /// What the model is told about a call whose arguments broke off.
    static std::string cutOffText(std::string_view toolName);

private:
    const ToolRegistry& m_registry;
    Json m_catalogue; ///< Every tool that there is, for whatever backend and setting.
};

} // namespace quorvell
